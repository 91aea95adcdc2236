#include "app/Program.h"

#include <optional>

#include "app/StartUp.h"
#include "cli/CommandLine.h"
#include "controls/TerminalDesktop.h"
#include "core/ProgramFiles.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex {

int RunWithoutWindow(const ProgramOptions& options) {
  TerminalDesktop desktop(options.yes);
  UseDesktop(&desktop);
  int status = kFailed;
  try {
    Run run;
    std::optional<FolderLock> alone;
    if (WritesFolders(options)) {
      alone.emplace(ChooseAppFolder(options.appFolder), std::chrono::seconds(30));
    }
    run.KeepsAppFolder = alone.has_value();
    if (CommandUsesFolders(options.command)) PrepareRun(options, run);
    status = RunCommand(options, run);
  } catch (const ProgramEnded& ended) {
    status = ended.status;
  }
  UseDesktop(nullptr);
  return status;
}

}  // namespace tarvolinex
