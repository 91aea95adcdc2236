#include "app/StartUp.h"

#include <iostream>

#include "controls/Desktop.h"
#include "core/ProgramFiles.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Preferences.h"
#include "publish/Template.h"
#include "store/SharedDatabase.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

namespace {

// The database that this run was started with.
void UseDatabase(const std::string& connectionString, Run& run) {
  if (connectionString.empty()) {
    const RememberedDatabase remembered = RememberedSharedDatabase(run.AppFolder);
    // A data folder that is named is that file's.
    if (remembered.used && run.ChosenDataFolder.empty()) run.SharedDatabase = remembered.text;
    return;
  }
  if (IsPostgres(connectionString)) {
    run.SharedDatabase = connectionString;
    return;
  }
  const std::string path = WholePath(FileIn(connectionString));
  const auto name = path.find_last_of("/\\");
  if (name == std::string::npos || !EqualNoCase(path.substr(name + 1), "Tarvolinex.mdb")) {
    throw RuntimeError(kBadFileName,
                       Tr("A connection string names a server (driver={PostgreSQL};...) or a file that is "
                          "called Tarvolinex.mdb (dbq=...): %1",
                          {connectionString}));
  }
  run.ChosenDataFolder = path.substr(0, name);
}

}  // namespace

void PrepareRun(const ProgramOptions& options, Run& run) {
  run.AppFolder = ChooseAppFolder(options.appFolder);
  run.ChosenDataFolder = options.dataFolder.empty() ? "" : WholePath(options.dataFolder);
  UseDatabase(options.database, run);
  run.DataFolder = run.SharedDatabase.empty() || !run.ChosenDataFolder.empty()
                       ? RememberedDataFolder(run)
                       : DeskFolder(run.AppFolder, run.SharedDatabase);
  const std::string_view only = OnlyFileOfCommand(options.command);
  const bool untouched = IsDryRun(options) && FileExists(run.AppFolder + "\\General.dat");
  const bool newTemplate = !untouched && FillAppFolder(run.Places(), only);
  LoadWebSettings(run);
  LoadCalculatorPreferences(run.Places(), run.CalculatorPreferences, run);
  if (untouched) return;
  // A new app folder can publish from the start, also when its first start was cut off, and a new version of the page
  // counts at once.
  const std::string& app = run.AppFolder;
  const bool neverMade = !FileExists(app + "\\calc.html") && !FileExists(app + "\\calc_test.html");
  const auto branding = [&]() -> Branding { return {run.Places(), run.CalculatorPreferences, run.CustomerReference}; };
  if (!newTemplate && !neverMade && (!only.empty() || !PagesAreDue(branding()))) return;
  if (options.command.empty() || WritesFolders(options)) return MakePages(branding(), run);
  try {
    // This command works beside other programs; when there is one, the pages are in its hands.
    const FolderLock alone(app);
    LoadCalculatorPreferences(run.Places(), run.CalculatorPreferences, run);
    MakePages(branding(), run);
  } catch (const RuntimeError&) {
  }
}

namespace {

// Without a name and an e-mail address the calculators would have no sender: the user gives them first.
void AskForOrganisation(FrmMain& form) {
  const CalculatorPreferencesRecord& prefs = form.run.CalculatorPreferences;
  if (form.database.ReadOnly()) return;  // they are for whoever may store them
  if (!prefs.OrgCompanyName.Trimmed().empty() && !prefs.OrgEmail.Trimmed().empty()) return;
  SetBusy(false);
  FrmLeaseOrgDetails details(
      form.run, [&form] { form.UsePreferences(); },
      [&form](CalculatorPreferencesRecord& edited) { return form.AgreeOnDetails(edited); });
  details.Load();
  TheDesktop().ShowModal(details);
  if (form.DatabaseUnpacked) {
    SetBusy(true);
    form.PointContactsAtOrganisation();
    form.menus.MnuRefresh.Choose();
    SetBusy(false);
  }
  TheDesktop().Show(form);
}

}  // namespace

void StartWindow(const ProgramOptions& options, FrmMain& form, const Splash& splash) {
  try {
    SetBusy(true);
    PrepareRun(options, form.run);
    splash.show();
    form.Load();
    TheDesktop().Show(form);
    splash.bringToFront();
    TheDesktop().DoEvents();
    AskForOrganisation(form);
    SetBusy(false);
  } catch (const RuntimeError& failure) {
    std::cerr << "tarvolinex: " << failure.Description() << '\n';
    form.run.ShowError("Load failed", true);
  }
}

}  // namespace tarvolinex
