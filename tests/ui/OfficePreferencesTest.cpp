// The preferences of an organisation whose desks share a database.
#include "support/OptionsFixture.h"
#include "ui/main/FrmConflict.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

class OfficePreferencesTest : public WithOptions {
 protected:
  void SetUp() override {
    if (!OnServer()) GTEST_SKIP() << "a file is not shared";
    form->database.Plain().Execute("DELETE FROM Office");
    Give(CalculatorPreferences);
    form->ConnectDatabase();
    options.Load();
    DeliverInto(otherFolder.Path());
    other.AppFolder = other.DataFolder = otherFolder.Path();
    other.SharedDatabase = run.SharedDatabase;
    other.CalculatorPreferences = CalculatorPreferences;
    other.CalculatorPreferences.OrgCompanyName = "Of this desk";
    WriteRecord(other.AppFolder + "\\General.dat", other.CalculatorPreferences);
    desktop.boxes.clear();
    theirs = std::make_unique<FrmMain>(other);
    theirs->Load();
    theirOptions = std::make_unique<FrmOptions>(other, theirs->database);
    theirs->Serve(*theirOptions);
    theirOptions->Load();
    desktop.modal = [this](Window& window) { Meet(dynamic_cast<FrmConflict&>(window)); };
  }
  static void Give(CalculatorPreferencesRecord& prefs) {
    prefs.TaxRate = 17.5F;
    prefs.MinTerm = 12;
    prefs.MaxTerm = 60;
    prefs.DepositOptions = 7;
    prefs.IconName = "";
  }
  static void Set(FrmOptions& window, const std::string& key, const std::string& text) {
    window.TreeOptions.ClickNode(key);
    TextBox& box = window.FraValue.Visible() ? window.TxtIncre : window.TxtString;
    box.SetFocus();
    box.Type(text);
  }
  void Meet(FrmConflict& window) {
    for (const ListView::Row& row : window.LvwFields.Rows()) {
      asked += row.text + ":" + row.cells[0] + "|" + row.cells[1] + "|" + row.cells[2] + ";";
    }
    choose(window);
    window.CmdStore.Press();
  }
  std::string Stored(const std::string& field) { return Ask("SELECT Content FROM Office WHERE Name='" + field + "'"); }
  static CalculatorPreferencesRecord InFile(const std::string& path) {
    CalculatorPreferencesRecord record;
    ReadRecord(path, record);
    return record;
  }

  TemporaryFolder otherFolder;
  tarvolinex::Run other;
  std::unique_ptr<FrmMain> theirs;
  std::unique_ptr<FrmOptions> theirOptions;
  std::string asked;
  std::function<void(FrmConflict&)> choose = [](FrmConflict&) {};
};

TEST_F(OfficePreferencesTest, TheFirstDeskGivesThemAndTheNextTakesThemAndKeepsItsOwnAside) {
  EXPECT_EQ(other.CalculatorPreferences, CalculatorPreferences);
  EXPECT_EQ(InFile(other.AppFolder + "\\General.dat"), CalculatorPreferences);
  EXPECT_EQ(InFile(other.DataFolder + "\\Set Aside\\General.dat").OrgCompanyName.Trimmed(), "Of this desk");
  ASSERT_EQ(desktop.boxes.size(), 1U);
  EXPECT_NE(desktop.boxes[0].text.find("your own lie in"), std::string::npos) << desktop.boxes[0].text;
  // What it has only got from the office is no desk's own.
  Set(options, "TAX", "19");
  options.Cmd(0).Press();
  desktop.boxes.clear();
  theirs->ConnectDatabase();
  EXPECT_EQ(other.CalculatorPreferences.TaxRate, 19.0F);
  EXPECT_TRUE(desktop.boxes.empty()) << desktop.boxes[0].text;
}

