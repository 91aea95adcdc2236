#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/PricedRows.h"
#include "platform/RuntimeError.h"
#include "platform/files/PdfDocument.h"
#include "publish/QuoteSheet.h"

namespace tarvolinex {

namespace {

std::string OutputOf(const Arguments& parsed) {
  const std::string output = parsed.Value("--output");
  if (output.empty()) throw UsageError{"--output FILE.pdf is needed"};
  return output;
}

std::vector<QuoteRecord> QuotesOf(const Arguments& parsed, const SheetContents& contents) {
  const auto rows = PricedRows({parsed.Input(), contents.supplier, contents.prefs.TaxRate});
  if (rows.empty()) throw RuntimeError(kItemNotFound, "There is no row to quote");
  if (rows.size() > kMostVariants) {
    throw RuntimeError(kItemNotFound, "There are " + std::to_string(rows.size()) + " rows; a sheet shows at most " +
                                          std::to_string(kMostVariants) + " side by side");
  }
  std::vector<QuoteRecord> quotes;
  for (const QuoteFigures& row : rows) quotes.push_back(row.priced);
  return quotes;
}

}  // namespace

int RunSheet(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(
      arguments, {"--supplier", "--customer", "--equipment", "--reference", "--start", "--valid-until", "--output"},
      {"--schedule"}, 1);
  const std::string id = SupplierIdOf(parsed), output = OutputOf(parsed);
  const CalendarDay today = LocalDay(run.Now());
  const CalendarDay start = parsed.Day("--start").value_or(today);
  const auto validUntil = parsed.Day("--valid-until");
  Database database(run);
  SheetContents contents = SheetOf(run.Places(), run.CalculatorPreferences, ChooseSupplier(run, database, id).settings);
  contents.customer = parsed.Text("--customer");
  contents.equipment = parsed.Text("--equipment");
  contents.reference = parsed.Text("--reference");
  contents.date = today;
  contents.start = start;
  contents.validUntil = validUntil;
  contents.schedule = parsed.Has("--schedule");
  contents.variants = QuotesOf(parsed, contents);
  WritePdf(FillSheet(run.Places(), contents), output);
  return kDone;
}

int RunKeptSheet(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--output"}, {}, 1);
  const std::string output = OutputOf(parsed);
  WritePdf(FillSheet(run.Places(), SheetOf(run.Places(), ChooseQuote(run, parsed))), output);
  return kDone;
}

}  // namespace tarvolinex
