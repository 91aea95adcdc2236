// How a quote's schedule is told in words.
#pragma once

#include <string>

#include "calc/Schedule.h"
#include "core/Aliases.h"

namespace tarvolinex {

// With two decimals and a comma before every three digits.
std::string MoneyWords(Currency amount);

// A rate as every box and list shows it: with two decimals, made from its shortest text, so that 9.165 is "9.17".
std::string RateText(float rate);

// A request's deposit as the box for it holds it, in the unit of its mode.
std::string DepositText(const QuoteRecord& asked);

// "payment 3", "deposit", ...
std::string KindWords(const ScheduleLine& line, const Words& words);

// "payment 3, 2027-02-28: 498.53", with tax.
std::string LineWords(const ScheduleLine& line, const Words& words);

// "36 payments of £498.53, inc VAT £598.24".
std::string PaymentsWords(const QuoteRecord& quote, const Words& words);

// What the payments come to, before and with tax, and from when to when they run; two lines.
std::string PlanWords(const QuoteRecord& quote, const ScheduleTotals& totals, const Words& words);

}  // namespace tarvolinex
