#include "core/Aliases.h"

#include "support/Fixture.h"

namespace tarvolinex {

using AliasesTest = WindowTest;

TEST_F(AliasesTest, PlaceholdersAreReplacedInTheTablesOrder) {
  CalculatorPreferences.CurrencySymbol = "$";
  EXPECT_EQ(run.ReplaceAliases("R&emove <SUPPLIER>"), "R&emove Dealer");
  EXPECT_EQ(run.ReplaceAliases("<supplier> <DEPOSIT> (£)"), "<supplier> Deposit ($)");
  // A word that brings in a placeholder: only one whose turn is still to come is replaced.
  CalculatorPreferences.AliasSupplier = "<CALCNAME> <DEPOSIT>";
  CalculatorPreferences.AliasCalcName = "Calc";
  EXPECT_EQ(run.ReplaceAliases("<SUPPLIER>"), "Calc <DEPOSIT>");
  CalculatorPreferences.AliasCalcName = "";
  EXPECT_EQ(run.ReplaceAliases("[<CALCNAME>]"), "[]");
}

TEST(Tags, ValuesAreFoundWithoutRegardToCaseOfTheKey) {
  EXPECT_EQ(GetTagValue("RS=SUPPLIER;FIELDNAME=Yield0", "fieldname"), "Yield0");
  EXPECT_EQ(GetTagValue("A= x =y;A=z", "a"), "x");
  EXPECT_EQ(GetTagValue("A;B=1", "A"), "");
  EXPECT_EQ(GetTagValue("A=1; B=2", "B"), "");  // keys are not trimmed
  EXPECT_EQ(GetTagValue("", "A"), "");
}

TEST_F(AliasesTest, CaptionsFollowTheTags) {
  CalculatorPreferences.CurrencySymbol = "$";
  form->menus.MnuRemove.SetTag("ALAIS=R&emove <SUPPLIER>");
  form->quote.FraQuote.SetTag("ALAIS=");
  form->quote.FraQuote.SetCaption("Lease (£)");
  form->ApplyCaptions();
  EXPECT_EQ(form->menus.MnuRemove.Caption(), "R&emove Dealer");
  EXPECT_EQ(form->quote.LblProCalc(kBoxCapitalCost).Caption(), "Equipment &Cost ($)");
  EXPECT_EQ(form->quote.FraQuote.Caption(), "Lease ($)");
  EXPECT_EQ(form->Toolbar1.Buttons()[0].toolTip, "Add Dealer");
  EXPECT_EQ(form->TabMain.Tabs()[kTabDetails].caption, "Dealer &Detail");
  const auto& modes = form->quote.CboProCalc(kListDepositMode);
  EXPECT_EQ(modes.Items()[0].text, "Value ($)");
  EXPECT_EQ(modes.Items()[1].text, "% of Equipment Cost");
  EXPECT_EQ(modes.Items()[2].data, 2);
  EXPECT_EQ(modes.ListIndex(), 0);
  EXPECT_EQ(form->quote.CboProCalc(kListResidualMode).Items().size(), 2U);
}

TEST_F(AliasesTest, AnAmpersandOfAWordIsNoAccessKey) {
  CalculatorPreferences.AliasSupplier = "A&B";
  CalculatorPreferences.AliasCapEquip = "P&L";
  CalculatorPreferences.CurrencySymbol = "&";
  EXPECT_EQ(run.ReplaceAliases("R&emove <SUPPLIER>"), "R&emove A&B");
  form->menus.MnuRemove.SetTag("ALAIS=R&emove <SUPPLIER>");
  form->quote.FraQuote.SetCaption("Lease (£)");
  form->ApplyCaptions();
  EXPECT_EQ(form->menus.MnuRemove.Caption(), "R&emove A&&B");
  EXPECT_EQ(form->quote.LblProCalc(kBoxCapitalCost).Caption(), "P&&L &Cost (&&)");
  EXPECT_EQ(form->quote.FraQuote.Caption(), "Lease (&&)");
  EXPECT_EQ(form->TabMain.Tabs()[kTabDetails].caption, "A&&B &Detail");
  EXPECT_EQ(form->quote.CboProCalc(kListDepositMode).Items()[1].text, "% of P&L Cost");
  EXPECT_EQ(form->Toolbar1.Buttons()[0].toolTip, "Add A&B");
}

}  // namespace tarvolinex
