#include "exchange/KeptQuoteTable.h"

#include "exchange/Csv.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

std::string CentsOf(Currency amount) {
  return FormatFixed(amount.ToDouble(), 2);
}

}  // namespace

std::vector<SheetColumn> KeptQuoteColumns() {
  return {{"Number", CellKind::Count},
          {"Date", CellKind::Date},
          {"SupplierID", CellKind::Count},
          {"CompanyName"},
          {"Customer"},
          {"Equipment"},
          {"CapitalCost", CellKind::Money, true},
          {"NumberOfPayments", CellKind::Count},
          {"Payment", CellKind::Money, true},
          {"PaymentIncTax", CellKind::Money, true},
          {"ValidUntil", CellKind::Date},
          {"State"}};
}

std::string KeptQuoteLine(const QuoteListRow& row) {
  return std::to_string(row.number) + ',' + CsvCell(row.date) + ',' + std::to_string(row.supplierId) + ',' +
         CsvCell(row.companyName) + ',' + CsvCell(row.customer) + ',' + CsvCell(row.equipment) + ',' +
         CentsOf(row.capitalCost) + ',' + std::to_string(row.numberOfPayments) + ',' + CentsOf(row.payment) + ',' +
         CentsOf(row.paymentIncTax) + ',' + CsvCell(row.validUntil) + ',' + std::string(row.state) + '\n';
}

}  // namespace tarvolinex
