#include "app/StartUp.h"

#include <sys/stat.h>

#include "cli/ChosenSupplier.h"
#include "platform/RuntimeError.h"
#include "store/DatabaseFile.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"
#include "support/Process.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

class StartUpTest : public ProgramTest {
 protected:
  StartUpTest() {
    options.appFolder = folder.Path() + "/app";
    std::filesystem::create_directories(options.appFolder);
    for (const char* name : {"inst0.txt", "inst1.txt", "inst2.txt", "General.dat", "Database.zip"}) {
      std::filesystem::copy_file(std::string(DELIVERED_FOLDER "/") + name, options.appFolder + "/" + name);
    }
  }
  ProgramOptions options;
  std::string order;
  const Splash splash{[this] { order += "splash "; }, [this] { order += "front "; }};
};

TEST_F(StartUpTest, TheFirstStartAsksForTheOrganisationAndPointsTheSamplesAtIt) {
  FrmMain form(run);
  desktop.modal = [&](Window& window) {
    EXPECT_EQ(window.Name(), "FrmLeaseOrgDetails");
    EXPECT_FALSE(desktop.busy);
    auto& details = static_cast<FrmLeaseOrgDetails&>(window);
    details.TxtLeaseOrg(0).SetText("Northgate Leasing");
    details.TxtLeaseOrg(10).SetText("leases@northgate.example");
    details.cmdaction(0).Press();
  };
  StartWindow(options, form, splash);
  EXPECT_EQ(order, "splash front ");
  Recordset others;
  others.Open("SELECT * FROM contacts WHERE email<>'leases@northgate.example'", form.database.Plain());
  EXPECT_TRUE(others.EndOfFile());
  EXPECT_EQ(form.send.lvSendContacts.At(0).cells.at(0), "leases@northgate.example");
  EXPECT_EQ(form.Caption() + form.TxtStatus.Text(), "Tarvolinex - Aldermoor Print Finishing Ltd");
  EXPECT_FALSE(desktop.busy);
  EXPECT_EQ(desktop.shown.back(), "FrmMain");
  EXPECT_FALSE(form.quote.loading || form.shown.LoadingSupplier || ErrorShown);
}

TEST_F(StartUpTest, LaterStartsAskNothing) {
  CalculatorPreferencesRecord record;
  ReadRecord(options.appFolder + "/General.dat", record);
  record.OrgCompanyName = "Northgate Leasing";
  record.OrgEmail = "leases@northgate.example";
  WriteRecord(options.appFolder + "/General.dat", record);
  FrmMain form(run);
  StartWindow(options, form, splash);
  for (const std::string& window : desktop.shown) EXPECT_EQ(window, "FrmMain");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(StartUpTest, APackageIsDeliveredOnlyWhereItsDatabaseIsOpened) {
  // The remembered folder is on a stick that is not there, and somebody puts his database into the app folder.
  std::filesystem::remove(options.appFolder + "/Database.zip");
  std::ofstream(options.appFolder + "/General.INI") << "[OPTIONS]\r\nDATABASEPATH=/not/there\r\n";
  PrepareRun(options, run);
  EXPECT_FALSE(FileExists(options.appFolder + "/Database.zip"));
  Database database(run);
  EXPECT_FALSE(OpenDatabaseForCommand(run, database));
  EXPECT_FALSE(FileExists(options.appFolder + "/Database.zip"));
}

TEST_F(StartUpTest, AnUnreadableSettingsFileIsReportedAndTheStartGoesOn) {
  const std::string settings = options.appFolder + "/General.INI";
  std::ofstream(settings) << "[OPTIONS]\r\n";
  chmod(settings.c_str(), 0);
  chmod((options.appFolder + "/Database.zip").c_str(), 0666);
  chmod(folder.Path().c_str(), 0755);
  chmod(options.appFolder.c_str(), 0777);
  FrmMain form(run);
  {
    const AnotherUser user;
    if (!FolderExists(options.appFolder)) GTEST_SKIP() << "no other user can reach " << options.appFolder;
    StartWindow(options, form, splash);
  }
  EXPECT_EQ(desktop.boxes.at(0).text, "Initialisation File Loading Error");
  EXPECT_EQ(form.LvwSuppliers.Count(), 12);
}

TEST_F(StartUpTest, AStepOfTheWindowsLoadThatFailsIsPassedOver) {
  std::filesystem::create_directories(options.appFolder + "/General.INI");
  FrmMain form(run);
  StartWindow(options, form, splash);
  EXPECT_EQ(form.LvwSuppliers.Count(), 12);
}

TEST_F(StartUpTest, ACommandThatReportedAnErrorFailsWhateverElseItDid) {
  options.command = "record";
  options.arguments = {"show", options.appFolder + "/General.dat"};
  EXPECT_EQ(RunCommand(options, run), kDone);
  ErrorShown = true;
  EXPECT_EQ(RunCommand(options, run), kFailed);
}

TEST_F(StartUpTest, ASecondProgramOnTheFolderIsRefused) {
  const FolderLock first(options.appFolder);
  const auto before = ListFiles(options.appFolder + "\\*.*");
  const Process second("QT_QPA_PLATFORM=offscreen " PROGRAM " --app-folder " + options.appFolder +
                       " 2>&1 | grep --line-buffered ^tarvolinex");
  EXPECT_EQ(second.FirstLine(), "tarvolinex: Another running Tarvolinex uses the folder " + options.appFolder);
  EXPECT_EQ(ListFiles(options.appFolder + "\\*.*"), before);
  EXPECT_FALSE(FolderExists(options.appFolder + "\\calculator"));
}

}  // namespace tarvolinex
