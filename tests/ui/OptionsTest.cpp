#include <set>

#include "core/Limits.h"
#include "support/Hindrances.h"
#include "support/OptionsFixture.h"

namespace tarvolinex {

class OptionsTest : public WithOptions {
 protected:
  OptionsTest() {
    CalculatorPreferences.MinCapitalCost = 1000;
    CalculatorPreferences.MaxCapitalCost = 50000;
    options.Load();
  }
  // As the user types into a field: it has the focus until something else gets it.
  void Enter(TextBox& box, const std::string& text) {
    box.SetFocus();
    box.Type(text);
  }
  std::string Visible() {
    std::string names;
    for (Control* control : options.Controls()) {
      if (dynamic_cast<Frame*>(control) && control->Visible()) names += control->Name();
    }
    return names;
  }
};

TEST_F(OptionsTest, EveryNodeBringsUpItsEditorAloneAndSaysWhatItSets) {
  EXPECT_EQ(Visible(), "FraBlank");
  EXPECT_NE(options.LblHint.Caption(), "");
  const std::pair<std::string, const char*> kinds[] = {
      {"ALAISES6", "FraTextString"}, {"COLOURS6", "FraColour"},   {"TERM1", "FraValue"},
      {"CAPCOST1", "FraValue"},      {"DEP2", "FraValue"},        {"RESID1", "FraValue"},
      {"GRAPHICS3", "FraYesNo"},     {"DEPOPS", "FraDepOptions"}, {"TAX", "FraValue"},
      {"CURRENCY", "FraTextString"}, {"PAGE0", "FraLanguage"},    {"PAGE1", "FraYesNo"},
      {"PAGEWORD4", "FraMeaning"}};
  for (const auto& [key, panel] : kinds) {
    Select(key);
    EXPECT_EQ(Visible(), panel) << key;
  }
  CalculatorPreferences.AliasSupplier = "A&B";
  std::set<std::string> hints;
  const auto& nodes = options.TreeOptions.Nodes();
  for (const auto& node : nodes) {
    Select(node.key);
    const std::string hint = options.LblHint.Caption();
    EXPECT_TRUE(hint.ends_with(".")) << node.key;
    EXPECT_TRUE(hints.insert(hint).second || node.parent == "FORMS") << node.key;
    EXPECT_TRUE(node.key != "FORMS" || hint.find(" A&&B ") != std::string::npos) << hint;
    const bool heading =
        std::any_of(nodes.begin(), nodes.end(), [&](const auto& each) { return each.parent == node.key; });
    EXPECT_EQ(Visible() == "FraBlank", heading) << node.key;
  }
  Select("DEP1");
  EXPECT_EQ(options.TreeOptions.Find("DEP1")->text, "Minimum Deposit Percentage of Equipment (%)");
  EXPECT_EQ(options.FraValue.Caption(), "Minimum Deposit Percentage of Equipment (%)");
  Select("GRAPHICS3");
  EXPECT_EQ(options.FraYesNo.Caption(), "Background Picture On/Off");
  EXPECT_EQ(options.ChkdepSelect(1).Caption(), "Percentage  of Equipment");
}

TEST_F(OptionsTest, ColoursChangeByTheDialogAndTheSmallCalculatorShowsThem) {
  EXPECT_FALSE(options.PicPage.Visible());
  CalculatorPreferences.BorderColour = 0x0000FF;
  options.Load();
  Select("COLOURS4");
  const Colour title = options.LblPreview(0).ForeColour();
  // The first dialog is cancelled; what is written on the colour stays readable.
  const std::pair<Colour, Colour> shown[] = {
      {0x0000FF, 0xFFFFFF}, {0xFFFFFF, 0x000000}, {0x000000, 0xFFFFFF}, {0x336699, 0xFFFFFF}};
  for (const auto& [back, text] : shown) {
    if (back != 0x0000FF) desktop.colours = {back};
    options.CmdColor.Press();
    EXPECT_EQ(options.PicColour.BackColour(), back);
    EXPECT_EQ(options.LblPreview(3).BackColour(), back);
    EXPECT_EQ(options.LblPreview(3).ForeColour(), text) << back;
  }
  EXPECT_EQ(options.LblPreview(0).ForeColour(), title);
  EXPECT_EQ(options.PicColour.ToolTip(), "Red 153, green 102, blue 51");
  for (const auto& [key, picture] :
       {std::pair{"GRAPHICS1", &options.PicPageLogo}, std::pair{"GRAPHICS3", &options.PicPage}}) {
    Select(key);
    options.ChkYesNo.SetValue(true);
    EXPECT_TRUE(FileExists(picture->Picture())) << key;
    options.ChkYesNo.SetValue(false);
    EXPECT_EQ(picture->Picture(), "") << key;
  }
  Select("TAX");
  EXPECT_FALSE(options.PicPage.Visible());
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.BorderColour, 0x336699U);
}

