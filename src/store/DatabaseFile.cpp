#include "store/DatabaseFile.h"

#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "platform/ZipComponent.h"
#include "store/Forms.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

std::string DatabasePath() {
  return DataFolder + "\\Tarvolinex.mdb";
}

void DropTrailingSeparator(std::string& folder) {
  if (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
}

bool AgreesToLook() {
  const std::string question =
      Tr("Database Could not be found :-\n\n%1\n\nWould you like to find a database your self?", {DataFolder});
  return TheDesktop().MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Critical) ==
         Answer::Yes;
}

// False when the user cancels.
bool ChooseDatabase() {
  const std::string chosen = TheDesktop().OpenFile(
      {Tr("Open Database"), DataFolder, "", ReplaceAliases("<SUPPLIER> Database (Tarvolinex.mdb)|tarvolinex.mdb")});
  if (Trim(chosen).empty()) return false;
  // Both separators occur: what the user chose comes from the machine, what is remembered from the program.
  DataFolder = ReplaceAllNoCase(ReplaceAllNoCase(chosen, "\\Tarvolinex.mdb", ""), "/Tarvolinex.mdb", "");
  return true;
}

bool FindDatabase(bool& askUser) {
  if (!askUser && !FileExists(DatabasePath())) {
    if (!AgreesToLook()) return false;
    askUser = true;
  }
  return !askUser || ChooseDatabase();
}

void UseFreshDatabase() {
  if (!DatabaseUnpacked) return;
  PointContactsAtOrganisation();
  MainForm().menus.MnuRefresh.Choose();
}

}  // namespace

void ConnectDatabase() {
  // These belong to the database that is left.
  RemovedSupplier = {};
  SupplierChanged = FormLinksChanged = ContactChanged = false;
  if (MainFormExists()) MainForm().menus.MnuUndoRemove.SetEnabled(false);
  try {
    for (Recordset* set :
         {&TheStore->SupplierRecords, &TheStore->FormRecords, &TheStore->FormLinkRecords, &TheStore->ContactRecords}) {
      set->Close();
    }
    TheStore->connection.Open("driver={Microsoft Access Driver (*.mdb)};dbq=" + DatabasePath());
    if (MainFormExists()) MainForm().ShowDatabase(DataFolder);
  } catch (const RuntimeError& failure) {
    ShowError(std::to_string(failure.Number()) + " " + failure.Description(), true);
  }
}

bool UnpackDatabase() {
  DatabaseUnpacked = false;
  DropTrailingSeparator(DataFolder);
  const std::string package = DataFolder + "\\Database.zip";
  if (!FileExists(package)) return true;
  SetStatus(false, "Setting Database", 10);
  try {
    // Two programs must not unpack it, the second over the database that the first has opened.
    const FileLock alone(package, std::chrono::seconds(30));
    if (!FileExists(package)) return true;
    ZipComponent zip;
    zip.ZipFileName = package;
    zip.UnzipToFolder = DataFolder;
    zip.Unzip();
    TheDesktop().DoEvents();
    if (UpperCase(DataFolder) == UpperCase(AppFolder)) CopyFile(package, AppFolder + "\\Database.Bak");
    DeleteFile(package);
  } catch (const RuntimeError& failure) {
    if (!FileExists(package)) return true;  // the other program was faster
    if (failure.Number() == kBadFileName) ShowError("Database Invalid", true);
    ShowError(failure.Description());
    return false;
  }
  DatabaseUnpacked = true;
  SetStatus(false, "Setting Database", 100);
  return true;
}

bool OpenDatabase(bool& askUser) {
  if (!UnpackDatabase() || !FindDatabase(askUser)) {
    // The file that is open may have been unpacked over.
    if (DatabaseUnpacked && TheStore->connection.IsOpen()) {
      ConnectDatabase();
      LoadStartLists();
      UseFreshDatabase();
    }
    SetStatus(false, "", -1);
    return false;
  }
  SetStatus(false, "Opening Database", 50);
  WriteIni("General", "OPTIONS", "DATABASEPATH", DataFolder);
  ConnectDatabase();
  LoadStartLists();
  UseFreshDatabase();
  TheDesktop().Show(MainForm());
  SetStatus(false, "", -1);
  return true;
}

bool OpenDatabaseForCommand() {
  if (!UnpackDatabase()) return false;
  if (!FileExists(DatabasePath())) {
    ShowError(Tr("Database Could not be found :-\n\n%1", {DataFolder}));
    return false;
  }
  ConnectDatabase();
  // Until the organisation has an address the sample contacts keep their own, which lead nowhere.
  if (DatabaseUnpacked && !CalculatorPreferences.OrgEmail.Trimmed().empty()) PointContactsAtOrganisation();
  SetStatus(false, "", -1);
  return true;
}

void LoadStartLists() {
  LoadFormsList(MainForm().rateCard.LvwForms);
  LoadSupplierList(false);
  ListView& list = MainForm().LvwSuppliers;
  if (list.ItemClick) list.ItemClick();
}

void PointContactsAtOrganisation() {
  ExecuteStatement(
      FillStatement(statements::kAllEmails, "<email>", EscapeQuotes(CalculatorPreferences.OrgEmail.Trimmed())));
}

}  // namespace tarvolinex
