#include <iostream>
#include <iterator>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Limits.h"
#include "core/RecordJson.h"
#include "publish/Preferences.h"

namespace tarvolinex {

int RunPreferences(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 1);
  if (parsed.Words() != std::vector<std::string>{"write"}) throw UsageError{"expected \"write\""};
  const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
  ChangeRecord(run.CalculatorPreferences, ParseJsonObject(text));
  CheckLimits(run.CalculatorPreferences);
  SaveCalculatorPreferences({run.Places(), run.CalculatorPreferences, run.CustomerReference}, run);
  return kDone;
}

}  // namespace tarvolinex
