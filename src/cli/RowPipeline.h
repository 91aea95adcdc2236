// The rows of a command's input, priced on all cores: what comes out stands in the order of the rows.
#pragma once

#include <functional>
#include <string>

#include "calc/Payment.h"
#include "cli/Commands.h"
#include "cli/QuoteRows.h"
#include "core/Records.h"
#include "exchange/TableOutput.h"

namespace tarvolinex {

// One row of the input, with what it is priced by.
struct RowJob {
  const QuoteRow& row;
  const QuoteTerms& terms;
  long number;                                // of the row, from 1
  const std::function<std::string()>& place;  // "FILE: line 3"
};
// Appends what a row comes to. Throws RuntimeError for a row that comes to nothing.
using RowWork = std::function<void(const RowJob&, std::string& out)>;

// What the options of quote, schedule and compare say about the rows.
struct RowInput {
  std::string source;  // a file, or "-" for standard input
  SupplierCalcSettingsRecord supplier;
  float taxRate = 0;
};
// Reads --supplier and --general and takes the plain word for the input. Throws RuntimeError.
RowInput ReadRowInput(Run& run, const Arguments& arguments);

// Hands every row to work, made once for each thread. Memory stays flat however long the input is. Throws what the
// first row in the input's order threw; nothing is committed.
void WorkOnRows(const RowInput& input, TableOutput& output, const std::function<RowWork()>& makeWork);

// Throws that the row cannot be priced, how (" at 12 payments"), and why that may be.
[[noreturn]] void FailToPrice(const RowJob& job, const std::string& how = {});

}  // namespace tarvolinex
