// Whole databases: copied from one place to another, and looked through.
#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "store/DatabaseCheck.h"
#include "store/DatabaseCopy.h"

namespace tarvolinex {

namespace {

bool IsConnectionString(const std::string& text) {
  return !ValueIn(text, "driver").empty() || !FileIn(text).empty();
}

// A word of the command, a file or a connection string, as the latter.
std::string ConnectionStringOf(const std::string& word) {
  return IsConnectionString(word) ? word : "dbq=" + WholePath(word);
}

int RunCopy(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--from", "--to"}, {}, 0);
  if (!parsed.Has("--from") || !parsed.Has("--to")) throw UsageError{"copy needs --from and --to"};
  const std::string source = ConnectionStringOf(parsed.Value("--from")),
                    target = ConnectionStringOf(parsed.Value("--to"));
  std::string shown;
  const CopyProgress progress = [&](int percent, const std::string& table) {
    const std::string line = table + " " + std::to_string(percent) + " %";
    if (line != shown) std::cerr << line << '\n';
    shown = line;
  };
  CopyOffice(source, target, progress);
  std::cout << DatabaseName(target) << '\n';
  return kDone;
}

int RunCheck(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 1);
  Database database(run);
  if (parsed.Words().empty()) {
    if (!OpenDatabaseForCommand(run, database)) return kFailed;
  } else {
    const std::string text = ConnectionStringOf(parsed.Words().front()), path = FileIn(text);
    const auto name = path.find_last_of("/\\");
    database.Open(IsPostgres(text) || name == std::string::npos ? run.DataFolder : path.substr(0, name), text);
  }
  const auto found = CheckDatabase(database);
  for (const std::string& line : found) std::cout << line << '\n';
  return found.empty() ? kDone : kFailed;
}

}  // namespace

int RunDatabase(Run& run, const std::vector<std::string>& arguments) {
  const std::string what = arguments.empty() ? "" : arguments.front();
  const std::vector<std::string> rest(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
  if (what == "copy") return RunCopy(rest);
  if (what == "check") return RunCheck(run, rest);
  throw UsageError{"expected copy or check"};
}

}  // namespace tarvolinex
