
#include "core/Aliases.h"
#include "support/Fixture.h"

namespace tarvolinex {

// A supplier with 10 % yield and 2 % commission in every band, everything offered.
class QuotePanelTest : public WindowTest {
 protected:
  QuotePanelTest() {
    SupplierCalcSettings.Yield.fill(10);
    SupplierCalcSettings.Com.fill(2);
    SupplierCalcSettings.AdditionalPremiumYield = 1;
    form->ApplyCaptions();
    form->quote.SetDefaults();
    form->quote.CboProCalc(kListTerm).Choose(2);
  }
  std::string Result(int result) { return form->quote.LblResult(result).Caption(); }
};

TEST_F(QuotePanelTest, EveryKeystrokeShowsTheQuote) {
  Box(kBoxCapitalCost).SetFocus();
  for (const char* typed : {"1", "10", "100", "1000", "10000"}) Box(kBoxCapitalCost).Type(typed);
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "10000");
  EXPECT_EQ(Box(kBoxPayment).Text(), "329.13");
  EXPECT_EQ(Box(kBoxYield).Text(), "10.00");
  EXPECT_EQ(Box(kBoxCommission).Text(), "200.00");
  EXPECT_EQ(Result(kResultPayment), "329.13");
  EXPECT_EQ(Result(kResultNetCapital), "10000.00");
  Box(kBoxCapitalCost).Type("12,345.67");
  EXPECT_EQ(Result(kResultCapitalCost), "12345.67");
}

TEST_F(QuotePanelTest, TermAndIntervalGiveTheNumberOfPayments) {
  EXPECT_EQ(Box(kBoxPayments).Text(), "36");
  form->quote.CboProCalc(kListInterval).Choose(1);
  EXPECT_EQ(Box(kBoxPayments).Text(), "12");
  EXPECT_EQ(form->quote.LblUnit(kBoxPayments).Caption(), "Quarters");
  EXPECT_EQ(form->quote.LblResultName(kResultPayment).Caption(), "Net Quarterly Payment (£)");
  Type(Box(kBoxPayments), "8");
  EXPECT_EQ(form->quote.CboProCalc(kListTerm).ListIndex(), 1);
  EXPECT_EQ(Box(kBoxPayments).Text(), "8");
  Box(kBoxPayments).Type("9");
  EXPECT_EQ(form->quote.CboProCalc(kListTerm).ListIndex(), 1);
  form->quote.CboProCalc(kListTerm).Choose(1);  // which it shows already
  EXPECT_EQ(Box(kBoxPayments).Text(), "8");
  Type(Box(kBoxDeposit), "250");
  form->quote.CboProCalc(kListDepositMode).Choose(0);
  EXPECT_EQ(Box(kBoxDeposit).Text(), "250");
}

TEST_F(QuotePanelTest, WhatABoxMayNotHoldIsMarkedAtOnceAndNamedWhenItIsLeft) {
  Type(Box(kBoxCapitalCost), "£10,000");
  EXPECT_EQ(Result(kResultNetCapital), "10000.00");
  Type(Box(kBoxDeposit), "500");
  form->LeaveField();
  form->quote.UpDNew(kBoxPayments).StepBy(true);  // another box's arrows leave the cursor here
  Box(kBoxDeposit).Type("10%");
  EXPECT_EQ(Box(kBoxDeposit).Fault(), "Deposit: 10% goes with \"% of Equipment Cost\" beside the box");
  Type(Box(kBoxPayments), "70000");
  EXPECT_EQ(Box(kBoxDeposit).Text() + Result(kResultDeposit) + Box(kBoxDeposit).Fault(), "500.00500.00");
  EXPECT_EQ(form->TxtStatus.Text(), "Deposit: 10% goes with \"% of Equipment Cost\" beside the box. It is 500.00 now.");
  form->TabMain.Choose(kTabDetails);
  EXPECT_EQ(Box(kBoxPayments).Text() + " " + std::to_string(form->quote.Quote.NumberOfPayments), "1000 1000");
  EXPECT_EQ(form->TxtStatus.Text(), "Number of Payments: 70000 is more than 1000. It is 1000 now.");
}

