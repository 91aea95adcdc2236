#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/ManySuppliers.h"
#include "distribute/InstallPackage.h"
#include "distribute/Standing.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

int RunPackage(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--output", "--as"}, {"--all", "--stale"}, 0);
  if (IsForMany(parsed)) {
    const std::string as = parsed.Value("--as");
    if (as != "exe" && as != "zip") throw UsageError{"--as is one of exe, zip"};
    return MakeForMany(run, parsed, as == "zip" ? kSendZip : kSendProgram);
  }
  if (parsed.Has("--as")) throw UsageError{"--as goes with --all or --stale; here the ending of --output decides"};
  const std::string id = SupplierIdOf(parsed);
  const std::string output = parsed.Value("--output");
  if (output.empty()) throw UsageError{"--output FILE.exe or FILE.zip is needed"};
  Database database(run);
  const Publication calculator = ChooseCalculator(run, database, id);
  if (!CanPack(calculator.branding, run)) return kFailed;
  BuildCalculatorFolder(calculator, run);
  if (!BuildDistFiles(calculator.branding, kSendProgram, output, run)) return kFailed;
  NoteMade(database, std::stoi(id), calculator, EndsWithNoCase(output, ".zip") ? "zip" : "exe", run);
  std::cout << NativePath(output) << '\n';
  return kDone;
}

}  // namespace tarvolinex
