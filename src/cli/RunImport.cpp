#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "exchange/Csv.h"
#include "exchange/ImportPlan.h"
#include "exchange/OldDatabase.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Encoding.h"

namespace tarvolinex {

namespace {

ImportPlan PlanOfFile(Database& database, ImportKind kind, const std::string& path) {
  auto rows = ReadTextTable(ReadFile(path), FileNameOf(path));
  const TextRow heading = rows.empty() ? TextRow{1, {""}} : rows.front();
  const ColumnChoice choice = ChoiceOf(heading, KnownColumns(database, kind));
  if (!rows.empty()) rows.erase(rows.begin());
  return PlanImport(database, kind, rows, choice);
}

void PrintRows(const ImportPlan& plan) {
  std::string text = "Line,Result,Detail\n";
  for (const PlannedRow& row : plan.rows) {
    text += std::to_string(row.line) + ',' + std::string(FateName(row.fate)) + ',' + CsvCell(row.detail) + '\n';
  }
  std::cout << text;
}

}  // namespace

int RunImport(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {"--dry-run"}, 2);
  const std::string what = parsed.Words().size() < 2 ? "" : parsed.Words()[0];
  if (what != "suppliers" && what != "contacts" && what != "database") {
    throw UsageError{R"(expected "suppliers", "contacts" or "database", and a file)"};
  }
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  if (!parsed.Has("--dry-run")) database.DemandWritable();
  const std::string& path = parsed.Words()[1];
  const ImportKind kind = what == "suppliers" ? ImportKind::Suppliers : ImportKind::Contacts;
  const ImportPlan plan = what == "database" ? PlanOldDatabase(database, path) : PlanOfFile(database, kind, path);
  const long refused = plan.Count(Fate::Refused);
  if (refused == 0 && !parsed.Has("--dry-run")) StoreImport(database, plan);
  PrintRows(plan);
  if (refused == 0) return kDone;
  std::cerr << "tarvolinex import: " << refused << " of " << plan.rows.size()
            << " rows are refused; nothing is stored\n";
  return kFailed;
}

}  // namespace tarvolinex
