#include "distribute/InstallPackage.h"

#include <vector>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/FlushTogether.h"
#include "platform/files/SelfExtractor.h"
#include "platform/files/ZipComponent.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/PageText.h"
#include "publish/Template.h"

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

std::string FirstFile(const std::string& folder, const std::string& pattern) {
  const auto names = ListFiles(folder + pattern);
  return names.empty() ? std::string() : names.front();
}

std::string SetupEntries(const std::string& folder) {
  Entries entries;
  for (const std::string& picture : {FirstFile(folder, "logo.*"), FirstFile(folder, "background.*")}) {
    if (!picture.empty()) entries.Add(picture, "3/4/3000 6:35:34 PM,6000");
  }
  for (const std::string& name : ListFiles(folder + "*.html")) {
    const std::string capitals = UpperCase(name);
    if (capitals == "CALC.HTML" || capitals == "CALC_TEST.HTML") continue;
    entries.Add(capitals, "3/24/3000 12:00:00 PM," + std::to_string(FileLength(folder + name)));
  }
  return entries.Text();
}

// As the record holds it. A calculator without a name is called as its page calls itself: nothing can be installed
// without one.
std::string PaddedTitle(const CalculatorPreferencesRecord& prefs) {
  auto name = prefs.AliasCalcName;
  if (name.Trimmed().empty()) name = "Lease calculator";
  return name.Padded();
}

void WriteSetupList(const Branding& branding) {
  const std::string text = ReplaceAllNoCase(ReadPage(branding.folders.app + "\\Setup.lst"), "|TITLE|",
                                            ToWindows1252(PaddedTitle(branding.prefs)));
  WriteFile(branding.folders.calculator + "Setup.lst", text + kLineEnd + SetupEntries(branding.folders.calculator));
}

std::string Exclusions(const Branding& branding, bool byLink) {
  // The test page never travels.
  std::string masks = "*test*.*";
  const auto leaveOut = [&](const std::string& mask) { masks += kLineEnd + mask; };
  // Install files that were made in the folder.
  leaveOut("*.zip");
  for (const std::string& program : ListFiles(branding.folders.calculator + "*.exe")) {
    if (!EqualNoCase(program, "setup.exe")) leaveOut(program);
  }
  if (!branding.prefs.ShowHeaderLogo) leaveOut("logo.*");
  if (!branding.prefs.ShowBackground) leaveOut("background.*");
  if (byLink) {
    leaveOut("CalcInstall.CAB");
    leaveOut("setup.exe");
  }
  return masks;
}

// The icon that the user has chosen; "" for the module's own when there is none or it cannot be put into a program.
std::string UsableIcon(const Branding& branding, const std::string& target, Reporter& reporter) {
  std::string icon = InstallIconPath(branding);
  if (icon.empty() || EqualNoCase(FileNameOf(target).substr(FileNameOf(target).rfind('.') + 1), "zip")) return icon;
  if (IsInstallIcon(icon)) return icon;
  reporter.MessageBox(Tr("The icon \"%1\" holds no picture of 32 by 32 dots in 16 colours.\n\nThe install file gets "
                         "the usual icon instead. Please select another in the options.",
                         {branding.prefs.IconName.Trimmed()}),
                      Tr("Instalation Icon"), BoxButtons::Ok, BoxIcon::Exclamation);
  return {};
}

bool Pack(const Branding& branding, const std::string& target, bool byLink, Reporter& reporter) {
  ZipComponent zip;
  zip.ZipFileName = target;
  zip.FilesToExclude = Exclusions(branding, byLink);
  zip.FilesToProcess = branding.folders.calculator + "*.*";
  zip.SfxDefaultFolder = "%t";
  zip.SfxIcon = UsableIcon(branding, target, reporter);
  zip.SfxModule = branding.folders.app + "\\Xcdsfx32.bin";
  zip.SfxCommand = "%t\\setup.exe";
  zip.SfxTitle = PaddedTitle(branding.prefs) + " Self-Extractor";
  zip.Progress = [&reporter](int percent) { reporter.SetStatus(false, "Creating Install file", percent); };
  if (zip.Zip() == 0) return true;
  reporter.ShowError(Tr("Install file creation failed.\n\n%1", {zip.ErrorDescription()}));
  return false;
}

