// What the shown quote comes to over the whole lease.
#include <utility>

#include "calc/Schedule.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/main/QuotePanel.h"
#include "ui/quotes/PlanWords.h"

namespace tarvolinex {

namespace {

std::vector<BarChart::Bar> BarsOf(const Schedule& schedule, const Words& words) {
  std::vector<BarChart::Bar> bars;
  for (const ScheduleLine& line : schedule.lines) {
    bars.push_back({line.number, line.amountIncTax.ToDouble(), line.kind != LineKind::Payment, LineWords(line, words)});
  }
  return bars;
}

}  // namespace

bool QuotePanel::HasQuote() const {
  if (kept_) return true;
  return shown_.RateCardFault.empty() && Priced(ShownQuoteMode, AskedQuote, Terms()).has_value();
}

void QuotePanel::ShowPlan() {
  Schedule schedule;
  bool has = HasQuote();
  try {
    if (has) MakeSchedule(Quote, Start(), schedule);
  } catch (const RuntimeError&) {
    has = false;  // sums too large to be true
  }
  for (CommandButton* button : {&CmdSchedule, &CmdTerms, &CmdSheet, &CmdKeepQuote}) button->SetEnabled(has);
  if (!MayPriceAnew()) CmdTerms.SetEnabled(false);
  const std::string words = has ? PlanWords(Quote, schedule.totals, run_.OwnWords()) : Tr("Nothing is priced yet");
  LblTotal.SetCaption(CaptionOf(words));
  ChtPayments.SetToolTip(words);
  ChtPayments.SetBars(has ? BarsOf(schedule, run_.OwnWords()) : std::vector<BarChart::Bar>());
}

void QuotePanel::TakeVariant(const std::string& payments, const std::string& deposit) {
  const bool before = std::exchange(loading, true);
  TxtProCalc(kBoxDeposit).SetText(deposit);
  TxtProCalc(kBoxPayments).SetText(payments);
  ShowTermOf(BoxCount(kBoxPayments));
  loading = before;
  RecalculateQuote(ShownQuoteMode, ShownQuoteBox);
}

}  // namespace tarvolinex
