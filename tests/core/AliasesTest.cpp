#include "core/Aliases.h"

#include "support/Fixture.h"

namespace tarvolinex {

using AliasesTest = WindowTest;

TEST_F(AliasesTest, PlaceholdersAreReplacedInTheTablesOrder) {
  CalculatorPreferences.CurrencySymbol = "$";
  EXPECT_EQ(run.ReplaceAliases("R&emove <SUPPLIER>"), "R&emove Dealer");
  EXPECT_EQ(run.ReplaceAliases("<supplier> <DEPOSIT> (£)"), "<supplier> Deposit ($)");
  CalculatorPreferences.AliasVat = "GST";
  EXPECT_EQ(run.ReplaceAliases("inc <VAT>"), "inc GST");
  // A word that brings in a placeholder: only one whose turn is still to come is replaced.
  CalculatorPreferences.AliasSupplier = "<CALCNAME> <DEPOSIT>";
  CalculatorPreferences.AliasCalcName = "Calc";
  EXPECT_EQ(run.ReplaceAliases("<SUPPLIER>"), "Calc <DEPOSIT>");
  CalculatorPreferences.AliasCalcName = "";
  EXPECT_EQ(run.ReplaceAliases("[<CALCNAME>]"), "[]");
}

TEST(Tags, ValuesAreFoundWithoutRegardToCaseOfTheKey) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"RS=SUPPLIER;FIELDNAME=Yield0", "fieldname", "Yield0"},
      {"A= x =y;A=z", "a", "x"},
      {"A;B=1", "A", ""},
      {"A=1; B=2", "B", ""} /* keys are not trimmed */,
      {"", "A", ""}};
  for (const auto& [tag, key, value] : cases) EXPECT_EQ(GetTagValue(tag, key), value) << tag;
}

TEST_F(AliasesTest, CaptionsFollowTheTags) {
  struct Case {
    const char *supplier, *cost, *symbol, *captions, *texts;  // an ampersand of a word is no access key
  };
  for (const Case& c : {Case{"Dealer", "Equipment", "$", "R&emove Dealer|Equipment &Cost ($)|Lease ($)|Dealer &Detail",
                             "Add Dealer|% of Equipment Cost|Value ($)"},
                        Case{"A&B", "P&L", "&", "R&emove A&&B|P&&L &Cost (&&)|Lease (&&)|A&&B &Detail",
                             "Add A&B|% of P&L Cost|Value (&)"}}) {
    CalculatorPreferences.AliasSupplier = c.supplier;
    CalculatorPreferences.AliasCapEquip = c.cost;
    CalculatorPreferences.CurrencySymbol = c.symbol;
    form->menus.MnuRemove.SetTag("ALAIS=R&emove <SUPPLIER>");
    form->quote.FraQuote.SetTag("ALAIS=");
    form->quote.FraQuote.SetCaption("Lease (£)");
    form->ApplyCaptions();
    EXPECT_EQ(form->menus.MnuRemove.Caption() + "|" + form->quote.LblProCalc(kBoxCapitalCost).Caption() + "|" +
                  form->quote.FraQuote.Caption() + "|" + form->TabMain.Tabs()[kTabDetails].caption,
              c.captions);
    const ComboBox& modes = form->quote.CboProCalc(kListDepositMode);
    EXPECT_EQ(form->Toolbar1.Buttons()[0].toolTip + "|" + modes.Items()[1].text + "|" + modes.Items()[0].text, c.texts);
    EXPECT_EQ(modes.Items()[2].data, 2);
    EXPECT_EQ(modes.ListIndex(), 0);
    EXPECT_EQ(form->quote.CboProCalc(kListResidualMode).Items().size(), 2U);
  }
}

}  // namespace tarvolinex
