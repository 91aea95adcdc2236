#include "app/StartUp.h"

#include <iostream>

#include "controls/Desktop.h"
#include "core/AppFolder.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "publish/Preferences.h"
#include "publish/Template.h"
#include "store/DatabaseFile.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

void PrepareRun(const ProgramOptions& options) {
  ChooseAppFolder(options.appFolder);
  ChosenDataFolder = options.dataFolder.empty() ? "" : WholePath(options.dataFolder);
  DataFolder = RememberedDataFolder();
  const bool newTemplate = FillAppFolder();
  LoadWebSettings();
  LoadCalculatorPreferences();
  // A new app folder can publish from the start, also when its first start was cut off, and a new version of the page
  // counts at once.
  const bool neverMade = !FileExists(AppFolder + "\\calc.html") && !FileExists(AppFolder + "\\calc_test.html");
  if (!newTemplate && !neverMade && !PagesAreDue(CalculatorPreferences)) return;
  if (options.command.empty() || CommandWritesFolders(options.command)) return MakePages(CalculatorPreferences);
  try {
    // This command works beside other programs; when there is one, the pages are in its hands.
    const FolderLock alone(AppFolder);
    LoadCalculatorPreferences();
    MakePages(CalculatorPreferences);
  } catch (const RuntimeError&) {
  }
}

namespace {

// Without a name and an e-mail address the calculators would have no sender: the user gives them first.
void AskForOrganisation(FrmMain& form) {
  if (!CalculatorPreferences.OrgCompanyName.Trimmed().empty() && !CalculatorPreferences.OrgEmail.Trimmed().empty()) {
    return;
  }
  SetBusy(false);
  FrmLeaseOrgDetails details;
  details.Load();
  TheDesktop().ShowModal(details);
  if (DatabaseUnpacked) {
    SetBusy(true);
    PointContactsAtOrganisation();
    form.menus.MnuRefresh.Choose();
    SetBusy(false);
  }
  TheDesktop().Show(form);
}

}  // namespace

void StartWindow(const ProgramOptions& options, FrmMain& form, const Splash& splash) {
  try {
    SetBusy(true);
    PrepareRun(options);
    splash.show();
    form.Load();
    TheDesktop().Show(form);
    splash.bringToFront();
    TheDesktop().DoEvents();
    AskForOrganisation(form);
    SetBusy(false);
  } catch (const RuntimeError& failure) {
    std::cerr << "tarvolinex: " << failure.Description() << '\n';
    ShowError("Load failed", true);
  }
}

}  // namespace tarvolinex
