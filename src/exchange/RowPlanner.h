// Rows of a file against rows of a table.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

// Why a row is refused, collected.
class Faults {
 public:
  void Add(std::string_view column, const std::string& why);
  bool None() const { return text_.empty(); }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

class RowPlanner {
 public:
  // The table and the rows must outlive the planner.
  RowPlanner(const Table& table, const ColumnChoice& choice, std::span<const TextRow> rows);

  // The row's cell of that column of the table, without blanks around it; empty when the file has none.
  std::string_view Cell(const TextRow& row, int column) const;
  bool Has(int column) const { return column >= 0 && places_[static_cast<std::size_t>(column)] >= 0; }
  // The same as an ID; 0 when it is empty, and with a fault when it is none.
  int Id(const TextRow& row, int column, Faults& faults) const;
  // Whether the row has a cell for every column of the file, and no more.
  void CheckLength(const TextRow& row, Faults& faults) const;

  // What the cells of all columns from `first` on would change; stored: nullptr for a new row.
  std::vector<FieldChange> Compare(const TextRow& row, const std::vector<Value>* stored, int first,
                                   Faults& faults) const;

  // "Yield1 from 8.5 to 9; Town from "Leeds" to "York"".
  std::string Told(const std::vector<FieldChange>& fields) const;

 private:
  const Table& table_;
  const ColumnChoice& choice_;
  std::vector<int> places_;  // of each column of the table in the file; -1 = none
  bool decimalCommas_ = false;
};

// Texts that are the same but for case, apostrophes and blanks around them have the same key.
std::string KeyOf(std::string_view text);
std::string KeyOf(std::string_view name, std::string_view more);

// The rows of a table by ID; of two with one ID the first.
std::unordered_map<int, std::size_t> RowsById(const Table& table);

}  // namespace tarvolinex
