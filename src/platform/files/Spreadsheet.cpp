#include "platform/files/Spreadsheet.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"

namespace tarvolinex {

namespace {

constexpr double kColumnWidths[] = {28, 10, 14, 12, 14};

std::optional<double> NumberOf(std::string_view text) {
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

struct Spreadsheet::Body {
  Body(std::string_view path, std::vector<SheetColumn> all) : target(path), unfinished(path), columns(std::move(all)) {
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    book = workbook_new_opt(unfinished.Path().c_str(), &options);
    if (!book) throw RuntimeError(kDeviceError, std::string(path) + " cannot be written");
    sheet = workbook_add_worksheet(book, nullptr);
    bold = workbook_add_format(book);
    format_set_bold(bold);
    for (const char* picture : {"", "0", "#,##0.00", "yyyy-mm-dd", "General"}) {
      for (const bool strong : {false, true}) {
        lxw_format* format = workbook_add_format(book);
        if (*picture) format_set_num_format(format, picture);
        if (strong) format_set_bold(format);
        formats.push_back(format);
      }
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto column = static_cast<lxw_col_t>(i);
      worksheet_set_column(sheet, column, column, kColumnWidths[static_cast<std::size_t>(columns[i].kind)], nullptr);
      worksheet_write_string(sheet, 0, column, columns[i].name.c_str(), bold);
    }
    worksheet_freeze_panes(sheet, 1, 0);
    sums.resize(columns.size());
  }
  ~Body() {
    if (book) workbook_close(book);  // frees it; what it writes is thrown away
  }
  Body(const Body&) = delete;
  Body& operator=(const Body&) = delete;

  lxw_format* FormatOf(CellKind kind, bool strong = false) const {
    return formats[static_cast<std::size_t>(kind) * 2 + (strong ? 1 : 0)];
  }

  void WriteCell(std::size_t i, std::string_view text) {
    const auto column = static_cast<lxw_col_t>(i);
    lxw_format* format = FormatOf(columns[i].kind);
    if (columns[i].kind == CellKind::Date) {
      constexpr std::chrono::year kFirstYear(1900);  // before it spreadsheets know no days
      if (const auto day = DayFromText(text); day && day->year() >= kFirstYear) {
        lxw_datetime when = {static_cast<int>(day->year()),
                             static_cast<int>(static_cast<unsigned>(day->month())),
                             static_cast<int>(static_cast<unsigned>(day->day())),
                             0,
                             0,
                             0};
        worksheet_write_datetime(sheet, row, column, &when, format);
        return;
      }
    } else if (columns[i].kind != CellKind::Text) {
      if (const auto number = NumberOf(text)) {
        sums[i] += *number;
        worksheet_write_number(sheet, row, column, *number, format);
        return;
      }
    }
    if (!text.empty()) worksheet_write_string(sheet, row, column, std::string(text).c_str(), nullptr);
  }

  void WriteSums() {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (!columns[i].summed || row < 2) continue;
      char name[LXW_MAX_CELL_NAME_LENGTH], last[LXW_MAX_CELL_NAME_LENGTH];
      const auto column = static_cast<lxw_col_t>(i);
      lxw_rowcol_to_cell(name, 1, column);
      lxw_rowcol_to_cell(last, row - 1, column);
      worksheet_write_formula_num(sheet, row, column, ("=SUM(" + std::string(name) + ":" + last + ")").c_str(),
                                  FormatOf(columns[i].kind, true), sums[i]);
    }
  }

  WholeFile target;
  UnfinishedFile unfinished;
  std::vector<SheetColumn> columns;
  lxw_workbook* book = nullptr;
  lxw_worksheet* sheet = nullptr;
  lxw_format* bold = nullptr;
  std::vector<lxw_format*> formats;  // by kind, plain and bold
  std::vector<double> sums;
  lxw_row_t row = 1;
};

Spreadsheet::Spreadsheet(std::string_view path, std::vector<SheetColumn> columns)
    : body_(std::make_unique<Body>(path, std::move(columns))) {}

Spreadsheet::~Spreadsheet() = default;

void Spreadsheet::AddRow(const std::vector<std::string_view>& cells) {
  constexpr lxw_row_t kSumRow = LXW_ROW_MAX - 1;
  if (body_->row >= kSumRow) {
    throw RuntimeError(kOverflow, "A spreadsheet holds 1,048,576 rows and there are more; write a .csv file instead");
  }
  for (std::size_t i = 0; i < std::min(cells.size(), body_->columns.size()); ++i) body_->WriteCell(i, cells[i]);
  ++body_->row;
}

void Spreadsheet::Commit() {
  body_->WriteSums();
  const lxw_error error = workbook_close(std::exchange(body_->book, nullptr));
  if (error != LXW_NO_ERROR)
    throw RuntimeError(kDiskFull, std::string("The spreadsheet cannot be written: ") + lxw_strerror(error));
  std::ifstream made(body_->unfinished.Path(), std::ios::binary);
  std::string piece(1 << 16, '\0');
  while (made.read(piece.data(), static_cast<std::streamsize>(piece.size())) || made.gcount() > 0) {
    body_->target.Write(std::string_view(piece).substr(0, static_cast<std::size_t>(made.gcount())));
  }
  body_->target.Commit();
}

}  // namespace tarvolinex
