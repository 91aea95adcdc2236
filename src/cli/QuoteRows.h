// The rows that quotes are asked in: cells to a quote and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Quote.h"
#include "platform/files/Spreadsheet.h"

namespace tarvolinex {

struct QuoteRow {
  int mode = 0;
  bool capitalCostLocked = false;
  QuoteRecord quote;
};

// Which input column stands where in a file.
class QuoteColumns {
 public:
  // Throws RuntimeError for a name that is no column or stands twice. place: for its text.
  QuoteColumns(const std::vector<std::string_view>& header, const std::string& place);

  // Throws RuntimeError naming the place and the column of the first cell that is not a number of its column's kind,
  // and for a row with another number of cells than the header.
  template <typename Place>
  void Read(const std::vector<std::string_view>& cells, QuoteRow& row, Place place) const {
    if (cells.size() != columns_.size()) Fail(place(), cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (!Set(columns_[i], cells[i], row)) Fail(place(), columns_[i], cells[i]);
    }
  }

 private:
  static bool Set(int column, std::string_view cell, QuoteRow& row);
  [[noreturn]] void Fail(const std::string& place, std::size_t cells) const;
  [[noreturn]] static void Fail(const std::string& place, int column, std::string_view cell);
  std::vector<int> columns_;
};

// The columns of the output.
std::vector<SheetColumn> QuoteResultColumns();
// Appends the results as one line.
void AppendQuoteResult(const QuoteRecord& quote, std::string& out);

}  // namespace tarvolinex
