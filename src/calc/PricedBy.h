// What the quote panel says about its figures: the band, the premium, the commission, and what comes nearest to a
// payment that no capital cost gives.
#pragma once

#include <string>

#include "calc/Payment.h"

namespace tarvolinex {

// Sentences on lines of their own: what a quote was priced by in that mode, whether the premium is on, and that the
// commission is below 0 when it is.
std::string PricedBy(const QuoteRecord& quote, int mode, const RateCard& card);

// Why no capital cost gives the payment, and which ones come nearest.
std::string NearestText(Currency payment, const NearestPayments& nearest);

}  // namespace tarvolinex
