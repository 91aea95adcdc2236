#include "exchange/TableExport.h"

#include "exchange/CellValues.h"
#include "exchange/Csv.h"
#include "exchange/TableOutput.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

CellKind KindOf(const TableColumn& column) {
  const bool number =
      column.type == ColumnType::Currency || column.type == ColumnType::Single || column.type == ColumnType::Double;
  return number ? CellKind::Number : column.type == ColumnType::WholeNumber ? CellKind::Count : CellKind::Text;
}

std::vector<SheetColumn> SheetColumnsOf(const Table& table) {
  std::vector<SheetColumn> columns;
  for (const TableColumn& column : table.columns) columns.push_back({column.name, KindOf(column)});
  return columns;
}

void WriteSheet(const Table& table, const std::string& path) {
  Spreadsheet sheet(path, SheetColumnsOf(table));
  std::vector<std::string> texts(table.columns.size());
  std::vector<std::string_view> cells(table.columns.size());
  for (const auto& row : table.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) cells[i] = texts[i] = CellText(row[i]);
    sheet.AddRow(cells);
  }
  sheet.Commit();
}

// Only texts can look like formulas; a number below 0 is none.
std::string CsvText(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return CsvCell(text ? GuardedCell(*text) : CellText(value));
}

}  // namespace

void ExportTable(Database& database, ImportKind kind, const std::string& path) {
  const Table table = kind == ImportKind::Suppliers ? ReadSupplierTable(database) : ReadContactTable(database);
  if (EndsWithNoCase(path, ".xlsx")) return WriteSheet(table, path);
  const auto output = TableOutput::ForSpreadsheets(path, SheetColumnsOf(table));
  std::string line;
  for (const auto& row : table.rows) {
    line.clear();
    for (const Value& value : row) line += CsvText(value) + ',';
    line.replace(line.size() - 1, 1, "\r\n");
    output->Write(line);
  }
  output->Commit();
}

}  // namespace tarvolinex
