// Every row of a command's input at once, for commands that do something with all of them.
#pragma once

#include <vector>

#include "cli/RowPipeline.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

// What each row asks and comes to, in their order. check: may throw RuntimeError (6) for one. Throws RuntimeError
// naming the line of a row that cannot be priced or is refused.
std::vector<QuoteFigures> PricedRows(const RowInput& input, void (*check)(QuoteFigures) = nullptr);

}  // namespace tarvolinex
