// The editor's icons as files.
#include "controls/Desktop.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/iconedit/IconFile.h"

namespace tarvolinex {

namespace {

constexpr int kLongestName = 15;  // characters

std::string_view LastCharacters(std::string_view text, int n) {
  int characters = 0;
  std::size_t start = text.size();
  while (start > 0 && characters < n) {
    --start;
    const bool continues = (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80;
    if (!continues) ++characters;
  }
  return text.substr(start);
}

void TellBadName(const std::string& name) {
  TheDesktop().MessageBox(Tr("\"%1\" cannot be the name of an icon.\r\n\r\nPlease use letters of western "
                             "Europe, none of \\ / : * ? \" < > | and no point at the end. Windows keeps the names "
                             "CON, PRN, AUX, NUL, COM1 to COM9 and LPT1 to LPT9 for devices.",
                             {name}),
                          Tr("Save as..."), BoxButtons::Ok, BoxIcon::Exclamation);
}

}  // namespace

void FrmIconEdit::SetLoadPic(const std::string& iconName) {
  const BusyWhile busy;
  Before();
  image_ = {};
  name_ = iconName;
  if (!iconName.empty()) {
    try {
      image_ = LoadIcon(run_.DataFolder + "\\Icons\\" + iconName);
    } catch (const RuntimeError&) {
      name_.clear();
      TheDesktop().MessageBox(Tr("Invalid or unsupported file format."), "", BoxButtons::Ok, BoxIcon::Critical);
    }
  }
  SetCaption(name_.empty() ? Tr("Icon Editor <new Icon>") : Tr("Icon Editor - %1", {name_}));
  After();
  modified_ = false;
}

void FrmIconEdit::Open() {
  const std::string file = TheDesktop().OpenFile({"", run_.DataFolder + "\\icons", "", Tr("Icons (*.ico)|*.ico")});
  if (file.empty()) return;
  IconImage loaded;
  try {
    if (FileLength(file) != kIconFileLength) throw RuntimeError(kBadPicture, Tr("%1 has another length", {file}));
    loaded = LoadIcon(file);
  } catch (const RuntimeError&) {
    TheDesktop().MessageBox(Tr("Ivalid or unsupported file format."), "", BoxButtons::Ok, BoxIcon::Critical);
    return;
  }
  Apply([&](IconImage& image) { image = loaded; });
}

void FrmIconEdit::SavePic(const std::string& iconName) {
  EndStroke();
  const std::string name = IconBaseName(iconName);
  if (!IsIconName(name)) return;
  {
    const BusyWhile busy;
    try {
      const std::string folder = run_.DataFolder + "\\icons";
      if (!FolderExists(folder)) MakeFolder(folder);
      WriteFile(IconPath(run_.DataFolder, name), IconBytes(image_));
    } catch (const RuntimeError&) {
      // The old file stays; the list that is filled next shows what there is.
    }
    modified_ = false;
  }
  SetCaption(Tr("Icon Editor - %1", {name + ".ICO"}));
  if (RefreshIconList) RefreshIconList(name);
}

void FrmIconEdit::Save() {
  if (name_.empty()) return SaveAs();
  if (IsIconName(IconBaseName(name_))) return SavePic(name_);
  TellBadName(name_);
  SaveAs();
}

void FrmIconEdit::SaveAs() {
  const auto answer = TheDesktop().InputBox(Tr("Enter new Icon Name"), Tr("Save as..."), "");
  const std::string name(Trim(LastCharacters(answer.value_or(""), kLongestName)));
  if (name.empty()) return;
  if (IsIconName(IconBaseName(name))) return SavePic(name);
  TellBadName(name);
}

bool FrmIconEdit::MayLeave() {
  EndStroke();
  if (!modified_) return true;
  switch (TheDesktop().MessageBox(Tr("Save icon?"), "", BoxButtons::YesNoCancel, BoxIcon::Question)) {
    case Answer::Yes:
      SaveAs();
      return !modified_;
    case Answer::No:
      return true;
    default:
      return false;
  }
}

}  // namespace tarvolinex
