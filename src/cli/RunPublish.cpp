#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "platform/files/Files.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPublish(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier"}, {}, 0);
  const std::string id = SupplierIdOf(parsed);
  Database database(run);
  BuildCalculatorFolder(ChooseCalculator(run, database, id), run);
  std::cout << NativePath(run.CalculatorFolder()) << '\n';
  return kDone;
}

}  // namespace tarvolinex
