// The cells of exported and imported tables as values of the database.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/Tables.h"

namespace tarvolinex {

// As it is exported: Null is empty, money and rates are the shortest plain decimals, "Yes" and "No".
std::string CellText(const Value& value);

// Whether the cell can only be a number with a decimal comma ("8,5", "1.234,50"): then a point before three digits in
// the same file may separate thousands.
bool HasDecimalComma(std::string_view cell);

// A cell's value, or why it is none.
struct ReadCell {
  Value value;
  std::string fault;  // empty = none
};
// What an import may put into the column: a text that fits, without apostrophes, as the windows store it; a number
// within the range of the window's box. An empty cell is an empty text, No or Null. A number whose comma or
// point may separate thousands or decimals is a fault.
ReadCell ReadCellFor(const TableColumn& column, std::string_view cell, bool decimalCommas);

}  // namespace tarvolinex
