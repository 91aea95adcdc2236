// Header logo, background picture and icon.

#include "controls/Desktop.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/Pictures.h"
#include "platform/files/SelfExtractor.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/iconedit/IconFile.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

namespace {

constexpr const char* kNewIcon = Marked("<New Icon>");
constexpr const char* kIconEnding = ".ICO";
constexpr std::size_t kEndingLength = 4;

// ".GIF" and so on: the last four characters in capitals.
std::string EndingOf(const std::string& path) {
  return UpperCase(path.size() > kEndingLength ? path.substr(path.size() - kEndingLength) : path);
}

bool IsPictureEnding(const std::string& ending) {
  return ending == ".GIF" || ending == ".BMP" || ending == ".PNG" || ending == ".JPG";
}

// An icon that the editor, every calculator's folder and its install file can use.
bool IsIconFile(const std::string& path) {
  try {
    const std::int64_t length = FileLength(path);
    if (length != kIconFileLength && length != kTwoIconsFileLength) return false;
    LoadIcon(path);
    return IsInstallIcon(path);
  } catch (const RuntimeError&) {
    return false;
  }
}

void Tell(const std::string& text, const std::string& title, BoxIcon icon) {
  TheDesktop().MessageBox(text, title, BoxButtons::Ok, icon);
}

// The new picture is in place before the old one goes.
void ReplacePicture(const std::string& source, const std::string& folder, const std::string& baseName,
                    const std::string& ending) {
  if (!FolderExists(folder)) MakeFolder(folder);
  const std::string target = folder + baseName + ending;
  CopyFile(source, target);
  // An old one of the same name in other letters keeps its name and has the new content.
  const std::string kept = FileNameOf(NativePath(target));
  for (const std::string& old : ListFiles(folder + baseName + ".*")) {
    if (old != kept) DeleteFile(folder + old);
  }
}

}  // namespace

void FrmOptions::WireGraphics() {
  CboIcons.Click = [this] { CboIcons_Click(); };
  CmdIcon.Click = [this] {
    SaveChangedValue();
    if (!Around.openIconEditor) return;
    Around.openIconEditor(chosenIcon_, [this](std::string name) { RefreshIconList(name); });
  };
  TxtLogo.Change = [this] { ShowChosenPicture(); };
  ChkYesNo.Click = [this] { ShowPreview(); };
  CmdCoLog.Click = [this] { BrowseForPicture(); };
}

void FrmOptions::RefreshIconList(std::string& name) {
  name = Trim(ReplaceAllNoCase(UpperCase(name), kIconEnding, ""));
  try {
    CboIcons.Clear();
    ShowIcon("");
    CboIcons.Add(Tr(kNewIcon));
    for (const std::string& file : ListFilesOrFail(run_.DataFolder + "\\icons\\*.ico")) {
      CboIcons.Add(ReplaceAllNoCase(UpperCase(file), kIconEnding, ""));
    }
  } catch (const RuntimeError&) {
    return run_.ShowError("Error Loading Icons");
  }
  if (name.empty()) return;
  const auto& icons = CboIcons.Items();
  for (int i = 0; i < static_cast<int>(icons.size()); ++i) {
    if (icons[static_cast<std::size_t>(i)].text == name) return CboIcons.SetListIndex(i);
  }
  const std::string text = Tr("Your current icon [%1] could not be found\r\n\r\nPlease select another", {name});
  Tell(text, Tr("Icon Selection"), BoxIcon::Information);
}

void FrmOptions::ShowIcon(const std::string& fileName) {
  chosenIcon_ = fileName;
  PicIcon.SetPicture(fileName.empty() ? std::string() : run_.DataFolder + "\\icons\\" + fileName);
}

