#include "exchange/RateChange.h"

#include <algorithm>
#include <functional>

#include "exchange/CellValues.h"
#include "exchange/RowPlanner.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// Plans new cells of the columns for the suppliers, as if they had come in a file.
ImportPlan PlanCells(Database& database, const Table& table, const std::vector<int>& suppliers,
                     const std::vector<std::string>& columns,
                     const std::function<std::string(const std::vector<Value>& row, int column)>& cellOf) {
  ColumnChoice choice = {table.Find("ID")};
  for (const std::string& column : columns) {
    if (const int place = table.Find(column); place >= 0) choice.push_back(place);
  }
  const auto byId = RowsById(table);
  std::vector<TextRow> rows;
  for (const int supplier : suppliers) {
    const auto found = byId.find(supplier);
    if (found == byId.end()) continue;
    TextRow row = {static_cast<long>(rows.size()) + 1, {std::to_string(supplier)}};
    for (std::size_t i = 1; i < choice.size(); ++i) {
      row.cells.push_back(cellOf(table.rows[found->second], choice[i]));
    }
    rows.push_back(std::move(row));
  }
  return PlanImport(database, ImportKind::Suppliers, rows, choice);
}

std::string Changed(const Value& value, ColumnType type, const RateChange& change) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text + " ?";  // is refused
  const double before = LeadingNumber(CellText(value));
  const double after = change.step == RateStep::Add        ? before + change.amount
                       : change.step == RateStep::Multiply ? before * change.amount
                                                           : change.amount;
  if (type == ColumnType::Currency) return CellText(Currency::FromDouble(after).value_or(Currency()));
  // Rates are kept to the decimals that a person reads; 8.1 and 0.25 make 8.35.
  return FormatSingle(static_cast<float>(after));
}

}  // namespace

std::vector<std::string> RateCardColumns() {
  std::vector<std::string> columns;
  for (const char* name : {"RangeEquipFROM", "Yield", "Com"}) {
    for (int i = 0; i < 5; ++i) columns.push_back(name + std::to_string(i));
  }
  columns.insert(columns.end(), {"AdditionalPremium", "AdditionalPremiumMsg", "AdditionalPremiumYield",
                                 "AdditionalPremiumMin", "MaintenanceOption", "ResidualOption"});
  return columns;
}

ImportPlan PlanRateChange(Database& database, const std::vector<int>& suppliers, const RateChange& change) {
  const Table table = ReadSupplierTable(database);
  return PlanCells(database, table, suppliers, change.columns, [&](const std::vector<Value>& row, int column) {
    const auto at = static_cast<std::size_t>(column);
    return Changed(row[at], table.columns[at].type, change);
  });
}

ImportPlan PlanRateCardCopy(Database& database, int from, const std::vector<int>& suppliers) {
  const Table table = ReadSupplierTable(database);
  const auto byId = RowsById(table);
  const auto source = byId.find(from);
  if (source == byId.end()) throw RuntimeError(kItemNotFound, Tr("There is no supplier %1", {std::to_string(from)}));
  return PlanCells(database, table, suppliers, RateCardColumns(), [&](const std::vector<Value>&, int column) {
    return CellText(table.rows[source->second][static_cast<std::size_t>(column)]);
  });
}

}  // namespace tarvolinex