TEST_F(OptionsTest, AValueIsCommittedToItsOwnFieldWhenTheNodeIsLeft) {
  const std::tuple<const char*, const char*, const char*> typed[] = {{"CAPCOST0", "1000.00", "2500.5"},
                                                                     {"CAPCOST1", "50000.00", "60000"},
                                                                     {"DEP0", "", "60"},
                                                                     {"DEP1", "", "12x"},
                                                                     {"TAX", "", "none"}};
  for (const auto& [key, before, text] : typed) {
    Select(key);
    EXPECT_TRUE(options.TxtIncre.Text() == before || !*before) << key;
    Enter(options.TxtIncre, text);
  }
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.MinCapitalCost, 2500);  // halves to even
  EXPECT_EQ(CalculatorPreferences.MaxCapitalCost, 60000);
  EXPECT_EQ(CalculatorPreferences.MaxDepositPercent, 60);
  EXPECT_EQ(CalculatorPreferences.MinDepositPercent, 12);
  EXPECT_EQ(CalculatorPreferences.TaxRate, 0);
}

TEST_F(OptionsTest, ValuesFollowTheirKind) {
  const std::tuple<const char*, const char*, const char*, const char*, const char*> cases[] = {
      {"TERM0", "250", "250", "200", "249"},
      {"TERM0", "200", "200", "200", "199"},
      {"TERM1", "-3", "0", "1", "0"},
      {"TAX", "0.1", "0.10", "0.35", "0.00"},
      {"TAX", "99.90", "99.90", "100.00", "99.65"},
      {"RESID0", "17.5", "17.50", "17.75", "17.25"},
      {"RESID1", "101", "100.00", "100.00", "99.75"},
      {"CAPCOST0", "123456789", "99999999.00", "99999999.00", "99999899.00"},
      {"DEP2", "100", "100", "100", "99"}};
  for (const auto& [key, typed, left, up, down] : cases) {
    Select(key);
    for (const bool upwards : {true, false}) {
      Enter(options.TxtIncre, typed);
      options.MoveFocus(nullptr);
      EXPECT_EQ(options.TxtIncre.Text(), left) << key;
      options.UpDown1.StepBy(upwards);
      EXPECT_EQ(options.TxtIncre.Text(), upwards ? up : down) << key << " " << typed;
      EXPECT_EQ(options.ActiveControl(), &options.TxtIncre);
    }
  }
}

TEST_F(OptionsTest, ARateThatIsOnlyLookedAtKeepsItsDigits) {
  CalculatorPreferences.TaxRate = 17.125F;
  CalculatorPreferences.MaxDepositPercent = 33.3333F;
  options.Load();
  Select("DEP0");
  EXPECT_EQ(options.TxtIncre.Text(), "33.33");
  Select("TAX");
  EXPECT_EQ(options.TxtIncre.Text(), "17.125");
  options.TxtIncre.SetFocus();
  options.Cmd(2).Press();
  EXPECT_EQ(CalculatorPreferences.TaxRate, 17.125F);
  EXPECT_EQ(CalculatorPreferences.MaxDepositPercent, 33.3333F);
  // What was typed is stored as the box shows it, though the old rate reads so too.
  for (const auto& [old, typed, stored] : {std::tuple{20.0F, "17.125", 17.13F}, std::tuple{17.505F, "17.51", 17.51F}}) {
    CalculatorPreferences.TaxRate = old;
    options.Load();
    Select("TAX");
    Enter(options.TxtIncre, typed);
    options.Cmd(2).Press();
    EXPECT_EQ(CalculatorPreferences.TaxRate, stored);
  }
}

