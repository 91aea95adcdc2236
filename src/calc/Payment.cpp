#include "calc/Payment.h"

#include <cmath>
#include <limits>

namespace tarvolinex {

// The thresholds are tested one by one, a later match replacing an earlier one,
// so that a card whose thresholds are out of order is read as it always was.
int BandOf(const RateCard& card, Currency cost) {
  const auto& from = card.RangeEquipFROM;
  int band = cost > from[0] ? 0 : -1;
  for (int i = 1; i <= 3; ++i) {
    const auto n = static_cast<std::size_t>(i);
    if (from[n] < cost && cost <= from[n - 1]) band = i;
  }
  return Currency() < cost && cost <= from[3] ? 4 : band;
}

namespace {

float InBand(const std::array<float, 5>& rates, int band) {
  return band < 0 ? 0.0F : rates[static_cast<std::size_t>(band)];
}

// A result that does not fit leaves its target alone.
void Keep(Currency& target, double amount) {
  if (const auto value = Currency::FromDouble(amount)) target = *value;
}

void Keep(Currency& target, std::optional<Currency> amount) {
  if (amount) target = *amount;
}

void Keep(float& target, double rate) {
  if (std::fabs(rate) <= static_cast<double>(std::numeric_limits<float>::max())) target = static_cast<float>(rate);
}

// An amount of money with its value for the arithmetic.
struct Money {
  Currency amount;
  double value = 0;
  void Set(Currency money) {
    amount = money;
    value = money.ToDouble();
  }
  void Set(double money) {
    Keep(amount, money);
    value = amount.ToDouble();
  }
};

// The locals of one pass, named as in the quote they come from.
struct Pass {
  const int mode;
  QuoteRecord& quote;
  const QuoteTerms& terms;
  const double capital = quote.CapitalCost.ToDouble();
  double yield = 0;       // percent a year
  double commission = 0;  // percent of the capital cost
  double rate = 0;        // a period
  int periods = 0;        // regular payments to run
  double advanced = 0;    // payments in advance
  Money deposit = {}, residual = {};
  double financed = 0;  // amount financed
  double payment = 0;   // without maintenance

  void FindYieldAndCommission() {
    const bool givenYield = mode == 1 || mode == 3 || mode == 4 || mode == 5;
    const bool givenCommission = mode == 1 || mode == 3 || mode == 5 || mode == 6;
    const int band = givenYield && (givenCommission || mode == 4) ? -1 : BandOf(terms.card, quote.CapitalCost);
    yield = static_cast<double>(givenYield ? quote.Yield : InBand(terms.card.Yield, band));
    if (!givenYield && quote.ApplyPremium && quote.CapitalCost > terms.card.AdditionalPremiumMin) {
      yield += static_cast<double>(terms.card.AdditionalPremiumYield);
    }
    if (mode == kModeCommissionPercent) {
      commission = static_cast<double>(quote.CommissionPercent);
    } else if (!givenCommission) {
      commission = static_cast<double>(InBand(terms.card.Com, band));
    } else if (quote.CommissionValue != Currency()) {
      SetCommission(quote.CommissionValue.ToDouble());
    }
    if (yield > 0) rate = yield / 100 / (quote.Quarterly ? 4 : 12);
  }

  // The percentage of an amount; without a capital cost there is none.
  void SetCommission(double amount) {
    if (quote.CapitalCost != Currency()) commission = amount / capital * 100;
  }

  void FindRunAndDeductions() {
    const int run = quote.NumberOfPayments - quote.AdvancedPayments;
    if (run >= std::numeric_limits<std::int16_t>::min() && run <= std::numeric_limits<std::int16_t>::max())
      periods = run;
    if (quote.AdvancedPayments > 0) advanced = quote.AdvancedPayments;
    if (quote.DepositMode == 0) deposit.Set(quote.DepositValue);
    if (quote.DepositMode == 1) deposit.Set(static_cast<double>(quote.DepositPercent) / 100 * capital);
    if (quote.ResidualValue > Currency()) {
      residual.Set(quote.ResidualValue);
    } else if (quote.ResidualPercent > 0) {
      residual.Set(static_cast<double>(quote.ResidualPercent) / 100 * capital);
    }
  }

  // The capital cost's factor with the commission on top.
  double OnTop() const { return commission / 100 + 1; }

