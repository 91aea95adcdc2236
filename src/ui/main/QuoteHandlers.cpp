// The quote panel's handlers.
#include <algorithm>

#include "calc/InputRules.h"
#include "calc/QuotePanel.h"
#include "core/Globals.h"
#include "platform/text/Text.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

int ModeFor(int box, bool locked) {
  switch (box) {
    case kBoxPayment:
      return locked ? kModePayment : kModeCapitalCost;
    case kBoxYield:
      return kModeYield;
    case kBoxCommission:
    case kBoxCommissionPercent:
      return locked ? kModeCommissionLocked : kModeCommission;
    default:
      return kModeForward;
  }
}

}  // namespace

void FrmMain::WireQuote() {
  for (int i = 0; i < kQuoteBoxes; ++i) {
    quote.TxtProCalc(i).Change = [this, i] { TxtProCalc_Change(i); };
    quote.TxtProCalc(i).LostFocus = [this, i] { TxtProCalc_LostFocus(i); };
    quote.TxtProCalc(i).Refused = [] { SayNumbersOnly(); };
    quote.UpDNew(i).UpClick = [this, i] { UpDNew_Step(i, true); };
    quote.UpDNew(i).DownClick = [this, i] { UpDNew_Step(i, false); };
    quote.UpDNew(i).Change = [this, i] { TxtProCalc_LostFocus(i); };
  }
  for (int i = 0; i < kQuoteLists; ++i) {
    quote.CboProCalc(i).Click = [this, i] { CboProCalc_Click(i); };
  }
  quote.ckCapLock.Click = [this] { ckCapLock_Click(); };
  quote.ChkPremium.Click = [this] { ChkPremium_Click(); };
}

void FrmMain::TxtProCalc_Change(int box) {
  if (loading) {
    numbers_[&quote.TxtProCalc(box)] = quote.TxtProCalc(box).Text();
    return;
  }
  const bool nothing = TypedNumber(quote.TxtProCalc(kBoxCapitalCost).Text()) == 0;
  if (nothing) {
    loading = true;  // the lock goes off by itself: the cursor stays, and so does what is typed
    quote.ckCapLock.SetValue(false);
    loading = false;
  }
  quote.ckCapLock.SetEnabled(!nothing);
  if (box == kBoxPayments) {
    const int aYear = quote.CboProCalc(kListInterval).ListIndex() == 1 ? 4 : 12;
    const int payments =
        static_cast<int>(std::clamp(TypedNumber(quote.TxtProCalc(kBoxPayments).Text()), 0.0, kMostPayments + 1));
    const int years = payments / aYear;
    if (payments % aYear == 0 && years >= 1 && years <= 5) {
      loading = true;
      quote.CboProCalc(kListTerm).SetListIndex(years - 1);
      loading = false;
    }
  }
  RecalculateQuote(ModeFor(box, quote.ckCapLock.Value()), box);
}

void FrmMain::TxtProCalc_LostFocus(int box) {
  TextBox& field = quote.TxtProCalc(box);
  const NumberRule rule = QuoteBoxRule(box);
  const std::string fault = FaultOf(rule, field.Text());
  const std::string formatted = TextWhenLeft(rule, field.Text(), numbers_[&field]);
  // The same number in another dress is nothing to calculate with: what the user typed last stays in force.
  const bool before = loading;
  loading = loading || LeadingNumber(formatted) == TypedNumber(field.Text());
  field.SetText(formatted);
  loading = before;
  numbers_[&field] = formatted;
  MarkQuote();
  SayFault(fault, field);
  // Where the calculation did not take what was typed, the box shows what it came to.
  const bool computed = box == kBoxPayment || box == kBoxYield || box == kBoxCommission || box == kBoxCommissionPercent;
  if (!computed || box != ShownQuoteBox || loading) return;
  loading = true;
  ShowQuoteResults();
  loading = false;
}

void FrmMain::UpDNew_Step(int box, bool up) {
  const UpDown& arrows = quote.UpDNew(box);
  const int kind = QuoteBoxKind(box) == kInputPayments ? kInputCount : QuoteBoxKind(box);
  StepInput(quote.TxtProCalc(box), up, up ? arrows.Max : arrows.Min, kind);
}

void FrmMain::CboProCalc_Click(int list) {
  if (loading) return;
  // A unit that is chosen once more keeps what the box holds.
  const int box = list == kListDepositMode ? kBoxDeposit : list == kListResidualMode ? kBoxResidual : -1;
  if (box >= 0 && quote.UpDNew(box).Kind == quote.CboProCalc(list).ListIndex()) return;
  loading = true;
  ApplyQuoteList(list);
  loading = false;
  RecalculateQuote();
}

void FrmMain::ckCapLock_Click() {
  const bool locked = quote.ckCapLock.Value();
  SetControlLocked(quote.TxtProCalc(kBoxCapitalCost), locked);
  SetControlLocked(quote.UpDNew(kBoxCapitalCost), locked);
  // What was typed last is computed anew without moving the cost.
  ShownQuoteMode = ModeFor(ShownQuoteBox, locked);
  if (locked || loading) return;
  quote.TxtProCalc(kBoxCapitalCost).SetFocus();
  TxtProCalc_Change(kBoxCapitalCost);
}

void FrmMain::ChkPremium_Click() {
  if (loading) return;
  quote.TxtProCalc(kBoxCapitalCost).SetFocus();
  TxtProCalc_Change(kBoxCapitalCost);
}

}  // namespace tarvolinex
