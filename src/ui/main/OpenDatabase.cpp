// Finding and opening the database that the window works on.
#include "controls/Desktop.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DatabaseFile.h"
#include "store/SharedDatabase.h"
#include "store/SharedFiles.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

std::string ConnectReport(const RuntimeError& failure) {
  return std::to_string(failure.Number()) + " " + failure.Description();
}

}  // namespace

bool FrmMain::AgreesToLook() {
  const std::string question =
      Tr("Database Could not be found :-\n\n%1\n\nWould you like to find a database your self?", {run.DataFolder});
  return TheDesktop().MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Critical) ==
         Answer::Yes;
}

// False when the user cancels.
bool FrmMain::ChooseDatabase() {
  const std::string chosen = TheDesktop().OpenFile(
      {Tr("Open Database"), run.SharedDatabase.empty() ? run.DataFolder : RememberedDataFolder(run), "",
       run.ReplaceAliases("<SUPPLIER> Database (Tarvolinex.mdb)|tarvolinex.mdb")});
  if (Trim(chosen).empty()) return false;
  // Both separators occur: what the user chose comes from the machine, what is remembered from the program.
  RememberSharedDatabase(run.AppFolder, {false, RememberedSharedDatabase(run.AppFolder).text});
  run.SharedDatabase.clear();
  run.DataFolder = ReplaceAllNoCase(ReplaceAllNoCase(chosen, "\\Tarvolinex.mdb", ""), "/Tarvolinex.mdb", "");
  return true;
}

bool FrmMain::FindDatabase(bool& askUser) {
  if (!askUser && run.SharedDatabase.empty() && !FileExists(DatabasePath(run.DataFolder))) {
    if (!AgreesToLook()) return false;
    askUser = true;
  }
  return !askUser || ChooseDatabase();
}

// Throws RuntimeError when the file is no database of ours; none is then open.
void FrmMain::Connect() {
  // These belong to the database that is left.
  shown.SupplierChanged = forms.FormLinksChanged = contacts.ContactChanged = false;
  OfferUndo({});
  RemovedQuotes.clear();
  draft_ = {};
  database.Open(run.DataFolder, run.SharedDatabase);
  told_ = database.Plain().Told();
  ShowDatabaseName();
  RememberDefaults();
  ShareFiles(database, run);
  TakePreferences();
  KeepDeskCopy();
}

void FrmMain::ShowDatabaseName() {
  const std::string text = database.ReadOnly() ? Tr("Database: %1 (to be read only)", {database.Name()})
                                               : Tr("Database: %1", {database.Name()});
  LblDatabase.SetCaption(CaptionOf(text));
  LblDatabase.SetToolTip(text);
  LockFields();
}

// After a database could not be opened: whether the user looks for another one. That the program was started with this
// one does not lock him out for good.
bool FrmMain::LooksForAnother() {
  const std::string question =
      run.SharedDatabase.empty()
          ? Tr("The database in this folder cannot be opened :-\n\n%1\n\nWould you like to find another database?",
               {run.DataFolder})
          : Tr("The shared database cannot be opened :-\n\n%1\n\nWould you like to find another database?",
               {database.Name()});
  return TheDesktop().MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Question) ==
         Answer::Yes;
}

// Connects, after every failure with what the user chooses instead. The folder is remembered before, as the place where
// the work goes on, and forgotten again when nothing can be opened there.
void FrmMain::ConnectOrChooseAnother() {
  const auto remember = [&](const std::string& folder) {
    if (run.SharedDatabase.empty()) WriteIni(run.AppFolder, "General", "OPTIONS", "DATABASEPATH", folder);
  };
  for (;;) {
    std::string before;
    try {
      before = ReadIni(run.AppFolder, "General", "OPTIONS", "DATABASEPATH", "");
    } catch (const RuntimeError&) {
      // Settings that cannot be read have been reported; the database opens without them.
    }
    remember(run.DataFolder);
    try {
      return Connect();
    } catch (const RuntimeError& failure) {
      remember(before);
      run.ShowError(ConnectReport(failure));
      if (LooksAtCopy()) return;
      if (!LooksForAnother() || !ChooseDatabase()) throw ProgramEnded{1};
    }
  }
}

void FrmMain::UseFreshDatabase() {
  if (!DatabaseUnpacked) return;
  PointContactsAtOrganisation();
  menus.MnuRefresh.Choose();
}

void FrmMain::PointContactsAtOrganisation() {
  tarvolinex::PointContactsAtOrganisation(database, run.CalculatorPreferences.OrgEmail.Trimmed());
}

void FrmMain::ConnectDatabase() {
  try {
    Connect();
  } catch (const RuntimeError& failure) {
    run.ShowError(ConnectReport(failure), true);
  }
}

bool FrmMain::OpenDatabase(bool& askUser) {
  run.DataFolder = WithoutTrailingSeparator(run.DataFolder);
  const Unpacked unpacked = run.SharedDatabase.empty() ? UnpackDatabase(run.Places(), run) : Unpacked::No;
  DatabaseUnpacked = unpacked == Unpacked::Yes;
  if (unpacked == Unpacked::Failed || !FindDatabase(askUser)) {
    // The file that is open may have been unpacked over.
    if (DatabaseUnpacked && database.IsOpen()) {
      ConnectDatabase();
      LoadStartLists();
      UseFreshDatabase();
    }
    run.SetStatus(false, "", -1);
    return false;
  }
  run.SetStatus(false, "Opening Database", 50);
  ConnectOrChooseAnother();
  LoadStartLists();
  UseFreshDatabase();
  TheDesktop().Show(*this);
  run.SetStatus(false, "", -1);
  return true;
}

void FrmMain::LoadStartLists() {
  forms.LoadFormsList();
  LoadSupplierList(false);
  LvwSuppliers_ItemClick();
}

}  // namespace tarvolinex
