#include "distribute/InstallPackage.h"

#include <vector>

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "distribute/LongWork.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/SelfExtractor.h"
#include "platform/files/ZipComponent.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorFolder.h"
#include "publish/PageText.h"
#include "publish/Template.h"
#include "store/Forms.h"

namespace tarvolinex {

namespace {

constexpr const char* kLineEnd = "\r\n";

// The entries that follow those of the template.
class Entries {
 public:
  void Add(const std::string& name, const std::string& rest) {
    text_ += "File" + std::to_string(++number_) + "=" + ToWindows1252(name) + ",$(AppPath),,," + rest + ",0.0.0.0" +
             kLineEnd;
  }
  const std::string& Text() const { return text_; }

 private:
  static constexpr int kOfTheTemplate = 6;
  int number_ = kOfTheTemplate;
  std::string text_;
};

std::string FirstFile(const std::string& pattern) {
  const auto names = ListFiles(CalculatorFolder() + pattern);
  return names.empty() ? std::string() : names.front();
}

std::string SetupEntries() {
  Entries entries;
  for (const std::string& picture : {FirstFile("logo.*"), FirstFile("background.*")}) {
    if (!picture.empty()) entries.Add(picture, "3/4/3000 6:35:34 PM,6000");
  }
  for (const std::string& name : ListFiles(CalculatorFolder() + "*.html")) {
    const std::string capitals = UpperCase(name);
    if (capitals == "CALC.HTML" || capitals == "CALC_TEST.HTML") continue;
    entries.Add(capitals, "3/24/3000 12:00:00 PM," + std::to_string(FileLength(CalculatorFolder() + name)));
  }
  return entries.Text();
}

// As the record holds it. A calculator without a name is called as its page calls itself: nothing can be installed
// without one.
std::string PaddedTitle() {
  auto name = CalculatorPreferences.AliasCalcName;
  if (name.Trimmed().empty()) name = "Lease calculator";
  return name.Padded();
}

void WriteSetupList() {
  const std::string text =
      ReplaceAllNoCase(ReadPage(AppFolder + "\\Setup.lst"), "|TITLE|", ToWindows1252(PaddedTitle()));
  WriteFile(CalculatorFolder() + "Setup.lst", text + kLineEnd + SetupEntries());
}

std::string Exclusions(bool byLink) {
  // The test page never travels.
  std::string masks = "*test*.*";
  const auto leaveOut = [&](const std::string& mask) { masks += kLineEnd + mask; };
  // Install files that were made in the folder.
  leaveOut("*.zip");
  for (const std::string& program : ListFiles(CalculatorFolder() + "*.exe")) {
    if (!EqualNoCase(program, "setup.exe")) leaveOut(program);
  }
  if (!CalculatorPreferences.ShowHeaderLogo) leaveOut("logo.*");
  if (!CalculatorPreferences.ShowBackground) leaveOut("background.*");
  if (byLink) {
    leaveOut("CalcInstall.CAB");
    leaveOut("setup.exe");
  }
  return masks;
}

// The icon that the user has chosen; "" for the module's own when there is none or it cannot be put into a program.
std::string UsableIcon(const std::string& target) {
  std::string icon = InstallIconPath();
  if (icon.empty() || EqualNoCase(FileNameOf(target).substr(FileNameOf(target).rfind('.') + 1), "zip")) return icon;
  if (IsInstallIcon(icon)) return icon;
  TheDesktop().MessageBox(
      Tr("The icon \"%1\" holds no picture of 32 by 32 dots in 16 colours.\n\nThe install file gets "
         "the usual icon instead. Please select another in the options.",
         {CalculatorPreferences.IconName.Trimmed()}),
      Tr("Instalation Icon"), BoxButtons::Ok, BoxIcon::Exclamation);
  return {};
}

bool Pack(const std::string& target, bool byLink) {
  ZipComponent zip;
  zip.ZipFileName = target;
  zip.FilesToExclude = Exclusions(byLink);
  zip.FilesToProcess = CalculatorFolder() + "*.*";
  zip.SfxDefaultFolder = "%t";
  zip.SfxIcon = UsableIcon(target);
  zip.SfxModule = AppFolder + "\\Xcdsfx32.bin";
  zip.SfxCommand = "%t\\setup.exe";
  zip.SfxTitle = PaddedTitle() + " Self-Extractor";
  zip.Progress = [](int percent) { SetStatus(false, "Creating Install file", percent); };
  if (zip.Zip() == 0) return true;
  ShowError(Tr("Install file creation failed.\n\n%1", {zip.ErrorDescription()}));
  return false;
}

// Empty when the user keeps the file that stands there.
std::string Target(bool chosenName) {
  if (!chosenName) return InstallFilePath();
  std::string target(Trim(MainForm().send.TxtCalcCreate.Text()));
  if (FileNameOf(target).empty() || FolderExists(target)) {
    throw RuntimeError(kBadFileName, Tr("\"%1\" is no file name", {target}));
  }
  if (FileExists(target) &&
      TheDesktop().MessageBox(Tr("A file of this name already exists.\n\nOverwrite?"), Tr("File exists"),
                              BoxButtons::YesNo, BoxIcon::Exclamation) != Answer::Yes) {
    target.clear();
  }
  return target;
}

}  // namespace

std::string InstallFilePath() {
  return AppFolder + "\\CalcInstall" + (SendType == kSendZip ? ".zip" : ".exe");
}

std::int64_t LargestMessage(int sendType) {
  constexpr std::int64_t kHeaders = 8 * 1024;
  constexpr std::size_t kEscaped = 3;  // bytes of the message for one of the text
  const std::size_t text =
      MainForm().send.TxtEmail(1).Text().size() + Instructions.at(static_cast<std::size_t>(sendType)).size();
  const auto textAndHeaders = kHeaders + static_cast<std::int64_t>(kEscaped * text);
  if (sendType == kSendLink) return textAndHeaders;
  std::int64_t bytes = 0;
  const auto count = [&](const std::string& path, int times = 1) {
    bytes += FileExists(path) ? times * FileLength(path) : 0;
  };
  for (const char* name : {"calc.html", "General.dat", "Setup.lst"}) count(AppFolder + "\\" + name);
  for (const std::string& picture : {LogoFileName(), BackgroundFileName()}) {
    if (!picture.empty()) count(DataFolder + "\\logo\\" + picture);
  }
  // Each form travels as a page and, longer by its escapes, in the data of the calculator page.
  constexpr int kAsPageAndData = 4;
  for (const int form : LinkedFormIds(CurrentSupplierId)) count(FormPagePath(form), kAsPageAndData);
  count(InstallIconPath());
  if (sendType == kSendProgram) {
    count(AppFolder + "\\Xcdsfx32.bin");
    count(CalculatorFolder() + "CalcInstall.CAB");
    count(CalculatorFolder() + "setup.exe");
  }
  return textAndHeaders + bytes * 138 / 100;  // base64 with its line ends
}

bool CanPack() {
  if (!CanPublish(CalculatorPreferences)) return false;
  if (!FolderExists(CalculatorFolder()) || IsWritableFolder(CalculatorFolder())) return true;
  ReportFailure(Marked("Install File Creation Failed"), Tr("The folder %1 cannot be written to", {CalculatorFolder()}));
  return false;
}

bool BuildDistFiles(bool chosenName) {
  std::string target;
  try {
    target = Target(chosenName);
  } catch (const RuntimeError& failure) {
    ReportFailure(Marked("Invalid File Name"), failure.Description());
    return false;
  }
  if (target.empty()) return false;
  SetStatus(false, "Creating Install file", 0);
  try {
    BringInstallIcon();
    WriteSetupList();
    // What was asked of the last send does not decide what a file that is made by hand holds.
    return Pack(target, !chosenName && SendType == kSendLink);
  } catch (const RuntimeError& failure) {
    ReportFailure(Marked("Install File Creation Failed"), failure.Description());
    return false;
  }
}

}  // namespace tarvolinex
