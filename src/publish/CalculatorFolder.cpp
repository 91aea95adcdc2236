#include "publish/CalculatorFolder.h"

#include <algorithm>
#include <string>
#include <vector>

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/Limits.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorData.h"
#include "publish/FolderFiles.h"
#include "publish/PageText.h"
#include "publish/Template.h"
#include "store/Forms.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

struct LinkedForm {
  int id;
  std::string linkName, description;
};

void SaveSupplierCalcSettings() {
  try {
    WriteRecord(CalculatorFolder() + "Supplier.dat", SupplierCalcSettings);
  } catch (const RuntimeError&) {
    ShowError("Supplier Preferences Save Failed", true);
  }
}

std::vector<LinkedForm> LinkedForms(int supplierId) {
  Recordset rows;
  OpenRecordset(FillStatement(statements::kLinkedForms, "<ID>", supplierId), rows);
  std::vector<LinkedForm> forms;
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    forms.push_back({static_cast<int>(ValueNumber(rows.Field("ID"))),
                     std::string(Trim(ValueText(rows.Field("linkname")))), ValueText(rows.Field("Description"))});
  }
  return forms;
}

// The name under which a form joins the folder: those that are there already count.
std::string TargetName(const std::string& linkName) {
  constexpr const char* kEnding = ".html";
  const std::string name = linkName + kEnding;
  const auto before = ListFiles(CalculatorFolder() + ReplaceAllNoCase(name, kEnding, std::string("*") + kEnding));
  return ReplaceAllNoCase(name, kEnding, "!" + std::to_string(before.size()) + kEnding);
}

void CopyPicture(const std::string& name) {
  if (name.empty()) return;
  DeleteFileIfPresent(CalculatorFolder() + name);
  CopyFileOrStop(DataFolder + "\\logo\\" + name, CalculatorFolder() + name);
}

// What the user is told of forms that are not published. Of those that are missing only the last is named.
struct FormWarnings {
  std::string missing, others;
  void Add(const std::string& text) { others += (others.empty() ? "" : "\r\n\r\n") + text; }
  std::string Text() const { return missing + (missing.empty() || others.empty() ? "" : "\r\n\r\n") + others; }
};

// Copies the forms' pages. Returns those that are there and not empty.
std::vector<PublishedForm> CopyForms(const std::vector<LinkedForm>& forms, FormWarnings& warnings) {
  std::vector<PublishedForm> published;
  for (const LinkedForm& form : forms) {
    const std::string source = FormPagePath(form.id);
    if (!IsPortableFileName(form.linkName + "!9999.html")) {
      warnings.Add(
          Tr("Warning: Form <%1> cannot be published, because no file can be called\r\n\"%2\".\r\n\r\n"
             "Please give the form another name and try again",
             {form.description, form.linkName}));
    } else if (!FileExists(source)) {
      warnings.missing = Tr("Warning: Form <%1> was not found please check and try again", {form.description});
    } else {
      const std::string target = TargetName(form.linkName);
      CopyFile(source, CalculatorFolder() + target);
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

std::string IconPath(const std::string& name) {
  return DataFolder + "\\icons\\" + name + ".ico";
}

// Returns the warning to show, empty for none.
std::string FillCalculatorFolder() {
  const std::string folder = CalculatorFolder();
  if (!RefreshPages(CalculatorPreferences)) {
    throw RuntimeError(kDeviceError, Tr("One of the two pages in %1 is older than the other", {AppFolder}));
  }
  SaveSupplierCalcSettings();
  const auto forms = LinkedForms(CurrentSupplierId);
  for (const char* old : {"*.html", "background.*", "logo.*"}) DeleteFileIfPresent(folder + old);
  CopyFileOrStop(AppFolder + "\\calc.html", folder + "calc.html");
  CopyFileOrStop(AppFolder + "\\calc_test.html", folder + "calc_test.html");
  CopyPicture(LogoFileName());
  CopyFileOrStop(AppFolder + "\\general.dat", folder + "general.dat");
  CopyPicture(BackgroundFileName());
  FormWarnings warnings;
  const auto published = CopyForms(forms, warnings);
  WriteFile(folder + "calcdata.txt", CalculatorData(TheDesktop().Now(), ReadFile(folder + "general.dat"),
                                                    ReadFile(folder + "Supplier.dat"), published));
  return warnings.Text();
}

}  // namespace

std::vector<int> LinkedFormIds(int supplierId) {
  std::vector<int> ids;
  for (const LinkedForm& form : LinkedForms(supplierId)) ids.push_back(form.id);
  return ids;
}

void BuildCalculatorFolder() {
  SetStatus(true, "Saving Settings", -1);
  std::string warning;
  try {
    warning = FillCalculatorFolder();
  } catch (const RuntimeError&) {
    ShowError("Failed setting up calculator", true);
  }
  SetStatus(false, "", -1);
  if (!warning.empty()) TheDesktop().MessageBox(warning, Tr("Warning"), BoxButtons::Ok, BoxIcon::Critical);
}

bool CanPublish(const CalculatorPreferencesRecord& prefs) {
  const std::string why = ContradictoryLimits(prefs);
  if (why.empty()) return true;
  TheDesktop().MessageBox(why, Tr("Calculator Options"), BoxButtons::Ok, BoxIcon::Exclamation);
  return false;
}

bool MayPublish() {
  const std::string obstacle =
      CurrentSupplierId == 0 ? ReplaceAliases("There is no <SUPPLIER> to publish for") : RateCardFault;
  if (obstacle.empty()) return true;
  TheDesktop().MessageBox(obstacle, ReplaceAliases("<CALCNAME>"), BoxButtons::Ok, BoxIcon::Exclamation);
  return false;
}

void PreviewCalculator() {
  if (!MayPublish() || !CanPublish(CalculatorPreferences)) return;
  BuildCalculatorFolder();
  DeleteFileIfPresent(CalculatorFolder() + "LastCalc.dat");
  LaunchDocument(CalculatorFolder() + "calc_test.html");
}

std::string InstallIconPath() {
  const std::string name = CalculatorPreferences.IconName.Trimmed();
  return !name.empty() && FileExists(IconPath(name)) ? IconPath(name) : std::string();
}

void BringInstallIcon() {
  const std::string source = InstallIconPath(), target = CalculatorFolder() + "calc.ico";
  if (source.empty() || (FileExists(target) && ReadFile(source) == ReadFile(target))) return;
  CopyFile(source, target);
}

void CopyInstallIcon(const CalculatorPreferencesRecord& prefs) {
  const std::string name = prefs.IconName.Trimmed();
  if (name.empty()) {
    TheDesktop().MessageBox(Tr("Warning: No icon has been selected"), Tr("Instalation Icon"), BoxButtons::Ok,
                            BoxIcon::Exclamation);
    return;
  }
  try {
    CopyFile(IconPath(name), CalculatorFolder() + "calc.ico");
  } catch (const RuntimeError&) {
    ShowError("Icon Copy Failed", true);
  }
}

}  // namespace tarvolinex
