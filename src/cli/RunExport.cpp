#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "exchange/TableExport.h"

namespace tarvolinex {

int RunExport(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--output"}, {}, 1);
  const std::string what = parsed.Words().empty() ? "" : parsed.Words().front();
  if (what != "suppliers" && what != "contacts") throw UsageError{R"(expected "suppliers" or "contacts")"};
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  ExportTable(database, what == "suppliers" ? ImportKind::Suppliers : ImportKind::Contacts, parsed.Value("--output"));
  return kDone;
}

}  // namespace tarvolinex
