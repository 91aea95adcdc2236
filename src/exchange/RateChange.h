// One change to the rate cards of many suppliers, planned like an import: with what it does to each before it is done.
#pragma once

#include <string>
#include <vector>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

enum class RateStep { Add, Multiply, Set };

struct RateChange {
  std::vector<std::string> columns;  // of the rate card
  RateStep step = RateStep::Add;
  double amount = 0;  // percent points or money; a factor for Multiply
};

// The columns of a rate card, bands first.
std::vector<std::string> RateCardColumns();

// One row for each of the suppliers that there are, in the order of their IDs. What an import would refuse is refused:
// a rate out of its range, a threshold above the one before it. Sums and products of rates are those of the decimals
// that are shown; of money they are rounded to its four decimals. Throws RuntimeError.
ImportPlan PlanRateChange(Database& database, const std::vector<int>& suppliers, const RateChange& change);

// The same for taking over every column of another supplier's rate card.
ImportPlan PlanRateCardCopy(Database& database, int from, const std::vector<int>& suppliers);

}  // namespace tarvolinex
