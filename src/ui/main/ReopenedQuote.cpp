// A kept quote in the quote panel: as it was quoted, until the user changes something.
#include <utility>

#include "controls/Desktop.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/main/QuotePanel.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/TodaysPrice.h"

namespace tarvolinex {

namespace {

// The box that a mode comes from, to be read as if the user had typed there; -1: none. A yield has none on purpose: the
// box would give its two decimals in place of the exact one.
int BoxOf(int mode) {
  switch (mode) {
    case kModeCapitalCost:
    case kModePayment:
      return kBoxPayment;
    case kModeCommission:
    case kModeCommissionLocked:
      return kBoxCommission;
    case kModeCommissionPercent:
      return kBoxCommissionPercent;
    default:
      return -1;
  }
}

std::string AmountInput(Currency amount) {
  return FormatFixed(amount.ToDouble(), 2);
}

}  // namespace

QuoteFigures QuotePanel::Figures() const {
  if (kept_) return kept_->figures;
  return {ShownQuoteMode, ckCapLock.Value(), AskedQuote, Quote};
}

// What the boxes and lists hold for a request, with the loading indication set.
void QuotePanel::FillInputs(const QuoteFigures& figures) {
  const QuoteRecord& asked = figures.asked;
  const bool percent = asked.ResidualValue == Currency() && asked.ResidualPercent != 0;
  CboProCalc(kListInterval).SetListIndex(asked.Quarterly ? 1 : 0);
  CboProCalc(kListDepositMode).SetListIndex(asked.DepositMode);
  CboProCalc(kListResidualMode).SetListIndex(percent ? 1 : 0);
  for (const int list : {kListInterval, kListDepositMode, kListResidualMode}) ApplyQuoteList(list);
  const std::pair<int, std::string> boxes[] = {
      {kBoxCapitalCost, AmountInput(figures.priced.CapitalCost)},
      {kBoxPayments, std::to_string(asked.NumberOfPayments)},
      {kBoxDeposit, DepositText(asked)},
      {kBoxResidual, percent ? RateText(asked.ResidualPercent) : AmountInput(asked.ResidualValue)},
      {kBoxMaintenance, AmountInput(asked.Maintenance)},
      {kBoxPayment, AmountInput(asked.Payment)},
      {kBoxYield, RateText(asked.Yield)},
      {kBoxCommission, AmountInput(asked.CommissionValue)},
      {kBoxCommissionPercent, RateText(asked.CommissionPercent)},
  };
  for (const auto& [box, text] : boxes) TxtProCalc(box).SetText(text);
  ShowTermOf(asked.NumberOfPayments);
  ChkPremium.SetValue(asked.ApplyPremium);
  ckCapLock.SetEnabled(figures.priced.CapitalCost != Currency());
  ckCapLock.SetValue(figures.capitalCostLocked);
}

void QuotePanel::ShowKept(const KeptQuote& quote) {
  const bool before = std::exchange(loading, true);
  kept_ = quote;
  const QuoteFigures& figures = kept_->figures;
  FillInputs(figures);
  AskedQuote = figures.asked;
  Quote = figures.priced;
  ShownQuoteMode = figures.mode;
  ShownQuoteBox = BoxOf(figures.mode);
  ShowQuoteResults();
  ShowPricing(figures.mode, figures.asked,
              {kept_->origin.supplier, kept_->origin.preferences.TaxRate, figures.capitalCostLocked});
  ShowPlan();
  MarkQuote();
  ShowKeptWords();
  loading = before;
}

// A quote that is not kept is priced by whatever supplier is shown.
bool QuotePanel::IsOfShownSupplier() const {
  return !kept_ || kept_->origin.supplierId == shown_.CurrentSupplierId;
}

bool QuotePanel::MayPriceAnew() const {
  return IsOfShownSupplier() && shown_.RateCardFault.empty();
}

CalendarDay QuotePanel::Start() const {
  return kept_ ? kept_->details.start.value_or(kept_->date) : LocalDay(TheDesktop().Now());
}

void QuotePanel::ShowKeptWords() {
  LblKept.SetVisible(kept_.has_value());
  FitBands();
  for (Frame* inputs : {&FraQuote, &FraRate}) inputs->SetEnabled(IsOfShownSupplier());
  FraBands.SetCaption(kept_ ? Tr("Rate card of the quote") : Tr("Rate card in force"));
  if (!kept_) return LblKept.SetCaption("");
  TodaysPrice today;
  today.supplierFound = IsOfShownSupplier();
  if (MayPriceAnew()) {
    today.quote = PriceToday(kept_->figures, run_.SupplierCalcSettings, run_.CalculatorPreferences.TaxRate);
  }
  LblKept.SetCaption(CaptionOf(QuoteWords(*kept_, LocalDay(TheDesktop().Now())) + "\n" +
                               TodayWords(kept_->figures, today, run_.OwnWords())));
}

void QuotePanel::LeaveKept() {
  if (!kept_) return;
  kept_.reset();
  ShowKeptWords();
  ApplySupplierOptions();  // what the supplier no longer offers goes
}

void QuotePanel::LoseKept() {
  if (IsOfShownSupplier()) return RecalculateQuote(ShownQuoteMode, ShownQuoteBox);
  const bool before = std::exchange(loading, true);
  TxtProCalc(kBoxMaintenance).SetText("0.00");
  loading = before;
  TxtProCalc(kBoxCapitalCost).SetText("0.00");
}

void QuotePanel::TakeRequest(const QuoteFigures& figures) {
  const bool before = std::exchange(loading, true);
  kept_.reset();
  ShowKeptWords();
  FillInputs(figures);
  Quote = figures.asked;
  ApplySupplierOptions();
  loading = before;
  RecalculateQuote(figures.mode, BoxOf(figures.mode));
}

}  // namespace tarvolinex
