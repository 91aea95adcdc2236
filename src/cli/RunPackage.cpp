#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "distribute/InstallPackage.h"
#include "distribute/Standing.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPackage(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output"}, {}, 0);
  const std::string id = SupplierIdOf(parsed);
  const std::string output = parsed.Value("--output");
  if (output.empty()) throw UsageError{"--output FILE.exe or FILE.zip is needed"};
  if (!CanPack({run.Places(), run.CalculatorPreferences, run.CustomerReference}, run)) return kFailed;
  Database database(run);
  const Publication calculator = ChooseCalculator(run, database, id);
  BuildCalculatorFolder(calculator, run);
  if (!BuildDistFiles(calculator.branding, kSendProgram, output, run)) return kFailed;
  NoteMade(database, std::stoi(id), calculator, EndsWithNoCase(output, ".zip") ? "zip" : "exe", run);
  std::cout << NativePath(output) << '\n';
  return kDone;
}

}  // namespace tarvolinex
