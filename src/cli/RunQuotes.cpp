#include <iostream>
#include <optional>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/PricedRows.h"
#include "core/RecordJson.h"
#include "exchange/KeptQuoteTable.h"
#include "exchange/TableOutput.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

namespace {

CalendarDay Today(const Run& run) {
  return LocalDay(run.Now());
}

int KeepRows(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--customer", "--equipment", "--valid-until"}, {}, 1);
  KeptQuote common;
  common.details.customer = parsed.Text("--customer");
  common.details.equipment = parsed.Text("--equipment");
  common.details.validUntil = parsed.Day("--valid-until");
  common.date = Today(run);
  Database database(run);
  common.origin = OriginOf(ChooseSupplier(run, database, SupplierIdOf(parsed)), run.CalculatorPreferences);
  const auto rows =
      PricedRows({parsed.Input(), common.origin.supplier, common.origin.preferences.TaxRate}, CheckKeepable);
  if (rows.empty()) return kDone;
  database.DemandWritable();
  for (const int number : KeepQuotes(database, common, rows)) std::cout << number << '\n';
  return kDone;
}

int ListKept(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output"}, {}, 0);
  const int supplier = parsed.Has("--supplier") ? std::stoi(SupplierIdOf(parsed)) : 0;
  Database database(run);
  OpenQuotes(run, database);
  const auto output = TableOutput::To(parsed.Value("--output"), KeptQuoteColumns(), CsvReaders::Spreadsheets);
  ListQuotes(database, Today(run), [&](const QuoteListRow& row) {
    if (!parsed.Has("--supplier") || row.supplierId == supplier) output->Write(KeptQuoteLine(row));
  });
  output->Commit();
  return kDone;
}

struct FigureToJson {
  JsonValue operator()(const std::int16_t* number) const { return JsonNumber{std::to_string(*number)}; }
  JsonValue operator()(const float* rate) const { return JsonNumber{FormatSingle(*rate)}; }
  JsonValue operator()(const Currency* amount) const { return amount->ToText(); }
  JsonValue operator()(const bool* truth) const { return *truth; }
};

void AppendFigures(QuoteFigures figures, JsonObject& object) {
  object.emplace_back("Mode", JsonNumber{std::to_string(figures.mode)});
  object.emplace_back("CapLock", figures.capitalCostLocked);
  for (const QuoteField& field : QuoteFields()) {
    if (!field.input) continue;
    object.emplace_back(std::string("Asked") + field.name, std::visit(FigureToJson{}, field.member(figures.asked)));
  }
  for (const QuoteField& field : QuoteFields()) {
    object.emplace_back(field.name, std::visit(FigureToJson{}, field.member(figures.priced)));
  }
}

std::string DayOrNothing(const std::optional<CalendarDay>& day) {
  return day ? DayText(*day) : std::string();
}

JsonObject MembersOf(const KeptQuote& quote, CalendarDay today) {
  const QuoteDetails& details = quote.details;
  JsonObject object = {
      {"Number", JsonNumber{std::to_string(quote.number)}},
      {"Date", DayText(quote.date)},
      {"SupplierID", JsonNumber{std::to_string(quote.origin.supplierId)}},
      {"CompanyName", quote.origin.companyName},
      {"Customer", details.customer},
      {"CustomerEmail", details.customerEmail},
      {"CustomerTel", details.customerTel},
      {"Equipment", details.equipment},
      {"Reference", details.reference},
      {"Note", details.note},
      {"StartDate", DayOrNothing(details.start)},
      {"ValidUntil", DayOrNothing(details.validUntil)},
      {"State", std::string(StateName(details.state, details.validUntil, today))},
  };
  AppendFigures(quote.figures, object);
  return object;
}

// The object as the value of a member of another one.
std::string AsMember(const std::string& name, const JsonObject& object) {
  const std::string text = FormatJsonObject(object);
  return ",\n  \"" + name + "\": " + ReplaceAll(text.substr(0, text.size() - 1), "\n", "\n  ");
}

int ShowKept(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 1);
  const KeptQuote quote = ChooseQuote(run, parsed);
  const std::string members = FormatJsonObject(MembersOf(quote, Today(run)));
  std::cout << members.substr(0, members.rfind("\n}")) << AsMember("Supplier", RecordToJson(quote.origin.supplier))
            << AsMember("Preferences", RecordToJson(quote.origin.preferences)) << "\n}\n";
  return kDone;
}

struct Job {
  const char* name;
  int (*run)(Run&, const std::vector<std::string>&);
};
constexpr Job kJobs[] = {{"keep", KeepRows}, {"list", ListKept}, {"show", ShowKept}, {"sheet", RunKeptSheet}};

}  // namespace

int RunQuotes(Run& run, const std::vector<std::string>& arguments) {
  for (const Job& job : kJobs) {
    if (!arguments.empty() && arguments.front() == job.name) {
      return job.run(run, {arguments.begin() + 1, arguments.end()});
    }
  }
  throw UsageError{R"(expected "keep", "list", "show" or "sheet")"};
}

}  // namespace tarvolinex
