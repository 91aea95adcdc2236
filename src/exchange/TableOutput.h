// Where a command's table goes: CSV on standard output or in a file, or a spreadsheet.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/Spreadsheet.h"

namespace tarvolinex {

// Who reads a CSV file: programs have it as the commands print it. Spreadsheets have UTF-8 with its mark, lines that
// end in CR LF, and texts that would run as formulas guarded (TextTable.h).
enum class CsvReaders { Programs, Spreadsheets };

// Rows that appear only once all of them are there.
class TableOutput {
 public:
  virtual ~TableOutput() = default;
  // path: empty = standard output; a name that ends in ".xlsx" gives a spreadsheet, any other CSV, and only one that
  // ends in ".csv" CSV for spreadsheets. The heading is written from the columns. This, and the members, throw
  // RuntimeError when something cannot be written.
  static std::unique_ptr<TableOutput> To(const std::string& path, const std::vector<SheetColumn>& columns,
                                         CsvReaders readers = CsvReaders::Programs);
  // CSV with mark and CR LF, whatever the name, of rows that are guarded already and have that end.
  static std::unique_ptr<TableOutput> ForSpreadsheets(const std::string& path, const std::vector<SheetColumn>& columns);
  // Whole rows of CSV, each with its line end.
  virtual void Write(std::string_view rows) = 0;
  virtual void Commit() = 0;
};

}  // namespace tarvolinex
