// What the window looks like from one run to the next: size, column widths, sort order.
#include <cstdlib>

#include "core/Settings.h"
#include "platform/text/Text.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

constexpr const char* kSection = "WINDOW";

int Number(const Run& run, std::string_view key, int otherwise) {
  return static_cast<int>(LeadingNumber(ReadIni(run.AppFolder, "General", kSection, key, std::to_string(otherwise))));
}

std::string ColumnKey(std::size_t column) {
  return "COLUMN" + std::to_string(column);
}

}  // namespace

void FrmMain::LoadAppearance() {
  StartWidth = Number(run, "WIDTH", 0);
  StartHeight = Number(run, "HEIGHT", 0);
  auto& columns = LvwSuppliers.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const int width = Number(run, ColumnKey(i), columns[i].width);
    if (width > 0) columns[i].width = width;
  }
  const int sort = Number(run, "SORT", 0);
  if (sort == 0 || std::abs(sort) > static_cast<int>(columns.size())) return;
  LvwSuppliers.SortColumn = std::abs(sort) - 1;
  LvwSuppliers.SortAscending = sort > 0;
}

void FrmMain::SaveAppearance() {
  if (StartWidth > 0) {
    WriteIni(run.AppFolder, "General", kSection, "WIDTH", std::to_string(StartWidth));
    WriteIni(run.AppFolder, "General", kSection, "HEIGHT", std::to_string(StartHeight));
  }
  const auto& columns = LvwSuppliers.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    WriteIni(run.AppFolder, "General", kSection, ColumnKey(i), std::to_string(columns[i].width));
  }
  // 1 and up for ascending by that column, -1 and down for descending, 0 for the order of the names.
  const int sort = LvwSuppliers.SortColumn + 1;
  WriteIni(run.AppFolder, "General", kSection, "SORT", std::to_string(LvwSuppliers.SortAscending ? sort : -sort));
}

}  // namespace tarvolinex
