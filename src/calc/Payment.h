// The payment calculation: level payments in arrears with an optional balloon (the residual) at the end; advanced
// payments are taken at the start and shorten the run of regular payments.
//
// Conventions: money is rounded to four decimals, halves to even, when it is stored in the quote; rates are percent a
// year, nominal, r = yield / 100 / payments a year for a period; arithmetic is double. An arithmetic failure (division
// by zero, a result that does not fit) leaves its target as it was and the calculation goes on; nothing is reported.
#pragma once

#include <optional>

#include "core/Quote.h"
#include "core/Records.h"

namespace tarvolinex {

// Which inputs are given and which are derived.
//   mode  yield from                commission from                                  payment
//   0, 2  band (plus premium)       band                                             computed
//   1, 3  the given Yield           the given CommissionValue                        computed
//   4     the given Yield           the given CommissionPercent                      computed
//   5     the given Yield           derived from the given Payment                   given
//   6     band (plus premium)       the given CommissionValue, or derived from the   computed
//                                   given Payment where payments are in advance
enum QuoteMode {
  kModeForward = 0,
  kModeYield = 1,
  kModeCapitalCost = 2,  // the capital cost that gives the payment
  kModeCommission = 3,
  kModeCommissionPercent = 4,
  kModePayment = 5,  // the commission that gives the payment
  kModeCommissionLocked = 6,
};

struct QuoteTerms {
  const RateCard& card;
  float taxRate = 0;               // percent
  bool capitalCostLocked = false;  // the capital cost is kept when a search has nothing to find
};

// The band of a capital cost, 0 to 4; -1 for a capital cost of 0 or less.
int BandOf(const RateCard& card, Currency capitalCost);
// Yield of the band of a capital cost, percent a year, without premium; 0 for a capital cost of 0 or less.
float BandYield(const RateCard& card, Currency capitalCost);
// Commission of the same band, percent of the capital cost.
float BandCommission(const RateCard& card, Currency capitalCost);

// What one unit is worth over n periods at the rate r a period, payments in arrears.
//   annuity:  present value of one unit a period, (1 - (1 + r)^-n) / r, n for r = 0
//   discount: present value of one unit due with the last payment, (1 + r)^-n
// Both through log1p and expm1: rates near 0 lose no digit, long runs at high rates do not overflow.
// Source: the standard annuity identity, as in any actuarial text.
struct AnnuityFactors {
  double annuity, discount;
};
AnnuityFactors FactorsFor(double ratePerPeriod, int periods);

// One pass.
void CalculatePayment(int mode, QuoteRecord& quote, const QuoteTerms& terms);

// Mode 2 searches the capital cost whose payment shows the same hundredths as the given Payment; every other mode is
// one pass. Returns the number of passes (at most 2,000). A search that finds none gives the Payment and the capital
// cost back as they were, with a commission of 0.
int CalculateQuote(int mode, QuoteRecord& quote, const QuoteTerms& terms);

// A capital cost with its payment.
struct PricedCost {
  Currency cost, payment;
};
// The payments just below and just above one that no capital cost gives: they lie at edges of the bands.
struct NearestPayments {
  std::optional<PricedCost> below, above;
};
// Why a search of mode 2 ended at `found`: nullopt when that cost gives the payment that `asked` asks for (or when it
// asks for none), else what comes nearest to it.
std::optional<NearestPayments> NearestTo(const QuoteRecord& asked, Currency found, const QuoteTerms& terms);

}  // namespace tarvolinex