TEST_F(OptionsTest, TextsAreTrimmedCutAndWithoutApostrophes) {
  Select("ALAISES3");
  Enter(options.TxtString, " Tenant's down payment and much more ");
  EXPECT_EQ(options.TxtString.Text(), " Tenant's down payment an");
  Select("CURRENCY");
  Enter(options.TxtString, "C'F 5");
  EXPECT_EQ(options.TxtString.Text(), "C'F ");
  EXPECT_EQ(options.TxtString.Position().width, 1000);
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.AliasDeposit.Trimmed(), "Tenant`s down payment an");
  EXPECT_EQ(CalculatorPreferences.CurrencySymbol.Trimmed(), "C`F");
}

TEST_F(OptionsTest, WhatIsChosenForThePageIsStoredByOkAndViewAlone) {
  const PageOptions chosen = {"it", false, 30, 90, "", "The customer's own money", "", "", ""};
  for (const bool kept : {false, true}) {
    Select("PAGE0");
    EXPECT_EQ(options.CboLanguage.ListIndex(), 0);
    options.CboLanguage.Choose(5);
    Select("PAGE1");
    EXPECT_TRUE(options.ChkYesNo.Value());
    options.ChkYesNo.SetValue(false);
    Select("PAGE2");
    Enter(options.TxtIncre, "30");
    Select("PAGE3");
    Enter(options.TxtIncre, "90");
    Select("PAGEWORD1");
    Enter(options.TxtMeaning, "The customer's\r\nown money");
    Enter(options.TxtMeaning, "The customer's o\r\nwn money");  // Return is the window's
    options.Cmd(kept ? 2 : 1).Press();
    EXPECT_EQ(ReadPageOptions(AppFolder), kept ? chosen : PageOptions());
    options.Reopen();
    options.Load();
  }
  EXPECT_NE(ReadFile(CalculatorFolder() + "calcdata.txt").find(R"("language":"it")"), std::string::npos);
  Select("PAGE0");
  EXPECT_EQ(options.CboLanguage.ListIndex(), 5);
  options.CboLanguage.Choose(0);
  std::filesystem::remove(AppFolder + "/General.INI");
  MakeFolder(AppFolder + "/General.INI");
  options.Cmd(0).Press();
  EXPECT_TRUE(desktop.boxes.back().text.starts_with("The options of the calculator page could not be saved"));
  EXPECT_FALSE(options.Closed());
  // Options that could not be read are not replaced by usual ones, also when the file can be read by then.
  std::filesystem::remove(AppFolder + "/General.INI");
  WritePageOptions(AppFolder, chosen);
  const std::filesystem::path file = AppFolder + "/General.INI";
  std::filesystem::permissions(AppFolder, std::filesystem::perms(0755));  // others may look, and not read it
  std::filesystem::permissions(file, std::filesystem::perms::none);
  {
    const AnotherUser user;
    options.Load();
  }
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  Select("PAGE0");
  options.CboLanguage.Choose(2);
  options.Cmd(0).Press();
  EXPECT_NE(desktop.boxes.back().text.find("They could not be read"), std::string::npos);
  EXPECT_EQ(ReadPageOptions(AppFolder), chosen);
}

TEST_F(OptionsTest, OneDepositTypeStaysOffered) {
  CalculatorPreferences.DepositOptions = 2;
  options.Load();
  Select("DEPOPS");
  EXPECT_TRUE(options.ChkdepSelect(1).Value());
  EXPECT_FALSE(options.ChkdepSelect(0).Value());
  options.ChkdepSelect(2).SetValue(true);
  options.ChkdepSelect(1).SetValue(false);
  options.ChkdepSelect(2).SetValue(false);
  EXPECT_TRUE(options.ChkdepSelect(2).Value());
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.DepositOptions, 4);
}