TEST_F(QuotePanelTest, ResultsSayWhatPricedThemAndWhyNoCostGivesAPayment) {
  SupplierCalcSettings.RangeEquipFROM[3] = Currency::FromUnits(5'000'0000);
  SupplierCalcSettings.AdditionalPremiumMin = Currency::FromUnits(3'000'0000);
  const auto priced = [&] { return form->quote.LblPriced.Caption(); };
  EXPECT_EQ(priced(), "Nothing is priced yet");
  form->quote.ChkPremium.SetValue(true);
  Type(Box(kBoxCapitalCost), "3000");
  EXPECT_EQ(priced(),
            "Priced by band 5 (up to 5,000.00): yield 10.00 %, commission 2.00 %\n"
            "Premium off: it is for more than 3,000.00");
  EXPECT_EQ(form->quote.LvwBands.At(4).cells,
            (std::vector<std::string>{"", "5,000.00", "10.00", "2.00", "this quote"}));
  // 3,000.00 costs 98.74 at 10 %; a penny more has the premium's 11 %.
  Type(Box(kBoxPayment), "99.50");
  EXPECT_EQ(form->quote.LblNearest.Caption(),
            "No capital cost gives 99.50, because the rate changes there. Nearest are 98.74, for 3,000.00, and 100.18, "
            "for 3,000.01.");
  Box(kBoxPayment).Type("98.00");
  EXPECT_EQ(form->quote.LblNearest.Caption(), "");
  Type(Box(kBoxCapitalCost), "10000");
  form->quote.ckCapLock.SetValue(true);
  Type(Box(kBoxPayment), "300");
  EXPECT_TRUE(priced().ends_with("\nThe commission is below 0"));
  EXPECT_NE(form->quote.LblResult(kResultCommission).ForeColour(), kSystemWindowText);
  EXPECT_FALSE(Box(kBoxCommission).Fault().empty());
}

TEST_F(QuotePanelTest, APaymentFindsTheCapitalCostOrTheCommission) {
  Type(Box(kBoxCapitalCost), "5000");
  Type(Box(kBoxPayment), "329.13");
  EXPECT_EQ(Result(kResultPayment), "329.13");
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "10000.14");
  Type(Box(kBoxCapitalCost), "10000");
  form->quote.ckCapLock.SetValue(true);
  EXPECT_TRUE(Box(kBoxCapitalCost).Locked());
  Type(Box(kBoxPayment), "340");
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "10000.00");
  EXPECT_EQ(Box(kBoxCommission).Text(), "537.02");
  form->LeaveField();
  EXPECT_EQ(Box(kBoxCommission).Text(), "537.02");
  form->quote.ckCapLock.SetValue(false);
  EXPECT_EQ(form->ActiveControl(), &Box(kBoxCapitalCost));
  EXPECT_EQ(Box(kBoxCommission).Text(), "200.00");
}

TEST_F(QuotePanelTest, YieldAndCommissionAreTakenAsTyped) {
  Type(Box(kBoxCapitalCost), "10000");
  Type(Box(kBoxYield), "12.5abc");
  EXPECT_EQ(Result(kResultYield), "12.50");
  EXPECT_EQ(Box(kBoxYield).Text(), "12.5abc");
  Type(Box(kBoxCommission), "500");
  EXPECT_EQ(Box(kBoxYield).Text(), "12.50");
  EXPECT_EQ(Box(kBoxCommissionPercent).Text(), "5.00");
  Type(Box(kBoxCommissionPercent), "1");
  EXPECT_EQ(Box(kBoxCommission).Text(), "100.00");
}

TEST_F(QuotePanelTest, ARateWithMoreDigitsThanItsBoxStaysExact) {
  SupplierCalcSettings.Yield.fill(9.125F);
  Type(Box(kBoxCapitalCost), "250000");
  EXPECT_EQ(Box(kBoxYield).Text(), "9.13");
  const Currency payment = form->quote.Quote.Payment;
  Type(Box(kBoxCommission), "5000.00");
  EXPECT_EQ(form->quote.Quote.Payment, payment);
  Type(Box(kBoxYield), "9.130");
  EXPECT_EQ(form->quote.Quote.Yield, 9.13F);
}

