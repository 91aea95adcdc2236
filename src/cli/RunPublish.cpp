#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/ManySuppliers.h"
#include "platform/files/Files.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPublish(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output"}, {"--all", "--stale"}, 0);
  if (IsForMany(parsed)) return MakeForMany(run, parsed, kBatchFolder);
  const std::string id = SupplierIdOf(parsed);
  Database database(run);
  BuildCalculatorFolder(ChooseCalculator(run, database, id), run);
  std::cout << NativePath(run.CalculatorFolder()) << '\n';
  return kDone;
}

}  // namespace tarvolinex