// Empty when the user keeps the file that stands there.
std::string Target(const std::string& chosenName, Reporter& reporter) {
  std::string target(Trim(chosenName));
  if (FileNameOf(target).empty() || FolderExists(target)) {
    throw RuntimeError(kBadFileName, Tr("\"%1\" is no file name", {target}));
  }
  if (FileExists(target) &&
      reporter.MessageBox(Tr("A file of this name already exists.\n\nOverwrite?"), Tr("File exists"), BoxButtons::YesNo,
                          BoxIcon::Exclamation) != Answer::Yes) {
    target.clear();
  }
  return target;
}

}  // namespace

const char* WayName(int sendType) {
  return sendType == kSendZip ? "zip" : sendType == kSendLink ? "link" : "exe";
}

std::string InstallFilePath(const std::string& appFolder, int sendType) {
  return appFolder + "\\CalcInstall" + (sendType == kSendZip ? ".zip" : ".exe");
}

std::int64_t LargestMessage(int sendType, const Publication& publication, std::size_t textBytes) {
  constexpr std::int64_t kHeaders = 8 * 1024;
  constexpr std::size_t kEscaped = 3;  // bytes of the message for one of the text
  const auto textAndHeaders = kHeaders + static_cast<std::int64_t>(kEscaped * textBytes);
  if (sendType == kSendLink) return textAndHeaders;
  const Folders& folders = publication.branding.folders;
  std::int64_t bytes = 0;
  const auto count = [&](const std::string& path, int times = 1) {
    bytes += FileExists(path) ? times * FileLength(path) : 0;
  };
  for (const char* name : {"calc.html", "General.dat", "Setup.lst"}) count(folders.app + "\\" + name);
  for (const std::string& picture : {LogoFileName(folders.data), BackgroundFileName(folders.data)}) {
    if (!picture.empty()) count(folders.data + "\\logo\\" + picture);
  }
  // Each form travels as a page and, longer by its escapes, in the data of the calculator page.
  constexpr int kAsPageAndData = 4;
  for (const FormRow& form : publication.forms) count(FormPagePath(folders.data, form.id), kAsPageAndData);
  count(InstallIconPath(publication.branding));
  if (sendType == kSendProgram) {
    count(folders.app + "\\Xcdsfx32.bin");
    count(folders.calculator + "CalcInstall.CAB");
    count(folders.calculator + "setup.exe");
  }
  return textAndHeaders + bytes * 138 / 100;  // base64 with its line ends
}

bool CanPack(const Branding& branding, Reporter& reporter) {
  const SupplierCalcSettingsRecord nobody;
  if (!CanPublish(branding.prefs, {branding.prefs, nobody}, reporter)) return false;
  const std::string& folder = branding.folders.calculator;
  if (!FolderExists(folder) || IsWritableFolder(folder)) return true;
  ReportFailure(reporter, Marked("Install File Creation Failed"), Tr("The folder %1 cannot be written to", {folder}));
  return false;
}

bool BuildDistFiles(const Branding& branding, int sendType, const std::optional<std::string>& chosenName,
                    Reporter& reporter) {
  std::string target;
  try {
    target = chosenName ? Target(*chosenName, reporter) : InstallFilePath(branding.folders.app, sendType);
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("Invalid File Name"), failure.Description());
    return false;
  }
  if (target.empty()) return false;
  reporter.SetStatus(false, "Creating Install file", 0);
  try {
    FlushTogether together;
    BringInstallIcon(branding);
    WriteSetupList(branding);
    const bool packed = Pack(branding, target, sendType == kSendLink, reporter);
    together.Commit();
    return packed;
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("Install File Creation Failed"), failure.Description());
    return false;
  }
}

}  // namespace tarvolinex
