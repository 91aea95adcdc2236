// Where a command's table goes: CSV on standard output or in a file, or a spreadsheet.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/Spreadsheet.h"

namespace tarvolinex {

// Rows that appear only once all of them are there.
class TableOutput {
 public:
  virtual ~TableOutput() = default;
  // path: empty = standard output; a name that ends in ".xlsx" gives a spreadsheet, any other CSV. The heading is
  // written from the columns. This, and the members, throw RuntimeError when something cannot be written.
  static std::unique_ptr<TableOutput> To(const std::string& path, const std::vector<SheetColumn>& columns);
  // CSV as spreadsheets know it, whatever the name: UTF-8 with its mark, lines that end in CR LF.
  static std::unique_ptr<TableOutput> ForSpreadsheets(const std::string& path, const std::vector<SheetColumn>& columns);
  // Whole rows of CSV, each with its line end.
  virtual void Write(std::string_view rows) = 0;
  virtual void Commit() = 0;
};

}  // namespace tarvolinex
