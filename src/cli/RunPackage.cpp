#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/MainWindow.h"
#include "distribute/InstallPackage.h"
#include "platform/files/Files.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPackage(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output"}, {}, 0);
  const std::string id = SupplierIdOf(parsed);
  const std::string output = parsed.Value("--output");
  if (output.empty()) throw UsageError{"--output FILE.exe or FILE.zip is needed"};
  MainWindow form;
  if (!CanPack()) return kFailed;
  ChooseSupplierToPublish(id);
  form.send.TxtCalcCreate.SetText(output);
  BuildCalculatorFolder();
  if (!BuildDistFiles(true)) return kFailed;
  std::cout << NativePath(output) << '\n';
  return kDone;
}

}  // namespace tarvolinex
