#include "ui/main/QuotePanel.h"

#include "support/Fixture.h"
#include "ui/quotes/FrmSchedule.h"
#include "ui/quotes/FrmTerms.h"

namespace tarvolinex {

// The panel alone, for a supplier with 10 % yield and 2 % commission in every band.
class QuotePanelTest : public ProgramTest {
 protected:
  QuotePanelTest() {
    CalculatorPreferences.CurrencySymbol = "£";
    CalculatorPreferences.AliasCapEquip = "Equipment";
    CalculatorPreferences.AliasDeposit = "Deposit";
    CalculatorPreferences.AliasVat = "VAT";
    SupplierCalcSettings.Yield.fill(10);
    SupplierCalcSettings.Com.fill(2);
    SupplierCalcSettings.AdditionalPremiumYield = 1;
    run.Line.note = [this](std::string_view text, bool) { note = text; };
    ApplyCaptions(window, run.OwnWords());
    quote.ListUnits();
    quote.SetDefaults();
    quote.CboProCalc(kListTerm).Choose(2);
  }
  TextBox& Box(int box) { return quote.TxtProCalc(box); }
  void Type(int box, const std::string& text) {
    Box(box).SetFocus();
    Box(box).Type(text);
  }
  // What these boxes show.
  std::string Boxes(const std::vector<int>& boxes) {
    std::string all;
    for (const int box : boxes) all += (all.empty() ? "" : " ") + Box(box).Text();
    return all;
  }
  std::string Result(int result) { return quote.LblResult(result).Caption(); }
  Window window{"FrmMain"};
  ShownSupplier shown;
  QuotePanel quote{window, run, shown};
  std::string note;  // of the status line
};

TEST_F(QuotePanelTest, EveryKeystrokeShowsTheQuote) {
  for (const char* typed : {"1", "10", "100", "1000", "10000"}) Type(kBoxCapitalCost, typed);
  EXPECT_EQ(Boxes({kBoxCapitalCost, kBoxPayment, kBoxYield, kBoxCommission}), "10000 329.13 10.00 200.00");
  EXPECT_EQ(Result(kResultPayment) + " " + Result(kResultNetCapital), "329.13 10000.00");
  Box(kBoxCapitalCost).Type("12,345.67");
  EXPECT_EQ(Result(kResultCapitalCost), "12345.67");
}

TEST_F(QuotePanelTest, TermAndIntervalGiveTheNumberOfPayments) {
  const auto term = [&] {
    return Box(kBoxPayments).Text() + ", " + std::to_string(quote.CboProCalc(kListTerm).ListIndex());
  };
  EXPECT_EQ(term(), "36, 2");
  quote.CboProCalc(kListInterval).Choose(1);
  EXPECT_EQ(term() + quote.LblUnit(kBoxPayments).Caption(), "12, 2Quarters");
  EXPECT_EQ(quote.LblResultName(kResultPayment).Caption(), "Net Quarterly Payment (£)");
  Type(kBoxPayments, "8");
  EXPECT_EQ(term(), "8, 1");
  Box(kBoxPayments).Type("9");
  EXPECT_EQ(term(), "9, 1");
  quote.CboProCalc(kListTerm).Choose(1);  // which it shows already
  EXPECT_EQ(term(), "8, 1");
  Type(kBoxDeposit, "250");
  quote.CboProCalc(kListDepositMode).Choose(0);
  EXPECT_EQ(Box(kBoxDeposit).Text(), "250");
}

TEST_F(QuotePanelTest, WhatABoxMayNotHoldIsMarkedAtOnceAndNamedWhenItIsLeft) {
  Type(kBoxCapitalCost, "£10,000");
  EXPECT_EQ(Result(kResultNetCapital), "10000.00");
  Type(kBoxDeposit, "500");
  window.LeaveField();
  quote.UpDNew(kBoxPayments).StepBy(true);  // another box's arrows leave the cursor here
  Box(kBoxDeposit).Type("10%");
  EXPECT_EQ(Box(kBoxDeposit).Fault(), "Deposit: 10% goes with \"% of Equipment Cost\" beside the box");
  Type(kBoxPayments, "70000");
  EXPECT_EQ(Box(kBoxDeposit).Text() + Result(kResultDeposit) + Box(kBoxDeposit).Fault(), "500.00500.00");
  EXPECT_EQ(note, "Deposit: 10% goes with \"% of Equipment Cost\" beside the box. It is 500.00 now.");
  window.LeaveField();
  EXPECT_EQ(Box(kBoxPayments).Text() + " " + std::to_string(quote.Quote.NumberOfPayments), "1000 1000");
  EXPECT_EQ(note, "Number of Payments: 70000 is more than 1000. It is 1000 now.");
  Box(kBoxDeposit).SetFocus();  // and through
  Box(kBoxPayments).SetFocus();
  EXPECT_EQ(note, "Number of Payments: 70000 is more than 1000. It is 1000 now.");
}

TEST_F(QuotePanelTest, ResultsSayWhatPricedThemAndWhyNoCostGivesAPayment) {
  SupplierCalcSettings.RangeEquipFROM[3] = Currency::FromUnits(5'000'0000);
  SupplierCalcSettings.AdditionalPremiumMin = Currency::FromUnits(3'000'0000);
  const auto priced = [&] { return quote.LblPriced.Caption(); };
  EXPECT_EQ(priced(), "Nothing is priced yet");
  quote.ChkPremium.SetValue(true);
  Type(kBoxCapitalCost, "3000");
  EXPECT_EQ(priced(),
            "Priced by band 5 (up to 5,000.00): yield 10.00 %, commission 2.00 %\n"
            "Premium off: it is for more than 3,000.00");
  EXPECT_EQ(quote.LvwBands.At(4).cells, (std::vector<std::string>{"", "5,000.00", "10.00", "2.00", "this quote"}));
  // 3,000.00 costs 98.74 at 10 %; a penny more has the premium's 11 %.
  Type(kBoxPayment, "99.50");
  EXPECT_EQ(quote.LblNearest.Caption(),
            "No capital cost gives 99.50, because the rate changes there. Nearest are 98.74, for 3,000.00, and 100.18, "
            "for 3,000.01.");
  Box(kBoxPayment).Type("98.00");
  EXPECT_EQ(quote.LblNearest.Caption(), "");
  Type(kBoxCapitalCost, "10000");
  quote.ckCapLock.SetValue(true);
  Type(kBoxPayment, "300");
  EXPECT_TRUE(priced().ends_with("\nThe commission is below 0"));
  EXPECT_NE(quote.LblResult(kResultCommission).ForeColour(), kSystemWindowText);
  EXPECT_FALSE(Box(kBoxCommission).Fault().empty());
}

TEST_F(QuotePanelTest, ALockedCostNeitherMovesNorLetsModeFiguresAndComparedTermsPart) {
  const auto lock = [&](const char* after) {
    const std::string cost = Result(kResultCapitalCost);
    quote.ckCapLock.SetValue(true);
    const FrmTerms terms(run, {quote.ShownQuoteMode, quote.AskedQuote, quote.Terms()}, nullptr);
    const std::string payment = Result(kResultPayment);
    EXPECT_EQ(terms.LvwTerms.RowLine(terms.LvwTerms.Selected()).substr(0, 15), "0.00\t36\t" + payment + "\t") << after;
    EXPECT_EQ(Priced(quote.Figures().mode, quote.Figures().asked, quote.Terms()), quote.Quote) << after;
    EXPECT_EQ(Result(kResultCapitalCost) + " " + Box(kBoxPayment).Text(), cost + " " + payment) << after;
    return payment;
  };
  Type(kBoxCapitalCost, "10000");
  Type(kBoxYield, "20");
  Type(kBoxCommission, "300");
  window.LeaveField();
  const std::string dear = lock("a commission");
  EXPECT_EQ(dear, "382.78");
  QuoteFigures figures = quote.Figures();
  quote.ckCapLock.SetValue(false);
  figures.capitalCostLocked = false;
  figures.mode = kModeYield;
  quote.TakeRequest(figures);
  EXPECT_EQ(lock("a copy"), dear);
  quote.ckCapLock.SetValue(false);
  Type(kBoxPayment, "400");
  window.LeaveField();
  EXPECT_EQ(lock("a payment"), "400.00");
  SupplierCalcSettings.Yield.fill(5);
  quote.RecalculateShownQuote();
  EXPECT_EQ(lock("other rates"), "400.00");
}

TEST_F(QuotePanelTest, APaymentFindsTheCapitalCostOrTheCommission) {
  EXPECT_FALSE(quote.ckCapLock.Enabled());
  quote.ckCapLock.SetEnabled(true);
  quote.ckCapLock.SetValue(true);
  Type(kBoxPayment, "329.13");  // a lock without a cost goes off
  EXPECT_EQ(window.ActiveControl(), &Box(kBoxPayment));
  EXPECT_EQ(Boxes({kBoxPayment, kBoxCapitalCost}) + " " + Result(kResultPayment), "329.13 10000.14 329.13");
  Type(kBoxCapitalCost, "10000");
  quote.ckCapLock.SetValue(true);
  EXPECT_TRUE(Box(kBoxCapitalCost).Locked());
  Type(kBoxPayment, "340");
  EXPECT_EQ(Boxes({kBoxCapitalCost, kBoxCommission}), "10000.00 537.02");
  window.LeaveField();
  EXPECT_EQ(Box(kBoxCommission).Text(), "537.02");
  quote.ckCapLock.SetValue(false);
  EXPECT_EQ(window.ActiveControl(), &Box(kBoxCapitalCost));
  EXPECT_EQ(Box(kBoxCommission).Text(), "200.00");
}

TEST_F(QuotePanelTest, YieldAndCommissionAreTakenAsTyped) {
  Type(kBoxCapitalCost, "10000");
  Type(kBoxYield, "12.5abc");
  EXPECT_EQ(Result(kResultYield) + " " + Box(kBoxYield).Text(), "12.50 12.5abc");
  Type(kBoxCommission, "500");
  EXPECT_EQ(Boxes({kBoxYield, kBoxCommissionPercent}), "12.50 5.00");
  Type(kBoxCommissionPercent, "1");
  EXPECT_EQ(Box(kBoxCommission).Text(), "100.00");
  quote.CboProCalc(kListDepositMode).Choose(2);
  Type(kBoxDeposit, "3");
  quote.ckCapLock.SetValue(true);
  Type(kBoxCommissionPercent, "8");  // with payments in advance the payment decides
  window.LeaveField();
  EXPECT_EQ(Box(kBoxCommissionPercent).Text(), Result(kResultCommissionPercent));
}

TEST_F(QuotePanelTest, ARateWithMoreDigitsThanItsBoxStaysExact) {
  SupplierCalcSettings.Yield.fill(9.125F);
  Type(kBoxCapitalCost, "250000");
  EXPECT_EQ(Box(kBoxYield).Text(), "9.13");
  const Currency payment = quote.Quote.Payment;
  Type(kBoxCommission, "5000.00");
  EXPECT_EQ(quote.Quote.Payment, payment);
  Type(kBoxYield, "9.130");
  EXPECT_EQ(quote.Quote.Yield, 9.13F);
  // 9.165 as a single lies a little below, and its box shows 9.17.
  SupplierCalcSettings.Yield.fill(9.165F);
  Type(kBoxCapitalCost, "10000");
  Type(kBoxCommission, "300");
  const QuoteFigures figures = quote.Figures();
  Type(kBoxYield, "5");
  quote.TakeRequest(figures);
  EXPECT_EQ(quote.Quote, figures.priced);
}

TEST_F(QuotePanelTest, DepositAndResidualKeepTheirUnit) {
  const auto deposit = [&] { return Box(kBoxDeposit).Text() + quote.LblUnit(kBoxDeposit).Caption(); };
  Type(kBoxCapitalCost, "10000");
  quote.CboProCalc(kListDepositMode).Choose(1);
  Type(kBoxDeposit, "10");
  Type(kBoxMaintenance, "5");
  EXPECT_EQ(deposit() + " " + Result(kResultDeposit), "10.00% 1000.00");
  quote.CboProCalc(kListDepositMode).Choose(2);
  EXPECT_EQ(deposit(), "0");
  Type(kBoxDeposit, "3");
  EXPECT_EQ(quote.Quote.AdvancedPayments, 3);
  EXPECT_EQ(quote.Quote.DepositValue.ToText(), "963.8578");
  quote.CboProCalc(kListResidualMode).Choose(1);
  Type(kBoxResidual, "20");
  Type(kBoxCapitalCost, "");
  EXPECT_EQ(Box(kBoxResidual).Text(), "20.00");
  Box(kBoxCapitalCost).Type("10000");
  EXPECT_EQ(Result(kResultResidual), "2000.00");
}

TEST_F(QuotePanelTest, LeavingABoxFormatsItAndArrowsStepIt) {
  Type(kBoxCapitalCost, "1234.5");
  window.LeaveField();
  EXPECT_EQ(Box(kBoxCapitalCost).Text(), "1234.50");
  quote.UpDNew(kBoxCapitalCost).StepBy(true);
  Box(kBoxPayments).SetText("1");
  quote.UpDNew(kBoxPayments).StepBy(false);
  Type(kBoxYield, "250");
  window.LeaveField();
  EXPECT_EQ(Boxes({kBoxCapitalCost, kBoxPayments, kBoxYield}), "1334.50 1 100.00");
}

TEST_F(QuotePanelTest, WhatASupplierDoesNotOfferIsLockedAndSaysWhy) {
  CalculatorPreferences.AliasSupplier = "Dealer";
  CalculatorPreferences.AliasResidual = "Balloon";
  CalculatorPreferences.AliasMaint = "Service";
  SupplierCalcSettings.AdditionalPremium = SupplierCalcSettings.ResidualOption =
      SupplierCalcSettings.MaintenanceOption = true;
  quote.ApplySupplierOptions();
  quote.ChkPremium.SetValue(true);
  Box(kBoxResidual).SetText("500");
  EXPECT_TRUE(quote.ChkPremium.Enabled());
  SupplierCalcSettings = {};
  quote.ApplySupplierOptions();
  EXPECT_FALSE(quote.ChkPremium.Enabled() || quote.ChkPremium.Value());
  EXPECT_EQ(quote.ChkPremium.ToolTip(), "Additional Rate Premium disabled for this Dealer");
  EXPECT_EQ(quote.LblPremium.Caption(), "Additional Rate Premium");
  EXPECT_TRUE(Box(kBoxResidual).Locked() && Box(kBoxMaintenance).Locked());
  EXPECT_TRUE(quote.CboProCalc(kListResidualMode).Locked());
  EXPECT_EQ(Box(kBoxResidual).Text(), "0");
  EXPECT_EQ(Box(kBoxResidual).ToolTip(), "Balloon disabled for this Dealer");
  EXPECT_EQ(Box(kBoxMaintenance).ToolTip(), "Service disabled for this Dealer");
}

using ChangedWordsTest = WindowTest;

TEST_F(ChangedWordsTest, LeaveTheQuoteAndEverySymbolFollows) {
  QuotePanel& quote = form->quote;
  SupplierCalcSettings.Yield.fill(10);
  form->ApplyCaptions();
  quote.SetDefaults();
  Type(Box(kBoxCapitalCost), "10000");
  quote.CboProCalc(kListDepositMode).Choose(1);
  Type(Box(kBoxDeposit), "10");
  quote.CboProCalc(kListInterval).Choose(1);
  const auto result = [&] { return quote.LblResult(kResultPayment).Caption(); };
  const std::string payment = result();
  Box(kBoxMaintenance).SetToolTip("locked");
  CalculatorPreferences.AliasSupplier = "Vendor";
  for (const char* symbol : {"$", "", "EUR"}) {
    CalculatorPreferences.CurrencySymbol = symbol;
    form->UsePreferences();
  }
  EXPECT_EQ(quote.CboProCalc(kListDepositMode).ListIndex(), 1);
  EXPECT_EQ(Box(kBoxDeposit).Text() + quote.LblUnit(kBoxDeposit).Caption() + result(), "10%" + payment);
  EXPECT_EQ(quote.LblResultName(kResultPayment).Caption(), "Net Quarterly Payment (EUR)");
  EXPECT_EQ(quote.LblResultName(kResultCommission).Caption(), "Commission (EUR)");
  EXPECT_EQ(form->rateCard.LblRateName(1).Caption(), "To (EUR)");
  EXPECT_EQ(Box(kBoxMaintenance).ToolTip(), "Service disabled for this Vendor");
}

TEST_F(QuotePanelTest, WhatIsPaidStandsInWordsAndBarsAndLeadsOn) {
  EXPECT_FALSE(quote.CmdSchedule.Enabled());
  Type(kBoxCapitalCost, "10000");
  Type(kBoxDeposit, "500");
  EXPECT_EQ(quote.LblTotal.Caption(),
            "Total payable £11,767.64, inc VAT £11,767.64\n"
            "36 payments of £312.99 inc VAT, from 1970-02-01 to 1973-01-01");
  ASSERT_EQ(quote.ChtPayments.Bars().size(), 37U);
  EXPECT_TRUE(quote.ChtPayments.Bars()[0].apart);
  EXPECT_EQ(quote.ChtPayments.Bars()[36].text, "Payment 36, 1973-01-01: 312.99");
  EXPECT_TRUE(quote.CmdSchedule.Enabled() && quote.CmdTerms.Enabled() && quote.CmdSheet.Enabled());
  Type(kBoxCapitalCost, "0");
  EXPECT_FALSE(quote.CmdTerms.Enabled());
  EXPECT_TRUE(quote.ChtPayments.Bars().empty());
}

TEST_F(QuotePanelTest, AnotherTermIsChosenFromTheTableAndWhatWasTypedStaysInForce) {
  desktop.files = {folder.Path() + "/terms.csv"};
  Type(kBoxDeposit, "500");
  Type(kBoxPayment, "400");  // finds the capital cost
  const QuoteRecord asked = quote.AskedQuote;
  FrmTerms terms(
      run, {quote.ShownQuoteMode, asked, quote.Terms()},
      [&](const std::string& payments, const std::string& deposit) { quote.TakeVariant(payments, deposit); });
  EXPECT_EQ(terms.TxtTerms.Text() + "; " + terms.TxtDeposits.Text(), "24, 36, 48, 60; 500.00");
  EXPECT_EQ(terms.LvwTerms.RowLine(1), "500.00\t36\t400.00\t400.00\t14,900.00\t4,800.00\tthis quote");
  terms.TxtTerms.SetText("12; 48 x");
  EXPECT_FALSE(terms.TxtTerms.Fault().empty());
  terms.TxtTerms.SetText("48 12");
  terms.TxtDeposits.SetText("1,000 x");
  EXPECT_FALSE(terms.TxtDeposits.Fault().empty());
  terms.TxtDeposits.SetText("1,000");
  EXPECT_EQ(terms.LvwTerms.At(1).text, "1,000.00");
  terms.TxtDeposits.SetText("0, 500");
  ASSERT_EQ(terms.LvwTerms.Count(), 4);
  EXPECT_EQ(terms.LvwTerms.At(0).cells[4], "14,400.00") << "to the shortest of the same deposit";
  terms.LvwTerms.ClickRow(2);
  EXPECT_EQ(Boxes({kBoxPayments, kBoxDeposit, kBoxPayment}), "48 500.00 400");
  EXPECT_EQ(quote.CboProCalc(kListTerm).ListIndex(), 3);
  EXPECT_EQ(quote.Quote, CompareTerms(kModeCapitalCost, asked, quote.Terms(), {48})[0]->quote);
  EXPECT_EQ(terms.LvwTerms.At(2).cells[5] + terms.LvwTerms.At(0).cells[5], "this quote");
  terms.CmdCopy.Press();
  EXPECT_NE(desktop.copied.find("0.00\t12\t400.00\t400.00\t4,800.00\t0.00\t\n"), std::string::npos) << desktop.copied;
  terms.CmdSave.Press();
  EXPECT_TRUE(ReadFile(folder.Path() + "/terms.csv").ends_with("\n4,12,400.00,400.00,5300.00,5300.00\r\n"));
}

TEST_F(QuotePanelTest, TheScheduleFollowsItsStartAndKeepsItsInnerFiguresApart) {
  Type(kBoxCapitalCost, "10000");
  FrmSchedule schedule(run, quote.Quote, quote.Start());
  schedule.TxtStart.SetText("2026-02-30");
  EXPECT_EQ(schedule.LblTotals.Caption() + std::to_string(schedule.LvwLines.Count()),
            "2026-02-30 is no day, such as 2026-12-310");
  EXPECT_FALSE(schedule.CmdCopy.Enabled() || schedule.CmdSave.Enabled());
  schedule.TxtStart.SetText("2026-12-31");
  EXPECT_EQ(schedule.LvwLines.RowLine(1), "Payment 2\t2027-02-28\t329.13\t0.00\t329.13");
  schedule.ChkInternal.SetValue(true);
  EXPECT_EQ(schedule.LvwLines.RowLine(35), "Payment 36\t2029-12-31\t329.13\t0.00\t329.13\t2.88\t326.25\t0.00");
  desktop.files = {folder.Path() + "/s.csv", folder.Path() + "/s.csv"};
  schedule.ChkInternal.SetValue(false);
  schedule.CmdSave.Press();
  const std::string saved = ReadFile(folder.Path() + "/s.csv");
  EXPECT_EQ(saved.find("Balance"), std::string::npos);
  schedule.ChkInternal.SetValue(true);
  schedule.CmdSave.Press();  // the question is answered with no
  EXPECT_EQ(ReadFile(folder.Path() + "/s.csv"), saved);
  EXPECT_EQ(desktop.boxes.back().text, folder.Path() + "/s.csv exists. Replace it?");
}

}  // namespace tarvolinex
