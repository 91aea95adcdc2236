#include "app/StartUp.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

class StartUpTest : public ProgramTest {
 protected:
  StartUpTest() {
    options.appFolder = folder.Path() + "/app";
    std::filesystem::create_directories(options.appFolder);
  }
  void Deliver(const char* name) {
    std::filesystem::copy_file(std::string(DELIVERED_FOLDER "/") + name, options.appFolder + "/" + name);
  }
  std::string Email(const std::string& statement) {
    Recordset answer;
    answer.Open(statement, TheStore->connection);
    return ValueText(answer.Field(0));
  }
  ProgramOptions options;
  std::string order;
  const Splash splash{[this] { order += "splash "; }, [this] { order += "front "; }};
};

TEST_F(StartUpTest, TheFirstStartAsksForTheOrganisationAndPointsTheSamplesAtIt) {
  Deliver("General.dat");
  Deliver("Database.zip");
  FrmMain form;
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
  EXPECT_EQ(Email("SELECT COUNT(*) FROM contacts WHERE email='leases@northgate.example'"), "30");
  EXPECT_EQ(form.send.lvSendContacts.At(0).cells.at(0), "leases@northgate.example");
  EXPECT_FALSE(desktop.busy);
  EXPECT_EQ(desktop.shown.back(), "FrmMain");
  EXPECT_FALSE(form.loading || LoadingSupplier || ErrorShown);
}

TEST_F(StartUpTest, LaterStartsAskNothing) {
  Deliver("General.dat");
  Deliver("Database.zip");
  CalculatorPreferencesRecord record;
  ReadRecord(options.appFolder + "/General.dat", record);
  record.OrgCompanyName = "Northgate Leasing";
  record.OrgEmail = "leases@northgate.example";
  WriteRecord(options.appFolder + "/General.dat", record);
  FrmMain form;
  StartWindow(options, form, splash);
  for (const std::string& window : desktop.shown) EXPECT_EQ(window, "FrmMain");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(StartUpTest, BrokenPreferencesEndTheStart) {
  std::ofstream(options.appFolder + "/General.dat") << "broken";
  FrmMain form;
  EXPECT_THROW(StartWindow(options, form, splash), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text, "General Calculator Preferences Load Failed");
  EXPECT_EQ(order, "");
}

TEST_F(StartUpTest, AStepOfTheWindowsLoadThatFailsIsPassedOver) {
  Deliver("Database.zip");
  std::filesystem::create_directories(options.appFolder + "/General.INI");
  FrmMain form;
  StartWindow(options, form, splash);
  EXPECT_EQ(form.LvwSuppliers.Count(), 12);
}

}  // namespace tarvolinex
