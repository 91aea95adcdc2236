// What the rate card of today makes of a kept quote.
#pragma once

#include <optional>
#include <string>

#include "core/Aliases.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

// Today's price of what was asked; nullopt when there is none.
std::optional<QuoteRecord> PriceToday(const QuoteFigures& figures, const RateCard& card, float taxRate);

// The same with the rate card that the quote's supplier has now. supplierFound: whether there still is that supplier.
// Throws RuntimeError.
struct TodaysPrice {
  bool supplierFound = false;
  std::optional<QuoteRecord> quote;
};
TodaysPrice PriceToday(Database& database, const KeptQuote& quote, float taxRate);

// As a sentence: what comes out today in place of what was quoted.
std::string TodayWords(const QuoteFigures& figures, const TodaysPrice& today, const Words& words);

// "Quote 12 of 2026-11-25 for O`Neill Ltd, valid until 2026-12-25: accepted".
std::string QuoteWords(const KeptQuote& quote, CalendarDay today);

// "open", "accepted", ... in the language of the windows; any other name as it is.
std::string StateWords(std::string_view state);

}  // namespace tarvolinex