  // What is financed: the capital cost less the deposit, with a commission on top.
  void FindFinanced() {
    if (commission > 0) {
      financed = OnTop() * capital - deposit.value;
    } else if (const auto net = quote.CapitalCost.Minus(deposit.amount)) {
      financed = net->ToDouble();
    }
    if (financed < 0) financed = 0;
  }

  // Payments in advance are worth their face, those in arrears their present value: with X left after the advance,
  // P = (X - R v) / a and X = F - k P give P = (F - R v) / (a + k), which the averaging X' = (F - k P + X) / 2 comes
  // to where it contracts. Nothing to run leaves the payment at 0.
  void FindPayment() {
    const AnnuityFactors factors = FactorsFor(rate, periods);
    const double residualNow = residual.value * factors.discount;
    const double worth = factors.annuity + advanced;
    const bool derives = mode == kModePayment || (mode == kModeCommissionLocked && advanced > 0);
    const double given = derives ? quote.Payment.ToDouble() - quote.Maintenance.ToDouble() : 0;
    const double net = capital - deposit.value;
    if (derives) SetCommission(given * worth + residualNow - net);
    if (mode == kModePayment) {
      financed = net;
      payment = given;
    } else {
      const double owed = derives ? OnTop() * capital - deposit.value : financed;
      const double level = (owed - residualNow) / worth;
      if (periods != 0 && std::isfinite(level)) payment = level;
    }
    if (advanced > 0) {
      deposit = {};
      deposit.Set(advanced * payment);
    }
  }

  void StoreResults() {
    QuoteRecord& q = quote;
    const double tax = static_cast<double>(terms.taxRate) / 100 + 1;
    if (const auto level = Currency::FromDouble(payment)) Keep(q.Payment, level->Plus(q.Maintenance));
    if (commission != 0) {
      Keep(q.CommissionValue, q.CapitalCost.Times(commission / 100));
    } else {
      q.CommissionValue = Currency();
    }
    if (terms.taxRate > 0) {
      Keep(q.PaymentIncTax, q.Payment.Times(tax));
    } else {
      q.PaymentIncTax = q.Payment;
    }
    const bool priced = q.CapitalCost > Currency();
    Keep(q.ResidualPercent, priced ? residual.value / capital * 100 : 0.0);
    Keep(q.NetCapital, q.CapitalCost.Minus(deposit.amount));
    Keep(q.CommissionPercent, commission);
    q.DepositValue = deposit.amount;
    Keep(q.DepositIncTax, deposit.amount.Times(tax));
    q.ResidualValue = residual.amount;
    Keep(q.ResidualIncTax, residual.amount.Times(tax));
    Keep(q.Yield, yield);
    q.PremiumYield = terms.card.AdditionalPremiumYield;
  }

  void ClearResults() {
    QuoteRecord& q = quote;
    q.Payment = q.CommissionValue = q.PaymentIncTax = q.NetCapital = Currency();
    q.DepositValue = q.DepositIncTax = q.ResidualValue = q.ResidualIncTax = Currency();
    q.ResidualPercent = q.CommissionPercent = q.Yield = q.PremiumYield = 0;
  }
};

}  // namespace

float BandYield(const RateCard& card, Currency capitalCost) {
  return InBand(card.Yield, BandOf(card, capitalCost));
}

float BandCommission(const RateCard& card, Currency capitalCost) {
  return InBand(card.Com, BandOf(card, capitalCost));
}

AnnuityFactors FactorsFor(double ratePerPeriod, int periods) {
  if (ratePerPeriod == 0) return {static_cast<double>(periods), 1};
  const double lost = std::expm1(-periods * std::log1p(ratePerPeriod));  // (1 + r)^-n - 1
  return {-lost / ratePerPeriod, 1 + lost};
}

void CalculatePayment(int mode, QuoteRecord& quote, const QuoteTerms& terms) {
  Pass pass{mode, quote, terms};
  pass.FindYieldAndCommission();
  pass.FindRunAndDeductions();
  pass.FindFinanced();
  pass.FindPayment();
  if (pass.yield > 0 || pass.financed + quote.Maintenance.ToDouble() > 0) {
    pass.StoreResults();
  } else {
    pass.ClearResults();
  }
}

}  // namespace tarvolinex
