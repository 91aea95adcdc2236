// The inputs and results of one lease quote.
#pragma once

#include <cstdint>

#include "platform/text/Currency.h"

namespace tarvolinex {

// What the deposit is given as. The numbers are stored.
enum DepositModes { kDepositValue = 0, kDepositPercent = 1, kDepositAdvanced = 2 };

struct QuoteRecord {
  Currency CapitalCost;               // before tax; a result in mode 2
  std::int16_t DepositMode = 0;       // one of DepositModes
  Currency DepositValue;              // in mode 0; out: the deposit used
  float DepositPercent = 0;           // of the capital cost
  std::int16_t AdvancedPayments = 0;  // regular payments taken at the start
  std::int16_t NumberOfPayments = 0;  // of the whole lease
  bool Quarterly = false;             // 4 payments a year instead of 12
  Currency ResidualValue;             // balloon due with the last payment; out: the residual used
  float ResidualPercent = 0;          // of the capital cost; used when ResidualValue is 0
  Currency Maintenance;               // added to every payment
  bool ApplyPremium = false;
  float Yield = 0;              // percent a year, nominal
  float CommissionPercent = 0;  // of the capital cost
  Currency CommissionValue;
  Currency Payment;  // with maintenance, before tax
  // Results only.
  Currency PaymentIncTax, NetCapital, DepositIncTax, ResidualIncTax;
  float PremiumYield = 0;
  bool operator==(const QuoteRecord&) const = default;
};

}  // namespace tarvolinex
