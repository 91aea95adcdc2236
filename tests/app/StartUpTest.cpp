#include "app/StartUp.h"

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/ChosenSupplier.h"
#include "platform/RuntimeError.h"
#include "store/DatabaseFile.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

class StartUpTest : public ProgramTest {
 protected:
  StartUpTest() {
    options.appFolder = folder.Path() + "/app";
    std::filesystem::create_directories(options.appFolder);
    for (const char* text : {"inst0.txt", "inst1.txt", "inst2.txt"}) Deliver(text);
  }
  void Deliver(const char* name) {
    std::filesystem::copy_file(std::string(DELIVERED_FOLDER "/") + name, options.appFolder + "/" + name);
  }
  static std::string Email(FrmMain& form, const std::string& statement) {
    Recordset answer;
    answer.Open(statement, form.database.Plain());
    return ValueText(answer.Field(0));
  }
  ProgramOptions options;
  std::string order;
  const Splash splash{[this] { order += "splash "; }, [this] { order += "front "; }};
};

TEST_F(StartUpTest, TheFirstStartAsksForTheOrganisationAndPointsTheSamplesAtIt) {
  Deliver("General.dat");
  Deliver("Database.zip");
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
  EXPECT_EQ(Email(form, "SELECT COUNT(*) FROM contacts WHERE email='leases@northgate.example'"), "30");
  EXPECT_EQ(form.send.lvSendContacts.At(0).cells.at(0), "leases@northgate.example");
  EXPECT_FALSE(desktop.busy);
  EXPECT_EQ(desktop.shown.back(), "FrmMain");
  EXPECT_FALSE(form.quote.loading || form.shown.LoadingSupplier || ErrorShown);
}

TEST_F(StartUpTest, LaterStartsAskNothing) {
  Deliver("General.dat");
  Deliver("Database.zip");
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
  std::ofstream(options.appFolder + "/General.INI") << "[OPTIONS]\r\nDATABASEPATH=/not/there\r\n";
  PrepareRun(options, run);
  EXPECT_FALSE(FileExists(options.appFolder + "/Database.zip"));
  Database database(run);
  EXPECT_FALSE(OpenDatabaseForCommand(run, database));
  EXPECT_FALSE(FileExists(options.appFolder + "/Database.zip"));
}

TEST_F(StartUpTest, AnUnreadableSettingsFileIsReportedAndTheStartGoesOn) {
  Deliver("Database.zip");
  Deliver("General.dat");
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
  Deliver("Database.zip");
  std::filesystem::create_directories(options.appFolder + "/General.INI");
  FrmMain form(run);
  StartWindow(options, form, splash);
  EXPECT_EQ(form.LvwSuppliers.Count(), 12);
}

TEST_F(StartUpTest, ASecondProgramOnTheFolderIsRefused) {
  const FolderLock first(options.appFolder);
  const auto before = ListFiles(options.appFolder + "\\*.*");
  int pipes[2];
  ASSERT_EQ(pipe(pipes), 0);
  const pid_t second = fork();
  if (second == 0) {
    dup2(pipes[1], STDERR_FILENO);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    execl(PROGRAM, PROGRAM, "--app-folder", options.appFolder.c_str(), nullptr);
    _exit(127);
  }
  close(pipes[1]);
  const std::string expected = "tarvolinex: Another running Tarvolinex uses the folder " + options.appFolder + "\n";
  std::string said;
  for (char c = 0; said.find(expected) == std::string::npos && read(pipes[0], &c, 1) == 1;) said += c;
  EXPECT_NE(said.find(expected), std::string::npos) << said;
  kill(second, SIGKILL);  // its box waits for an answer
  int status = 0;
  waitpid(second, &status, 0);
  close(pipes[0]);
  EXPECT_EQ(ListFiles(options.appFolder + "\\*.*"), before);
  EXPECT_FALSE(FolderExists(options.appFolder + "\\calculator"));
}

}  // namespace tarvolinex
