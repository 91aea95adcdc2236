#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "distribute/Standing.h"
#include "exchange/Csv.h"
#include "exchange/TableOutput.h"

namespace tarvolinex {

namespace {

void AppendRow(const std::vector<std::string>& cells, std::string& rows) {
  for (const std::string& cell : cells) rows += CsvCell(cell) + ",";
  rows.back() = '\n';
}

}  // namespace

int RunStatus(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--output"}, {}, 0);
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  const auto output =
      TableOutput::To(parsed.Value("--output"),
                      {{"ID", CellKind::Count}, {"CompanyName"}, {"State"}, {"LastSent"}, {"As"}, {"Changes"}},
                      CsvReaders::Spreadsheets);
  std::string rows;
  ForEachStanding(database, OwnBranding(run), [&](const Standing& each) {
    AppendRow({std::to_string(each.supplierId), each.companyName, NameOf(each.state), each.lastSent, each.sentAs,
               each.changes},
              rows);
  });
  output->Write(rows);
  output->Commit();
  return kDone;
}

int RunSent(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output"}, {}, 0);
  const std::string supplier = parsed.Value("--supplier");
  if (!supplier.empty()) SupplierIdOf(parsed);
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  const auto output = TableOutput::To(
      parsed.Value("--output"),
      {{"Date"}, {"SupplierID", CellKind::Count}, {"CompanyName"}, {"Contact"}, {"Email"}, {"As"}, {"Result"}},
      CsvReaders::Spreadsheets);
  std::string rows;
  ListDeliveries(database, [&](int, const Delivery& each) {
    if (!supplier.empty() && std::stoi(supplier) != each.supplierId) return;
    AppendRow({each.date, std::to_string(each.supplierId), each.companyName, each.contact, each.email, each.sentAs,
               each.result},
              rows);
  });
  output->Write(rows);
  output->Commit();
  return kDone;
}

}  // namespace tarvolinex
