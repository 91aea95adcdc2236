// A desk that may only read, or looks at its copy because the server is out of reach.
#include "platform/text/Text.h"
#include "support/Fixture.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

class ReadOnlyDeskTest : public SampleTest {
 protected:
  void SetUp() override {
    if (!OnServer()) GTEST_SKIP() << "a file is not shared";
  }
  void ExpectNothingCanBeChanged() {
    Choose("Saxonholt Dental Systems Ltd");
    EXPECT_TRUE(form->supplier.TxtSupplier(3).Locked());
    EXPECT_TRUE(form->rateCard.TxtRangeYield(0).Locked());
    EXPECT_FALSE(form->rateCard.ChAddRate(0).Enabled());
    form->EnableCommands(false);
    for (const Toolbar::Button& button : form->Toolbar1.Buttons()) {
      EXPECT_EQ(button.enabled, button.key != "ADDNEW" && button.key != "REMSUPP" && button.key != "SAVE")
          << button.key;
    }
    form->supplier.TxtSupplier(3).SetText("Elsewhere");
    EXPECT_TRUE(form->SaveAll());
    EXPECT_NE(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Elsewhere");
    Type(form->quote.TxtProCalc(kBoxCapitalCost), "12500");
    desktop.boxes.clear();
    form->quote.CmdKeepQuote.Press();
    for (CommandButton* button : {&form->contacts.CmdContact(0), &form->contacts.CmdContact(1)}) {
      EXPECT_FALSE(button->Enabled());
    }
    form->send.CmdCalcGo(kGoSend).Press();
    FrmOptions options(run, form->database);
    form->Serve(options);
    options.Load();
    options.TreeOptions.ClickNode("TAX");
    Type(options.TxtIncre, "33");
    options.Cmd(0).Press();
    ASSERT_EQ(desktop.boxes.size(), 3U);
    for (const auto& box : desktop.boxes) {
      EXPECT_EQ(box.text, "Nothing can be stored here: this database can only be read");
    }
    EXPECT_EQ(CalculatorPreferences.TaxRate, 0.0F);
  }
};

TEST_F(ReadOnlyDeskTest, AUserWhoMayOnlySelectChangesNothing) {
  SharedServer::The().Tell("DROP ROLE IF EXISTS reader");
  SharedServer::The().Tell("CREATE ROLE reader LOGIN");
  const std::string name = run.SharedDatabase.substr(run.SharedDatabase.rfind('=') + 1);
  SharedServer::The().Tell("GRANT SELECT ON ALL TABLES IN SCHEMA public TO reader", name);
  const std::string whole =
      std::exchange(run.SharedDatabase, ReplaceAll(run.SharedDatabase, "uid=tarvolinex", "uid=reader"));
  CalculatorPreferences.TaxRate = 9;
  form->ConnectDatabase();
  EXPECT_EQ(CalculatorPreferences.TaxRate, 0.0F) << "the office's are taken";
  form->LoadStartLists();
  EXPECT_NE(form->LblDatabase.Caption().find("(to be read only)"), std::string::npos);
  ExpectNothingCanBeChanged();
  run.SharedDatabase = whole;
  form->ConnectDatabase();
  EXPECT_FALSE(form->supplier.TxtSupplier(3).Locked());
}

TEST_F(ReadOnlyDeskTest, WithoutTheServerItsCopyIsLookedAt) {
  const std::string whole = std::exchange(run.SharedDatabase, ReplaceAll(run.SharedDatabase, "port=", "port=9"));
  desktop.answers = {Answer::Ok, Answer::Yes};
  desktop.boxes.clear();
  bool ask = false;
  EXPECT_TRUE(form->OpenDatabase(ask));
  EXPECT_NE(desktop.boxes.at(1).text.find("this desk's copy of "), std::string::npos) << desktop.boxes[1].text;
  EXPECT_EQ(form->LvwSuppliers.Count(), 12);
  ExpectNothingCanBeChanged();
  run.SharedDatabase = whole;
}

}  // namespace tarvolinex
