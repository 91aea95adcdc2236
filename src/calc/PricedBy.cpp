#include "calc/PricedBy.h"

#include <algorithm>
#include <vector>

#include "calc/InputRules.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::string Amount(Currency amount) {
  return WithThousands(FormatFixed(amount.ToDouble(), 2));
}

std::string Rate(float rate) {
  return FormatNumberInput(kInputPercent, FormatSingle(rate));
}

bool PremiumIsOn(const QuoteRecord& quote, const RateCard& card) {
  return quote.ApplyPremium && quote.CapitalCost > card.AdditionalPremiumMin;
}

std::string PremiumText(const QuoteRecord& quote, const RateCard& card) {
  if (PremiumIsOn(quote, card)) return Tr("Premium on: %1 % of the yield", {Rate(card.AdditionalPremiumYield)});
  if (quote.ApplyPremium) return Tr("Premium off: it is for more than %1", {Amount(card.AdditionalPremiumMin)});
  return Tr("Premium off");
}

std::string BandText(const QuoteRecord& quote, const RateCard& card) {
  const int band = BandOf(card, quote.CapitalCost);
  if (band < 0) return Tr("Nothing is priced yet");
  const auto& from = card.RangeEquipFROM;
  const std::string yield = Rate(quote.Yield), commission = Rate(quote.CommissionPercent);
  if (band == 0) {
    return Tr("Priced by band 1 (over %1): yield %2 %, commission %3 %", {Amount(from[0]), yield, commission});
  }
  if (band == 4) {
    return Tr("Priced by band 5 (up to %1): yield %2 %, commission %3 %", {Amount(from[3]), yield, commission});
  }
  const auto n = static_cast<std::size_t>(band);
  return Tr("Priced by band %1 (over %2 up to %3): yield %4 %, commission %5 %",
            {std::to_string(band + 1), Amount(from[n]), Amount(from[n - 1]), yield, commission});
}

std::string ModeText(const QuoteRecord& quote, int mode, const RateCard& card) {
  const std::string yield = Rate(quote.Yield), commission = Amount(quote.CommissionValue);
  switch (mode) {
    case kModeYield:
      return Tr("Priced by the yield typed, %1 %, with a commission of %2", {yield, commission});
    case kModeCommission:
    case kModeCommissionPercent:
      return Tr("Priced by the commission typed, %1, at a yield of %2 %", {commission, yield});
    case kModePayment:
      return Tr("The payment typed leaves a commission of %1 at a yield of %2 %", {commission, yield});
    case kModeCommissionLocked:
      return Tr("Priced by the yield of band %1, %2 %, with a commission of %3",
                {std::to_string(BandOf(card, quote.CapitalCost) + 1), yield, commission});
    default:
      return BandText(quote, card);
  }
}

std::string Bound(const RateCard& card, int threshold) {
  return threshold < 0 || threshold > 3 ? "" : Amount(card.RangeEquipFROM[static_cast<std::size_t>(threshold)]);
}

std::vector<ListView::Row> BandRows(const RateCard& card, int used) {
  std::vector<ListView::Row> rows;
  for (int band = 0; band < 5; ++band) {
    const auto n = static_cast<std::size_t>(band);
    ListView::Row row;
    row.key = row.text = std::to_string(band + 1);
    row.cells = {Bound(card, band), Bound(card, band - 1), Rate(card.Yield[n]), Rate(card.Com[n]),
                 band == used ? Tr("this quote") : std::string()};
    rows.push_back(std::move(row));
  }
  return rows;
}

void ShowBands(const RateCard& card, int used) {
  ListView& list = MainForm().quote.LvwBands;
  const std::string symbol = CalculatorPreferences.CurrencySymbol.Trimmed();
  const std::vector<ListView::Row> rows = BandRows(card, used);
  const bool same = !list.Columns().empty() && list.Columns()[1].header == Tr("Over (%1)", {symbol}) &&
                    std::equal(rows.begin(), rows.end(), list.Rows().begin(), list.Rows().end(),
                               [](const ListView::Row& a, const ListView::Row& b) { return a.cells == b.cells; });
  if (same) return;
  list.BeginFill();
  list.Columns() = {{Tr("Band"), "", 800},
                    {Tr("Over (%1)", {symbol}), "", 1800, true},
                    {Tr("Up to (%1)", {symbol}), "", 1800, true},
                    {Tr("Yield (%)"), "", 1500, true},
                    {Tr("Commission (%)"), "", 1900, true},
                    {Tr("Used by"), "", 1300}};
  list.Clear();
  for (const ListView::Row& row : rows) list.Add(row);
  list.EndFill();
}

}  // namespace

std::string PricedBy(const QuoteRecord& quote, int mode, const RateCard& card) {
  std::string text = ModeText(quote, mode, card);
  const bool byCard = mode == kModeForward || mode == kModeCapitalCost || mode == kModeCommissionLocked;
  if (byCard && quote.CapitalCost > Currency()) text += "\n" + PremiumText(quote, card);
  if (quote.CommissionValue < Currency()) text += "\n" + Tr("The commission is below 0");
  return text;
}

std::string NearestText(Currency payment, const NearestPayments& nearest) {
  const std::string asked = Amount(payment);
  const auto& [below, above] = nearest;
  if (below && above) {
    return Tr("No capital cost gives %1, because the rate changes there. Nearest are %2, for %3, and %4, for %5.",
              {asked, Amount(below->payment), Amount(below->cost), Amount(above->payment), Amount(above->cost)});
  }
  if (const auto& one = below ? below : above) {
    return Tr("No capital cost gives %1. Nearest is %2, for %3.", {asked, Amount(one->payment), Amount(one->cost)});
  }
  return Tr("No capital cost gives %1.", {asked});
}

void ShowPricing(int mode, const QuoteRecord& asked, const QuoteTerms& terms) {
  QuotePanel& panel = MainForm().quote;
  panel.LblPriced.SetCaption(CaptionOf(PricedBy(Quote, mode, terms.card)));
  const bool search = mode == kModeCapitalCost;
  const auto nearest = search ? NearestTo(asked, Quote.CapitalCost, terms) : std::nullopt;
  panel.LblNearest.SetCaption(nearest ? NearestText(asked.Payment, *nearest) : std::string());
  const bool byBand = search || mode == kModeForward || mode == kModeCommissionLocked;
  ShowBands(terms.card, byBand ? BandOf(terms.card, Quote.CapitalCost) : -1);
}

}  // namespace tarvolinex
