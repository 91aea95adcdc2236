#include "app/Program.h"

#include <optional>

#include "app/StartUp.h"
#include "cli/CommandLine.h"
#include "controls/TerminalDesktop.h"
#include "core/AppFolder.h"
#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex {

int RunWithoutWindow(const ProgramOptions& options) {
  TerminalDesktop desktop(options.yes);
  UseDesktop(&desktop);
  int status = kFailed;
  try {
    std::optional<FolderLock> alone;
    if (CommandWritesFolders(options.command)) {
      ChooseAppFolder(options.appFolder);
      alone.emplace(AppFolder, std::chrono::seconds(30));
    }
    if (CommandUsesFolders(options.command)) PrepareRun(options);
    status = RunCommand(options);
  } catch (const ProgramEnded& ended) {
    status = ended.status;
  }
  TheStore.reset();
  UseDesktop(nullptr);
  return status;
}

}  // namespace tarvolinex
