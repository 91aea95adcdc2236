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

SupplierCalcSettingsRecord SupplierOf(Run& run, const std::string& source) {
  SupplierCalcSettingsRecord supplier;
  if (source.empty()) return supplier;
  if (!IsSupplierId(source) || FileExists(source)) {
    if (FileExists(source) && FileLength(source) >= kCalculatorPreferencesSize) {
      throw RuntimeError(kItemNotFound, source + " is a preferences record, not a supplier's");
    }
    ReadRecord(source, supplier);
    return supplier;
  }
  Database database(run);
  return ChooseSupplier(run, database, source).settings;
}

void PriceRows(std::istream& input, const std::string& name, const RateCard& card, float taxRate, Results& results) {
  CsvReader reader(input, name);
  std::vector<std::string_view> cells;
  if (!reader.Next(cells)) throw RuntimeError(kItemNotFound, name + " has no header line");
  const QuoteColumns columns(cells, reader.Place());
  constexpr std::size_t kFlushAt = 1 << 16;
  std::string out = QuoteResultHeader();
  while (reader.Next(cells)) {
    QuoteRow row;
    columns.Read(cells, row, [&] { return reader.Place(); });
    CalculateQuote(row.mode, row.quote, {card, taxRate, row.capitalCostLocked});
    AppendQuoteResult(row.quote, out);
    if (out.size() >= kFlushAt) {
      results.Write(out);
      out.clear();
    }
  }
  results.Write(out);
}

}  // namespace

int RunQuote(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--general", "--output"}, {}, 1);
  if (const std::string general = parsed.Value("--general"); !general.empty()) {
    ReadRecord(general, run.CalculatorPreferences);
  }
  const RateCard card = SupplierOf(run, parsed.Value("--supplier"));
  const float taxRate = run.CalculatorPreferences.TaxRate;
  Results results(parsed.Value("--output"));
  const std::string source = parsed.Words().empty() ? "-" : parsed.Words().front();
  if (source == "-") {
    std::ios::sync_with_stdio(false);
    PriceRows(std::cin, "standard input", card, taxRate, results);
  } else {
    if (!FileExists(source)) throw RuntimeError(kFileNotFound, source + " does not exist");
    std::ifstream file(NativePath(source), std::ios::binary);
    if (!file) throw RuntimeError(kPathAccess, source + " cannot be read");
    PriceRows(file, source, card, taxRate, results);
  }
  results.Commit();
  return kDone;
}

}  // namespace tarvolinex
