// The list of kept quotes as rows of a table.
#pragma once

#include <string>
#include <vector>

#include "platform/files/Spreadsheet.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

// Number, Date, SupplierID, CompanyName, Customer, Equipment, CapitalCost, NumberOfPayments, Payment, PaymentIncTax,
// ValidUntil, State.
std::vector<SheetColumn> KeptQuoteColumns();
// As a line of CSV, with two decimals.
std::string KeptQuoteLine(const QuoteListRow& row);

}  // namespace tarvolinex