TEST_F(OfficePreferencesTest, WhatOneDeskSavesTheOtherPublishesSoon) {
  Set(options, "TAX", "19");
  Set(options, "PAGE2", "30");
  Set(options, "ALAISES0", "Vendor");
  options.Cmd(0).Press();
  LookAtOthers(*theirs);
  EXPECT_EQ(theirs->menus.MnuAdd.Caption(), "&Add Vendor");
  BuildCalculatorFolder(theirs->Calculator(), other);
  EXPECT_EQ(InFile(other.CalculatorFolder() + "general.dat").TaxRate, 19.0F);
  EXPECT_EQ(ReadPageOptions(other.AppFolder).validDays, 30);
  FrmLeaseOrgDetails details(
      other, [] {}, [&](CalculatorPreferencesRecord& edited) { return theirs->AgreeOnDetails(edited); });
  details.Load();
  details.TxtLeaseOrg(8).SetText("0118 1");
  details.cmdaction(0).Press();
  LookAtOthers(*form);
  EXPECT_EQ(InFile(AppFolder + "\\General.dat").OrgTel.Trimmed(), "0118 1");
  EXPECT_EQ(CalculatorPreferences, other.CalculatorPreferences);
  EXPECT_EQ(asked, "");
}

TEST_F(OfficePreferencesTest, WhatBothHaveChangedIsChosenFieldByFieldAndLimitsTogether) {
  Set(*theirOptions, "TAX", "19");
  Set(*theirOptions, "TERM0", "40");
  Set(*theirOptions, "ALAISES0", "Vendor");
  theirOptions->Cmd(0).Press();
  Set(options, "TAX", "21");
  Set(options, "TERM1", "36");
  Set(options, "ALAISES2", "Rest");
  options.TreeOptions.ClickNode("ALAISES0");
  options.Cmd(0).Press();
  EXPECT_EQ(asked,
            "VAT/Sales Tax Percentage:17.5|21|19;Maximum Term (Months):60|36|60;Minimum Term (Months):12|12|40;");
  EXPECT_FALSE(options.Closed());
  EXPECT_EQ(Stored("General.TaxRate") + " " + Stored("General.MaxTerm") + " " + Stored("General.AliasResidual"),
            "19 60 Balloon");
  EXPECT_EQ(CalculatorPreferences.TaxRate, 17.5F);
  // What was typed is still there; what is not chosen comes from the other desk, also into what is shown.
  choose = [](FrmConflict& window) {
    window.CmdMine.Press();
    EXPECT_FALSE(window.CmdStore.Enabled());
    window.CmdTheirs.Press();
  };
  options.Cmd(2).Press();
  EXPECT_EQ(options.TxtString.Text(), "Vendor");
  asked.clear();
  options.Cmd(0).Press();
  EXPECT_EQ(asked, "");
  EXPECT_TRUE(options.Closed());
  LookAtOthers(*theirs);
  EXPECT_EQ(other.CalculatorPreferences, CalculatorPreferences);
  EXPECT_EQ(CalculatorPreferences.TaxRate, 21.0F);
  EXPECT_EQ(std::to_string(CalculatorPreferences.MinTerm) + " " + std::to_string(CalculatorPreferences.MaxTerm),
            "40 60");
  EXPECT_EQ(CalculatorPreferences.AliasSupplier.Trimmed() + CalculatorPreferences.AliasResidual.Trimmed(),
            "VendorRest");
}

TEST_F(OfficePreferencesTest, WhatCannotBeStoredStaysInTheWindow) {
  Connection holding;
  holding.Open(run.SharedDatabase);
  holding.Begin();
  holding.Execute("UPDATE suppliers SET Town='x' WHERE ID=1");
  holding.Flush();
  form->database.Open(DataFolder, run.SharedDatabase + ";wait=1");
  Set(options, "TAX", "19");
  desktop.boxes.clear();
  options.Cmd(0).Press();
  ASSERT_FALSE(desktop.boxes.empty() || options.Closed());
  EXPECT_NE(desktop.boxes[0].text.find(Held()), std::string::npos) << desktop.boxes[0].text;
  holding.Rollback();
  options.Cmd(0).Press();
  EXPECT_EQ(Stored("General.TaxRate"), "19");
}

}  // namespace tarvolinex
