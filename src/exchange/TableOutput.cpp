#include "exchange/TableOutput.h"

#include <cstdio>

#include "exchange/Csv.h"
#include "exchange/TextTable.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

class FileOutput final : public TableOutput {
 public:
  explicit FileOutput(const std::string& path) : file_(path) {}
  void Write(std::string_view rows) override { file_.Write(rows); }
  void Commit() override { file_.Commit(); }

 private:
  WholeFile file_;
};

// Kept in a temporary file until the end.
class StandardOutput final : public TableOutput {
 public:
  StandardOutput() : spool_(std::tmpfile()) {
    if (!spool_) throw RuntimeError(kDeviceError, "No temporary file can be made for the results");
  }
  void Write(std::string_view rows) override { Put(rows, spool_.get()); }
  void Commit() override {
    std::rewind(spool_.get());
    std::string buffer(1 << 16, '\0');
    for (std::size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), spool_.get())) > 0;) {
      Put(std::string_view(buffer).substr(0, n), stdout);
    }
    if (std::fflush(stdout) != 0) Fail();
  }

 private:
  static void Put(std::string_view bytes, std::FILE* file) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) Fail();
  }
  [[noreturn]] static void Fail() { throw RuntimeError(kDiskFull, "The results cannot be written"); }
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> spool_;
};

// A line break within a cell becomes a blank.
std::string OnOneLineEach(std::string_view rows) {
  std::string flat(rows);
  bool quoted = false;
  for (char& c : flat) {
    if (c == '"') quoted = !quoted;
    if (quoted && (c == '\n' || c == '\r')) c = ' ';
  }
  return flat;
}

class SheetOutput final : public TableOutput {
 public:
  SheetOutput(const std::string& path, const std::vector<SheetColumn>& columns) : sheet_(path, columns) {}
  void Write(std::string_view rows) override {
    const std::string flat = OnOneLineEach(rows);
    CsvReader reader(flat, "results");
    for (std::vector<std::string_view> cells; reader.Next(cells);) sheet_.AddRow(cells);
  }
  void Commit() override { sheet_.Commit(); }

 private:
  Spreadsheet sheet_;
};

constexpr const char* kMark = "\xEF\xBB\xBF";

class GuardedOutput final : public TableOutput {
 public:
  GuardedOutput(const std::string& path, const std::vector<SheetColumn>& columns) : file_(path), columns_(columns) {
    file_.Write(kMark);
  }
  void Write(std::string_view rows) override {
    const std::string flat = OnOneLineEach(rows);
    CsvReader reader(flat, "results");
    std::string line;
    for (std::vector<std::string_view> cells; reader.Next(cells);) {
      line.clear();
      for (std::size_t i = 0; i < cells.size(); ++i) {
        // A number below 0 is no formula.
        const bool text = i >= columns_.size() || columns_[i].kind == CellKind::Text;
        line += (i == 0 ? "" : ",") + CsvCell(text ? GuardedCell(cells[i]) : std::string(cells[i]));
      }
      file_.Write(line + "\r\n");
    }
  }
  void Commit() override { file_.Commit(); }

 private:
  WholeFile file_;
  std::vector<SheetColumn> columns_;
};

std::string HeadingOf(const std::vector<SheetColumn>& columns) {
  std::string heading;
  for (const SheetColumn& column : columns) heading += (heading.empty() ? "" : ",") + column.name;
  return heading;
}

std::unique_ptr<TableOutput> TextOutput(const std::string& path) {
  if (path.empty()) return std::make_unique<StandardOutput>();
  return std::make_unique<FileOutput>(path);
}

}  // namespace

std::unique_ptr<TableOutput> TableOutput::To(const std::string& path, const std::vector<SheetColumn>& columns,
                                             CsvReaders readers) {
  if (EndsWithNoCase(path, ".xlsx")) return std::make_unique<SheetOutput>(path, columns);
  std::unique_ptr<TableOutput> output;
  if (readers == CsvReaders::Spreadsheets && EndsWithNoCase(path, ".csv")) {
    output = std::make_unique<GuardedOutput>(path, columns);
  } else {
    output = TextOutput(path);
  }
  output->Write(HeadingOf(columns) + "\n");
  return output;
}

std::unique_ptr<TableOutput> TableOutput::ForSpreadsheets(const std::string& path,
                                                          const std::vector<SheetColumn>& columns) {
  auto output = TextOutput(path);
  output->Write(kMark + HeadingOf(columns) + "\r\n");
  return output;
}

}  // namespace tarvolinex
