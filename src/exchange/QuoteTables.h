// Schedules and terms side by side as rows of a table.
#pragma once

#include <string>
#include <vector>

#include "calc/Schedule.h"
#include "platform/files/Spreadsheet.h"

namespace tarvolinex {

// Row, Number, Date, Kind, Amount, Tax, AmountIncTax, and with `internal` Interest, Principal, Balance.
std::vector<SheetColumn> ScheduleColumns(bool internal);
// Appends the schedule's lines as CSV, with two decimals; row: which quote it is of.
void AppendSchedule(long row, const Schedule& schedule, bool internal, std::string& out);

// Row, NumberOfPayments, Payment, PaymentIncTax, Total, TotalIncTax.
std::vector<SheetColumn> VariantColumns();
void AppendVariant(long row, const TermVariant& variant, std::string& out);

}  // namespace tarvolinex
