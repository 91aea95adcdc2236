#include "exchange/RowPlanner.h"

#include <algorithm>
#include <charconv>

#include "exchange/CellValues.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

bool IsNumber(ColumnType type) {
  return type == ColumnType::Currency || type == ColumnType::Single || type == ColumnType::Double;
}

std::string Shown(ColumnType type, const Value& value) {
  const bool number = IsNumber(type) || type == ColumnType::WholeNumber || type == ColumnType::YesNo;
  return number && !IsNull(value) ? CellText(value) : "\"" + CellText(value) + "\"";
}

// A day is the same however it is written.
bool IsSameCell(const TableColumn& column, const Value& a, const Value& b) {
  if (column.type == ColumnType::Date) return LongMoment(CellText(a)) == LongMoment(CellText(b));
  return CellText(a) == CellText(b);
}

}  // namespace

void Faults::Add(std::string_view column, const std::string& why) {
  if (!text_.empty()) text_ += "; ";
  text_ += column.empty() ? why : std::string(column) + ": " + why;
}

RowPlanner::RowPlanner(const Table& table, const ColumnChoice& choice, std::span<const TextRow> rows)
    : table_(table), choice_(choice), places_(table.columns.size(), -1) {
  for (std::size_t i = 0; i < choice.size(); ++i) {
    if (choice[i] < 0) continue;
    places_[static_cast<std::size_t>(choice[i])] = static_cast<int>(i);
    if (!IsNumber(table.columns[static_cast<std::size_t>(choice[i])].type)) continue;
    decimalCommas_ = decimalCommas_ || std::any_of(rows.begin(), rows.end(), [&](const TextRow& row) {
                       return i < row.cells.size() && HasDecimalComma(row.cells[i]);
                     });
  }
}

std::string_view RowPlanner::Cell(const TextRow& row, int column) const {
  if (!Has(column)) return {};
  const auto place = static_cast<std::size_t>(places_[static_cast<std::size_t>(column)]);
  return place < row.cells.size() ? Trim(UnguardedCell(row.cells[place])) : std::string_view();
}

int RowPlanner::Id(const TextRow& row, int column, Faults& faults) const {
  const std::string_view cell = Cell(row, column);
  if (cell.empty()) return 0;
  int plain = 0;
  const auto end = std::from_chars(cell.data(), cell.data() + cell.size(), plain);
  if (end.ec == std::errc() && end.ptr == cell.data() + cell.size() && plain > 0) return plain;
  const TableColumn& asked = table_.columns[static_cast<std::size_t>(column)];
  const ReadCell read = ReadCellFor({asked.name, ColumnType::WholeNumber, 0}, cell, decimalCommas_);
  const int id = static_cast<int>(ValueNumber(read.value));
  if (!read.fault.empty() || id == 0) {
    faults.Add(asked.name, read.fault.empty() ? Tr("\"%1\" is no ID", {std::string(cell)}) : read.fault);
  }
  return id;
}

void RowPlanner::CheckLength(const TextRow& row, Faults& faults) const {
  const bool more =
      std::any_of(row.cells.begin() + std::min<std::ptrdiff_t>(std::ssize(row.cells), std::ssize(choice_)),
                  row.cells.end(), [](const std::string& cell) { return !cell.empty(); });
  if (row.cells.size() >= choice_.size() && !more) return;
  faults.Add("", Tr("the row has %1 cells, the first one has %2",
                    {std::to_string(row.cells.size()), std::to_string(choice_.size())}));
}

std::vector<FieldChange> RowPlanner::Compare(const TextRow& row, const std::vector<Value>* stored, int first,
                                             Faults& faults) const {
  std::vector<FieldChange> fields;
  if (!stored) fields.reserve(table_.columns.size());
  for (int column = first; column < static_cast<int>(table_.columns.size()); ++column) {
    if (!Has(column)) continue;
    const auto at = static_cast<std::size_t>(column);
    const auto place = static_cast<std::size_t>(places_[at]);
    if (place >= row.cells.size()) continue;
    const Value from = stored ? (*stored)[at] : Value(Null{});
    const std::string_view cell = UnguardedCell(row.cells[place]);
    // What is stored may stay, whatever it is.
    if (stored && cell == CellText(from)) continue;
    ReadCell read = ReadCellFor(table_.columns[at], cell, decimalCommas_);
    if (!read.fault.empty()) {
      faults.Add(table_.columns[at].name, read.fault);
    } else if (read.value != from &&
               !(stored ? IsSameCell(table_.columns[at], read.value, from) : IsNull(read.value))) {
      fields.push_back({column, from, std::move(read.value)});
    }
  }
  return fields;
}

std::string RowPlanner::Told(const std::vector<FieldChange>& fields) const {
  std::string told;
  for (const FieldChange& field : fields) {
    const TableColumn& column = table_.columns[static_cast<std::size_t>(field.column)];
    if (!told.empty()) told += "; ";
    told += Tr("%1 from %2 to %3", {column.name, Shown(column.type, field.from), Shown(column.type, field.to)});
  }
  return told;
}

std::string KeyOf(std::string_view text) {
  return FoldCase(EscapeQuotes(Trim(text)));
}

std::string KeyOf(std::string_view name, std::string_view more) {
  return KeyOf(name) + '\n' + KeyOf(more);
}

std::unordered_map<int, std::size_t> RowsById(const Table& table) {
  std::unordered_map<int, std::size_t> rows;
  const int id = table.Find("ID");
  rows.reserve(table.rows.size());
  for (std::size_t i = 0; id >= 0 && i < table.rows.size(); ++i) {
    rows.emplace(static_cast<int>(ValueNumber(table.rows[i][static_cast<std::size_t>(id)])), i);
  }
  return rows;
}

}  // namespace tarvolinex
