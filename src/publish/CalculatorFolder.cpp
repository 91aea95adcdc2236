#include "publish/CalculatorFolder.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/Limits.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/FlushTogether.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorData.h"
#include "publish/FolderFiles.h"
#include "publish/PageOptions.h"
#include "publish/PageText.h"
#include "publish/Template.h"

namespace tarvolinex {

namespace {

void SaveSupplierCalcSettings(const Publication& publication, Reporter& reporter) {
  try {
    WriteRecord(publication.branding.folders.calculator + "Supplier.dat", publication.supplier);
  } catch (const RuntimeError&) {
    reporter.ShowError("Supplier Preferences Save Failed", true);
  }
}

// The name under which a form joins the folder: those that are there already count.
std::string TargetName(const std::string& folder, const std::string& linkName) {
  constexpr const char* kEnding = ".html";
  const std::string name = linkName + kEnding;
  const auto before = ListFiles(folder + ReplaceAllNoCase(name, kEnding, std::string("*") + kEnding));
  return ReplaceAllNoCase(name, kEnding, "!" + std::to_string(before.size()) + kEnding);
}

void CopyPicture(const Folders& folders, const std::string& name, Reporter& reporter) {
  if (name.empty()) return;
  DeleteFileIfPresent(reporter, folders.calculator + name);
  CopyFileOrStop(reporter, folders.data + "\\logo\\" + name, folders.calculator + name);
}

// What the user is told of what is not published as it is. Of the forms that are missing only the last is named.
struct Warnings {
  std::string missing, others;
  void Add(const std::string& text) { others += (others.empty() ? "" : "\r\n\r\n") + text; }
  std::string Text() const { return missing + (missing.empty() || others.empty() ? "" : "\r\n\r\n") + others; }
};

// The supplier's texts that the record cannot hold, each with what is read in its place.
void WarnOfForeignTexts(const SupplierCalcSettingsRecord& supplier, Warnings& warnings) {
  std::string texts;
  for (const FixedText* text : {&supplier.CompanyName, &supplier.Address1, &supplier.Address2, &supplier.Town,
                                &supplier.County, &supplier.PostCode, &supplier.Tel, &supplier.Fax, &supplier.www,
                                &supplier.email, &supplier.AdditionalPremiumMsg}) {
    const std::string written = text->Trimmed();
    if (!FitsWindows1252(written)) texts += "\r\n" + written + " - " + FromWindows1252(ToWindows1252(written));
  }
  if (texts.empty()) return;
  warnings.Add(
      Tr("Warning: The calculator cannot show everything as it is written, because its files hold western letters "
         "only:\r\n%1\r\n\r\nPlease write it in such letters",
         {texts}));
}

// Copies the forms' pages. Returns those that are there and not empty.
std::vector<PublishedForm> CopyForms(const Publication& publication, Warnings& warnings) {
  const Folders& folders = publication.branding.folders;
  std::vector<PublishedForm> published;
  for (const FormRow& form : publication.forms) {
    const std::string source = FormPagePath(folders.data, form.id);
    if (!IsPortableFileName(form.linkName + "!9999.html")) {
      warnings.Add(
          Tr("Warning: Form <%1> cannot be published, because no file can be called\r\n\"%2\".\r\n\r\n"
             "Please give the form another name and try again",
             {form.description, form.linkName}));
    } else if (!FileExists(source)) {
      warnings.missing = Tr("Warning: Form <%1> was not found please check and try again", {form.description});
    } else {
      const std::string target = TargetName(folders.calculator, form.linkName);
      CopyFile(source, folders.calculator + target);
      if (FileLength(source) > 0) {
        // The page lists it by a name in any case.
        published.push_back({form.linkName.empty() ? form.description : form.linkName, target, ReadPageText(source)});
      } else {
        warnings.Add(Tr("Warning: Form <%1> is empty please check and try again", {form.description}));
      }
    }
  }
  return published;
}

std::string IconFilePath(const Branding& branding) {
  return branding.folders.data + "\\icons\\" + branding.prefs.IconName.Trimmed() + ".ico";
}

// Returns the warning to show, empty for none.
std::string FillCalculatorFolder(const Publication& publication, Reporter& reporter) {
  const Folders& folders = publication.branding.folders;
  const std::string& folder = folders.calculator;
  if (!RefreshPages(publication.branding, reporter)) {
    throw RuntimeError(kDeviceError, Tr("One of the two pages in %1 is older than the other", {folders.app}));
  }
  FlushTogether together;
  SaveSupplierCalcSettings(publication, reporter);
  for (const char* old : {"*.html", "background.*", "logo.*"}) DeleteFileIfPresent(reporter, folder + old);
  CopyFileOrStop(reporter, folders.app + "\\calc.html", folder + "calc.html");
  CopyFileOrStop(reporter, folders.app + "\\calc_test.html", folder + "calc_test.html");
  CopyPicture(folders, LogoFileName(folders.data), reporter);
  CopyFileOrStop(reporter, folders.app + "\\general.dat", folder + "general.dat");
  CopyPicture(folders, BackgroundFileName(folders.data), reporter);
  Warnings warnings;
  WarnOfForeignTexts(publication.supplier, warnings);
  const auto published = CopyForms(publication, warnings);
  WriteFile(folder + "calcdata.txt",
            CalculatorData(reporter.Now(), ReadPageOptions(folders.app), ReadFile(folder + "general.dat"),
                           ReadFile(folder + "Supplier.dat"), published));
  together.Commit();
  return warnings.Text();
}

}  // namespace

void BuildCalculatorFolder(const Publication& publication, Reporter& reporter) {
  reporter.SetStatus(true, "Saving Settings", -1);
  std::string warning;
  try {
    warning = FillCalculatorFolder(publication, reporter);
  } catch (const RuntimeError&) {
    reporter.ShowError("Failed setting up calculator", true);
  }
  reporter.SetStatus(false, "", -1);
  if (!warning.empty()) reporter.MessageBox(warning, Tr("Warning"), BoxButtons::Ok, BoxIcon::Critical);
}

bool CanPublish(const CalculatorPreferencesRecord& prefs, const Words& words, Reporter& reporter) {
  const std::string why = ContradictoryLimits(prefs, words);
  if (why.empty()) return true;
  reporter.MessageBox(why, Tr("Calculator Options"), BoxButtons::Ok, BoxIcon::Exclamation);
  return false;
}

std::string InstallIconPath(const Branding& branding) {
  const std::string path = IconFilePath(branding);
  return !branding.prefs.IconName.Trimmed().empty() && FileExists(path) ? path : std::string();
}

void BringInstallIcon(const Branding& branding) {
  const std::string source = InstallIconPath(branding), target = branding.folders.calculator + "calc.ico";
  if (source.empty() || (FileExists(target) && ReadFile(source) == ReadFile(target))) return;
  CopyFile(source, target);
}

void CopyInstallIcon(const Branding& branding, Reporter& reporter) {
  if (branding.prefs.IconName.Trimmed().empty()) {
    reporter.MessageBox(Tr("Warning: No icon has been selected"), Tr("Instalation Icon"), BoxButtons::Ok,
                        BoxIcon::Exclamation);
    return;
  }
  try {
    CopyFile(IconFilePath(branding), branding.folders.calculator + "calc.ico");
  } catch (const RuntimeError&) {
    reporter.ShowError("Icon Copy Failed", true);
  }
}

}  // namespace tarvolinex