void FrmOptions::CboIcons_Click() {
  const std::string icon = ChosenIconText();
  ShowIcon("");
  if (icon.empty() || icon == Tr(kNewIcon)) return;
  if (!FitsRecord(icon)) {
    return Tell(Tr("The name of this icon is longer than 25 characters or has letters that are not of western "
                   "Europe.\r\n\r\nPlease select another"),
                Tr("Icon Selection"), BoxIcon::Exclamation);
  }
  if (!IsIconFile(run_.DataFolder + "\\icons\\" + icon + kIconEnding)) {
    return Tell(Tr("Invalid or unsupported file format."), "", BoxIcon::Critical);
  }
  ShowIcon(icon + kIconEnding);
}

bool FrmOptions::FitsRecord(const std::string& iconName) const {
  return FitsWindows1252(iconName) && FirstCharacters(iconName, edited_.IconName.Width()) == iconName;
}

std::string FrmOptions::ChosenIconText() const {
  const int index = CboIcons.ListIndex();
  return index < 0 ? std::string() : CboIcons.Items()[static_cast<std::size_t>(index)].text;
}

void FrmOptions::StoreIcon() {
  const std::string icon = ChosenIconText();
  // One that was refused is no choice: the icon that was chosen before stays.
  const bool refused = !icon.empty() && chosenIcon_.empty();
  if (refused || FoldCase(icon).find(FoldCase(Tr(kNewIcon))) != std::string::npos) return;
  edited_.IconName = icon;
}

void FrmOptions::BrowseForPicture() {
  const std::string images = run_.AppFolder + "\\images";
  try {
    if (!FolderExists(images)) MakeFolder(images);
  } catch (const RuntimeError&) {
    // The dialog starts where the desktop starts it.
  }
  const std::string file =
      TheDesktop().OpenFile({"", images, "", Tr("Image files(*.bmp,*.jpg,*.gif,*.png)|*.bmp;*.jpg;*.gif;*.png")});
  if (file.empty()) return;
  TxtLogo.SetText(file);
  TxtLogo.SetFocus();
}

void FrmOptions::ShowPictureImport(const OptionNode& node) {
  FraLogo.SetCaption(Tr(node.caption));
  TxtLogo.SetText(pendingPictures_[PictureKind(node)]);
  ShowChosenPicture();
}

std::size_t FrmOptions::PictureKind(const OptionNode& node) {
  return std::string_view(node.key) == "GRAPHICS4" ? 1 : 0;
}

void FrmOptions::StorePicture(const OptionNode& node) {
  const std::string path(Trim(TxtLogo.Text()));
  if (!path.empty()) SaveLogo(PictureKind(node));
  pendingPictures_[PictureKind(node)] = path;
}

void FrmOptions::SaveLogo(std::size_t kind) {
  const BusyWhile busy;
  const std::string source(Trim(TxtLogo.Text()));
  const std::string folder = run_.DataFolder + "\\logo\\", baseName = kind == 1 ? "background" : "logo";
  if (!FileExists(source)) {
    return Tell(Tr("Selected graphic could not be found.\r\n\r\nNot Imported"), Tr("Graphic Import"),
                BoxIcon::Exclamation);
  }
  const std::string ending = EndingOf(source);
  if (!IsPictureEnding(ending)) {
    return Tell(Tr("The File type Selected is not supported.\r\n\r\n(.BMP  .JPG  .PNG  .GIF) Supported"),
                Tr("Logo Import"), BoxIcon::Exclamation);
  }
  try {
    if (FileLength(source) > kLargestPicture)
      throw RuntimeError(kBadPicture, Tr("%1 is too large to travel", {source}));
    LoadPicture(source);
  } catch (const RuntimeError&) {
    // It only bears the name of a picture, or no mail would take it; the old one stays.
    return Tell(Tr("Importing Graphic Failed."), Tr("Graphic Import"), BoxIcon::Critical);
  }
  try {
    ReplacePicture(source, folder, baseName, ending);
    if (FileExists(folder + baseName + ending)) return;
  } catch (const RuntimeError&) {
    return run_.ShowError("Importing Logo");
  }
  Tell(Tr("Importing Graphic Failed."), Tr("Graphic Import"), BoxIcon::Critical);
}

}  // namespace tarvolinex
