#include "calc/PricedBy.h"

#include "calc/InputRules.h"
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

}  // namespace tarvolinex
