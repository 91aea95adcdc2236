#include "store/DatabaseFile.h"

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/AppFolder.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ZipComponent.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
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

std::string ConnectReport(const RuntimeError& failure) {
  return std::to_string(failure.Number()) + " " + failure.Description();
}

// Throws RuntimeError when the file is no database of ours; none is then open.
void Connect() {
  // These belong to the database that is left.
  SupplierChanged = FormLinksChanged = ContactChanged = false;
  if (MainFormExists()) OfferUndo({});
  for (Recordset* set :
       {&TheStore->SupplierRecords, &TheStore->FormRecords, &TheStore->FormLinkRecords, &TheStore->ContactRecords}) {
    set->Close();
  }
  Connection& connection = TheStore->connection;
  connection.Open("driver={Microsoft Access Driver (*.mdb)};dbq=" + DatabasePath());
  try {
    for (const char* table : {"suppliers", "DefaultSupplier", "SupplierFormLink", "Forms", "contacts"}) {
      if (!connection.HasTable(table)) {
        throw RuntimeError(kDatabase,
                           Tr("The database %1 cannot be opened: it has no table %2", {DatabasePath(), table}));
      }
    }
  } catch (const RuntimeError&) {
    connection.Close();
    throw;
  }
  if (MainFormExists()) MainForm().ShowDatabase(DataFolder);
}

// After a database could not be opened: whether the user looks for another one. That the program was started with this
// one does not lock him out for good.
bool LooksForAnother() {
  const std::string question =
      Tr("The database in this folder cannot be opened :-\n\n%1\n\nWould you like to find another database?",
         {DataFolder});
  return TheDesktop().MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Question) ==
         Answer::Yes;
}

// Connects, after every failure with what the user chooses instead. The folder is remembered before, as the place where
// the work goes on, and forgotten again when nothing can be opened there.
void ConnectOrChooseAnother() {
  for (;;) {
    std::string before;
    try {
      before = ReadIni("General", "OPTIONS", "DATABASEPATH", "");
    } catch (const RuntimeError&) {
      // Settings that cannot be read have been reported; the database opens without them.
    }
    WriteIni("General", "OPTIONS", "DATABASEPATH", DataFolder);
    try {
      return Connect();
    } catch (const RuntimeError& failure) {
      WriteIni("General", "OPTIONS", "DATABASEPATH", before);
      ShowError(ConnectReport(failure));
      if (!LooksForAnother() || !ChooseDatabase()) throw ProgramEnded{1};
    }
  }
}

// A database that a package is about to be unpacked over is kept, with what an interrupted write has left beside it.
void KeepReplacedDatabase() {
  const std::string database = DatabasePath(), journal = database + "-journal";
  if (!FileExists(database)) return;
  const std::string folder = DataFolder + "\\Backup";
  if (!FolderExists(folder)) MakeFolder(folder);
  std::string copy;
  for (int n = 1; copy.empty() || FileExists(copy); ++n) {
    copy = folder + "\\Replaced " + IsoDate(TheDesktop().Now()) + (n > 1 ? " " + std::to_string(n) : "") + ".mdb";
  }
  CopyFile(database, copy);
  if (!FileExists(journal)) return;
  CopyFile(journal, copy + "-journal");
  DeleteFile(journal);  // it belongs to the file that goes
}

// A first start brings the delivered package to where its database is opened, and to no other folder. Returns whether
// it did.
bool BringPackage(const std::string& package) {
  const std::string delivered = DeliveredFolder() + "\\Database.zip";
  if (UpperCase(DataFolder) != UpperCase(AppFolder) || FileExists(DatabasePath()) || !FileExists(delivered))
    return false;
  CopyFile(delivered, package);
  return true;
}

void UseFreshDatabase() {
  if (!DatabaseUnpacked) return;
  PointContactsAtOrganisation();
  MainForm().menus.MnuRefresh.Choose();
}

}  // namespace

void ConnectDatabase() {
  try {
    Connect();
  } catch (const RuntimeError& failure) {
    ShowError(ConnectReport(failure), true);
  }
}

bool UnpackDatabase() {
  DatabaseUnpacked = false;
  DropTrailingSeparator(DataFolder);
  const std::string package = DataFolder + "\\Database.zip";
  bool brought = false;
  try {
    brought = !FileExists(package) && BringPackage(package);
  } catch (const RuntimeError& failure) {
    ShowError(failure.Description());
    return false;
  }
  if (!FileExists(package)) return true;
  SetStatus(false, "Setting Database", 10);
  try {
    // Two programs must not unpack it, the second over the database that the first has opened.
    const FileLock alone(package, std::chrono::seconds(30));
    if (!FileExists(package)) return true;
    KeepReplacedDatabase();
    ZipComponent zip;
    zip.ZipFileName = package;
    zip.UnzipToFolder = DataFolder;
    zip.Unzip();
    TheDesktop().DoEvents();
    if (UpperCase(DataFolder) == UpperCase(AppFolder)) CopyFile(package, AppFolder + "\\Database.Bak");
    DeleteFile(package);
  } catch (const RuntimeError& failure) {
    if (!FileExists(package)) return true;  // the other program was faster
    // One that was not used does not wait for a database that the user puts beside it; one that was begun is gone on
    // with at the next start.
    if (brought && !FileExists(DatabasePath())) DeleteFile(package);
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
  ConnectOrChooseAnother();
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
