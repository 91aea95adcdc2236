// Every row of a command's input at once, for commands that do something with all of them.
#pragma once

#include <vector>

#include "cli/RowPipeline.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

// What each row asks and comes to, in their order. Throws RuntimeError naming the line of a row that cannot be priced.
std::vector<QuoteFigures> PricedRows(const RowInput& input);

}  // namespace tarvolinex