TEST_F(OptionsTest, CancelLeavesTheRecordAndViewSavesIt) {
  const std::string before = ReadFile(AppFolder + "\\General.dat");
  const bool shown = !CalculatorPreferences.ShowHeaderLogo;
  Select("GRAPHICS1");
  options.ChkYesNo.SetValue(shown);
  options.Cmd(1).Press();
  EXPECT_TRUE(options.Closed());
  EXPECT_NE(CalculatorPreferences.ShowHeaderLogo, shown);
  EXPECT_EQ(ReadFile(AppFolder + "\\General.dat"), before);
  options.Reopen();
  options.Cmd(2).Press();
  options.KeyUp(Key::Escape);
  EXPECT_TRUE(options.Closed());
  EXPECT_EQ(CalculatorPreferences.ShowHeaderLogo, shown);
  EXPECT_NE(ReadFile(AppFolder + "\\General.dat"), before);
  EXPECT_TRUE(desktop.launched.back().starts_with("open " + CalculatorFolder() + "calc_test.html"));
  EXPECT_TRUE(FileExists(CalculatorFolder() + "calc.ico"));
}

TEST(Limits, ThatContradictEachOtherAreNamed) {
  using Prefs = CalculatorPreferencesRecord;
  const std::pair<void (*)(Prefs&), std::string> cases[] = {
      {[](Prefs&) {}, ""},
      {[](Prefs& p) { p.MinTerm = 150; }, "Lease term in months: the minimum of 150 is above the maximum of 60"},
      {[](Prefs& p) { p.MinTerm = p.MaxTerm = 36; }, ""},
      {[](Prefs& p) { p.MinTerm = p.MaxTerm = 0; }, ""},
      {[](Prefs& p) { p.MaxCapitalCost = 0; }, "Equipment cost: the minimum of 500 is above the maximum of 0"},
      {[](Prefs& p) { p.MinDepositPercent = 50.5F; }, "Deposit percentage: the minimum of 50.5% is"},
      {[](Prefs& p) { p.MinResidualPercent = 31; }, "Residual percentage: the minimum of 31% is"},
      {[](Prefs& p) { p.MinAdvancedPayments = 60; },
       "Advanced payments: the minimum of 60 leaves nothing of the maximum term of 60"},
      {[](Prefs& p) { p.MinAdvancedPayments = 60, p.DepositOptions = 3; }, ""}};
  for (const auto& [change, said] : cases) {
    Prefs prefs;
    ReadRecord(DELIVERED_FOLDER "/General.dat", prefs);
    prefs.MinCapitalCost = 500;
    prefs.MaxDepositPercent = 50;
    prefs.MaxResidualPercent = 30;
    change(prefs);
    const std::string fault = ContradictoryLimits(prefs);
    EXPECT_TRUE(said.empty() ? fault.empty() : fault.starts_with(said)) << said << ": " << fault;
  }
}

TEST_F(OptionsTest, WithContradictoryLimitsNothingIsWrittenOrSent) {
  const std::string before = ReadFile(AppFolder + "\\General.dat");
  CalculatorPreferences.MinTerm = 150;
  CalculatorPreferences.MaxTerm = 60;
  options.Load();
  form->send.lvSendContacts.SetChecked(0, true);
  for (const int text : {0, 1}) form->send.TxtEmail(text).SetText("Your calculator");
  for (CommandButton* button : {&options.Cmd(0), &options.Cmd(2), &form->send.CmdCalcGo(0), &form->send.CmdCalcGo(2)}) {
    desktop.boxes.clear();
    button->Press();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.starts_with("Lease term in months: the minimum of 150"));
    EXPECT_FALSE(options.Closed());
  }
  form->menus.MnuPreview.Choose();
  EXPECT_EQ(ReadFile(AppFolder + "\\General.dat"), before);
  EXPECT_FALSE(FileExists(CalculatorFolder() + "Supplier.dat"));
}

TEST_F(OptionsTest, ReturnPressesTheButtonThatHasTheFocusElseOk) {
  Select("ALAISES0");
  Enter(options.TxtString, "Vendor");
  options.Cmd(3).SetFocus();
  options.KeyUp(Key::Return);
  EXPECT_TRUE(desktop.launched.back().starts_with("open " + AppFolder + "\\Help\\options.HTM"));
  EXPECT_FALSE(options.Closed());
  options.TxtString.SetFocus();
  options.KeyUp(Key::Return);
  EXPECT_TRUE(options.Closed());
  EXPECT_EQ(CalculatorPreferences.AliasSupplier.Trimmed(), "Vendor");
}

}  // namespace tarvolinex
