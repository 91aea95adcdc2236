#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Globals.h"
#include "platform/files/Files.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPublish(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier"}, {}, 0);
  const std::string id = SupplierIdOf(parsed);
  ChooseSupplierToPublish(id);
  BuildCalculatorFolder();
  std::cout << NativePath(CalculatorFolder()) << '\n';
  return kDone;
}

}  // namespace tarvolinex