TEST_F(QuotePanelTest, DepositAndResidualKeepTheirUnit) {
  Type(Box(kBoxCapitalCost), "10000");
  form->quote.CboProCalc(kListDepositMode).Choose(1);
  EXPECT_EQ(form->quote.LblUnit(kBoxDeposit).Caption(), "%");
  Type(Box(kBoxDeposit), "10");
  Type(Box(kBoxMaintenance), "5");
  EXPECT_EQ(Box(kBoxDeposit).Text(), "10.00");
  EXPECT_EQ(Result(kResultDeposit), "1000.00");
  form->quote.CboProCalc(kListDepositMode).Choose(2);
  EXPECT_EQ(Box(kBoxDeposit).Text(), "0");
  EXPECT_EQ(form->quote.LblUnit(kBoxDeposit).Caption(), "");
  Type(Box(kBoxDeposit), "3");
  EXPECT_EQ(form->quote.Quote.AdvancedPayments, 3);
  EXPECT_EQ(form->quote.Quote.DepositValue.ToText(), "963.8578");
  form->quote.CboProCalc(kListResidualMode).Choose(1);
  Type(Box(kBoxResidual), "20");
  Type(Box(kBoxCapitalCost), "");
  EXPECT_EQ(Box(kBoxResidual).Text(), "20.00");
  Box(kBoxCapitalCost).Type("10000");
  EXPECT_EQ(Result(kResultResidual), "2000.00");
}

TEST_F(QuotePanelTest, LeavingABoxFormatsItAndArrowsStepIt) {
  Type(Box(kBoxCapitalCost), "1234.5");
  form->LeaveField();
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "1234.50");
  form->quote.UpDNew(kBoxCapitalCost).StepBy(true);
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "1334.50");
  Box(kBoxPayments).SetText("1");
  form->quote.UpDNew(kBoxPayments).StepBy(false);
  EXPECT_EQ(Box(kBoxPayments).Text(), "1");
  Type(Box(kBoxYield), "250");
  form->LeaveField();
  EXPECT_EQ(Box(kBoxYield).Text(), "100.00");
}

TEST_F(QuotePanelTest, ALockWithoutACostGoesOffAndTheTypedPaymentStays) {
  EXPECT_FALSE(form->quote.ckCapLock.Enabled());
  form->quote.ckCapLock.SetEnabled(true);
  form->quote.ckCapLock.SetValue(true);
  Type(Box(kBoxPayment), "329.13");
  EXPECT_EQ(form->ActiveControl(), &Box(kBoxPayment));
  EXPECT_EQ(Box(kBoxPayment).Text() + " " + Box(kBoxCapitalCost).Text(), "329.13 10000.14");
}

TEST_F(QuotePanelTest, ABoxThatIsLeftShowsWhatTheCalculationTook) {
  Type(Box(kBoxCapitalCost), "10000");
  form->quote.CboProCalc(kListDepositMode).Choose(2);
  Type(Box(kBoxDeposit), "3");
  form->quote.ckCapLock.SetValue(true);
  Type(Box(kBoxCommissionPercent), "8");  // with payments in advance the payment decides
  form->LeaveField();
  EXPECT_EQ(Box(kBoxCommissionPercent).Text(), Result(kResultCommissionPercent));
}

TEST_F(QuotePanelTest, ChangedWordsLeaveTheQuoteAndEverySymbolFollows) {
  Type(Box(kBoxCapitalCost), "10000");
  form->quote.CboProCalc(kListDepositMode).Choose(1);
  Type(Box(kBoxDeposit), "10");
  form->quote.CboProCalc(kListInterval).Choose(1);
  const std::string payment = Result(kResultPayment);
  Box(kBoxMaintenance).SetToolTip("locked");
  CalculatorPreferences.AliasSupplier = "Vendor";
  for (const char* symbol : {"$", "", "EUR"}) {
    CalculatorPreferences.CurrencySymbol = symbol;
    form->UsePreferences();
  }
  EXPECT_EQ(form->quote.CboProCalc(kListDepositMode).ListIndex(), 1);
  EXPECT_EQ(Box(kBoxDeposit).Text() + form->quote.LblUnit(kBoxDeposit).Caption() + Result(kResultPayment),
            "10%" + payment);
  EXPECT_EQ(form->quote.LblResultName(kResultPayment).Caption(), "Net Quarterly Payment (EUR)");
  EXPECT_EQ(form->quote.LblResultName(kResultCommission).Caption(), "Commission (EUR)");
  EXPECT_EQ(form->rateCard.LblRateName(1).Caption(), "To (EUR)");
  EXPECT_EQ(Box(kBoxMaintenance).ToolTip(), "Service disabled for this Vendor");
}

}  // namespace tarvolinex
