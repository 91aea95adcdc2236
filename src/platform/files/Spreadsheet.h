// A table as an XLSX file: a bold heading that stays in view, columns with formats of their kind.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

enum class CellKind { Text, Count, Money, Date, Number };  // Number: with the decimals that it has

struct SheetColumn {
  std::string name;
  CellKind kind = CellKind::Text;
  bool summed = false;  // a formula below the last row adds it up
};

class Spreadsheet {
 public:
  // Throws RuntimeError as WholeFile.
  Spreadsheet(std::string_view path, std::vector<SheetColumn> columns);
  ~Spreadsheet();
  Spreadsheet(const Spreadsheet&) = delete;
  Spreadsheet& operator=(const Spreadsheet&) = delete;

  // One text a column: a decimal for money and counts, YYYY-MM-DD for a date; what is none of these stands as text. A
  // text is never a formula, whatever it begins with. Throws RuntimeError when a sheet holds no more rows (1,048,576).
  void AddRow(const std::vector<std::string_view>& cells);

  // The file appears whole under its name. Throws RuntimeError.
  void Commit();

 private:
  struct Body;
  std::unique_ptr<Body> body_;
};

}  // namespace tarvolinex
