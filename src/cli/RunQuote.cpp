#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>

#include "calc/Payment.h"
#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Csv.h"
#include "cli/QuoteRows.h"
#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex {

namespace {

// Results that appear only once every row has been priced: in the named file, or at the end on standard output.
class Results {
 public:
  explicit Results(const std::string& path) {
    if (path.empty()) {
      spool_.reset(std::tmpfile());
      if (!spool_) throw RuntimeError(kDeviceError, "No temporary file can be made for the results");
    } else {
      file_ = std::make_unique<WholeFile>(path);
    }
  }
  void Write(const std::string& bytes) {
    if (file_) return file_->Write(bytes);
    if (std::fwrite(bytes.data(), 1, bytes.size(), spool_.get()) != bytes.size()) Fail();
  }
  void Commit() {
    if (file_) return file_->Commit();
    std::rewind(spool_.get());
    std::string buffer(1 << 16, '\0');
    for (std::size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), spool_.get())) > 0;) {
      if (std::fwrite(buffer.data(), 1, n, stdout) != n) Fail();
    }
    if (std::fflush(stdout) != 0) Fail();
  }

 private:
  [[noreturn]] static void Fail() { throw RuntimeError(kDiskFull, "The results cannot be written"); }
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> spool_;
  std::unique_ptr<WholeFile> file_;
};

void LoadSupplierOf(const std::string& source) {
  if (source.empty()) return;
  if (!IsSupplierId(source) || FileExists(source)) {
    if (FileExists(source) && FileLength(source) >= kCalculatorPreferencesSize) {
      throw RuntimeError(kItemNotFound, source + " is a preferences record, not a supplier's");
    }
    return ReadRecord(source, SupplierCalcSettings);
  }
  ChooseSupplier(source);
}

void PriceRows(std::istream& input, const std::string& name, Results& results) {
  CsvReader reader(input, name);
  std::vector<std::string_view> cells;
  if (!reader.Next(cells)) throw RuntimeError(kItemNotFound, name + " has no header line");
  const QuoteColumns columns(cells, reader.Place());
  constexpr std::size_t kFlushAt = 1 << 16;
  std::string out = QuoteResultHeader();
  while (reader.Next(cells)) {
    QuoteRow row;
    columns.Read(cells, row, [&] { return reader.Place(); });
    CalculateQuote(row.mode, row.quote, {SupplierCalcSettings, CalculatorPreferences.TaxRate, row.capitalCostLocked});
    AppendQuoteResult(row.quote, out);
    if (out.size() >= kFlushAt) {
      results.Write(out);
      out.clear();
    }
  }
  results.Write(out);
}

}  // namespace

int RunQuote(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--general", "--output"}, {}, 1);
  if (const std::string general = parsed.Value("--general"); !general.empty()) {
    ReadRecord(general, CalculatorPreferences);
  }
  LoadSupplierOf(parsed.Value("--supplier"));
  Results results(parsed.Value("--output"));
  const std::string source = parsed.Words().empty() ? "-" : parsed.Words().front();
  if (source == "-") {
    std::ios::sync_with_stdio(false);
    PriceRows(std::cin, "standard input", results);
  } else {
    if (!FileExists(source)) throw RuntimeError(kFileNotFound, source + " does not exist");
    std::ifstream file(NativePath(source), std::ios::binary);
    if (!file) throw RuntimeError(kPathAccess, source + " cannot be read");
    PriceRows(file, source, results);
  }
  results.Commit();
  return kDone;
}

}  // namespace tarvolinex
