// How a quote's schedule is told in words.
#pragma once

#include <string>

#include "calc/Schedule.h"
#include "core/Aliases.h"

namespace tarvolinex {

// With two decimals and a comma before every three digits.
std::string MoneyWords(Currency amount);

// "payment 3", "deposit", ...
std::string KindWords(const ScheduleLine& line, const Words& words);

// "payment 3, 2027-02-28: 498.53", with tax.
std::string LineWords(const ScheduleLine& line, const Words& words);

// What the payments come to, before and with tax, and from when to when they run; two lines.
std::string PlanWords(const QuoteRecord& quote, const ScheduleTotals& totals, const Words& words);

}  // namespace tarvolinex
