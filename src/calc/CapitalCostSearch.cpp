// Mode 2: the capital cost that a payment buys.
#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "calc/Payment.h"

namespace tarvolinex {

namespace {

constexpr int kMostPasses = 2000;

class CapitalCostSearch {
 public:
  CapitalCostSearch(QuoteRecord& quote, const QuoteTerms& terms)
      : quote_(quote),
        terms_(terms),
        target_(quote.Payment),
        remembered_(quote.CapitalCost),
        residualPercent_(quote.ResidualPercent),
        deposit_(quote.DepositValue),
        residual_(quote.ResidualValue) {}

  int Run() {
    if (target_ <= Currency()) {
      NothingToFind();
      return passes_;
    }
    Assign(quote_.Payment, target_.ToDouble() / 1.1);
    Assign(quote_.CapitalCost, 10 * target_.ToDouble());
    if (ScaleByRatio() || SearchBands()) return passes_;
    PriceFor(remembered_);  // the figures beside the target belong to the cost that is shown
    GiveUp();
    return passes_;
  }

  std::optional<NearestPayments> Nearest(Currency found) {
    if (target_ <= Currency()) return {};
    PriceFor(found);
    if (Met()) return {};
    constexpr std::int64_t kPenny = 100;
    NearestPayments nearest;
    for (const Currency bound : Bounds()) {
      for (const std::int64_t cost : {bound.Units(), bound.Units() + kPenny}) {
        if (cost <= 0) continue;
        PriceFor(Currency::FromUnits(cost));
        Keep(nearest);
      }
    }
    return nearest;
  }

 private:
  static constexpr int kBounds = 6;

  static void Assign(Currency& target, double amount) {
    if (const auto value = Currency::FromDouble(amount)) target = *value;
  }

  void GiveUp() {
    quote_.Payment = target_;
    quote_.CapitalCost = remembered_;
    quote_.CommissionValue = Currency();
  }

  void NothingToFind() {
    if (terms_.capitalCostLocked) return GiveUp();
    quote_.CapitalCost = Currency();
    passes_ = 1;
    CalculatePayment(kModeCapitalCost, quote_, terms_);
  }

  bool Met() const { return quote_.Payment.Hundredths() == target_.Hundredths(); }

  // One pass for a capital cost; what is a percentage of it follows it.
  void PriceFor(Currency cost) {
    quote_.CapitalCost = cost;
    quote_.ResidualValue = residual_;
    if (residualPercent_ > 0) {
      Assign(quote_.ResidualValue, cost.ToDouble() * static_cast<double>(residualPercent_) / 100);
    }
    quote_.DepositValue = quote_.DepositMode == 0 ? deposit_ : Currency();
    ++passes_;
    CalculatePayment(kModeCapitalCost, quote_, terms_);
  }

  // The payment is nearly proportional to the capital cost, so scaling one by the other's ratio closes in at once.
  // A large fixed deposit, or a gap between two bands, makes it swing instead.
  bool ScaleByRatio() {
    Currency before, earlier;
    while (!Met()) {
      const auto next =
          quote_.Payment == Currency()
              ? std::nullopt
              : Currency::FromDouble(quote_.CapitalCost.ToDouble() * target_.ToDouble() / quote_.Payment.ToDouble());
      const bool swings = next && passes_ > 2 && (*next == earlier || *next == before);
      if (!next || swings || passes_ >= kMostPasses - kMostBandPasses) return false;
      earlier = before;
      before = *next;
      PriceFor(*next);
    }
    return true;
  }

  // Where the rates change, in falling order.
  std::array<Currency, kBounds> Bounds() const {
    std::array<Currency, kBounds> bounds = {Currency(), terms_.card.AdditionalPremiumMin};
    std::copy_n(terms_.card.RangeEquipFROM.begin(), 4, bounds.begin() + 2);
    std::sort(bounds.begin(), bounds.end(), std::greater<>());
    return bounds;
  }

  void Keep(NearestPayments& nearest) const {
    const PricedCost priced{quote_.CapitalCost, quote_.Payment};
    if (priced.payment < target_ && (!nearest.below || nearest.below->payment < priced.payment)) nearest.below = priced;
    if (priced.payment > target_ && (!nearest.above || nearest.above->payment > priced.payment)) nearest.above = priced;
  }

  // Between two neighbouring bounds the payment only grows with the cost, so halving finds it. The highest band that
  // holds an answer gives it.
  bool SearchBands() {
    const std::array<Currency, kBounds> bounds = Bounds();
    Currency upper = Currency::FromUnits(kHighestCost);
    for (const Currency bound : bounds) {
      if (bound < Currency() || bound >= upper) continue;
      if (SearchBetween(bound.Units() + 1, upper.Units())) return true;
      upper = bound;
    }
    return false;
  }

  bool SearchBetween(std::int64_t low, std::int64_t high) {
    while (low <= high) {
      const std::int64_t middle = low + (high - low) / 2;
      PriceFor(Currency::FromUnits(middle));
      if (Met()) return true;
      if (quote_.Payment < target_) {
        low = middle + 1;
      } else {
        high = middle - 1;
      }
    }
    return false;
  }

  static constexpr std::int64_t kHighestCost = std::int64_t{1} << 50;  // 112,589,990,684.26
  static constexpr int kMostBandPasses = kBounds * 51;

  QuoteRecord& quote_;
  const QuoteTerms& terms_;
  const Currency target_, remembered_;
  const float residualPercent_;
  const Currency deposit_, residual_;
  int passes_ = 0;
};

}  // namespace

int CalculateQuote(int mode, QuoteRecord& quote, const QuoteTerms& terms) {
  if (mode == kModeCapitalCost) return CapitalCostSearch(quote, terms).Run();
  CalculatePayment(mode, quote, terms);
  return 1;
}

std::optional<NearestPayments> NearestTo(const QuoteRecord& asked, Currency found, const QuoteTerms& terms) {
  QuoteRecord trial = asked;
  return CapitalCostSearch(trial, terms).Nearest(found);
}

}  // namespace tarvolinex
