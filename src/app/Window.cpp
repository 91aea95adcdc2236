#include <iostream>

#include "app/Program.h"
#include "app/StartUp.h"
#include "core/ProgramFiles.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "qt/QtProgram.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

int RunForm(QtProgram& program, const ProgramOptions& options) {
  Run run;
  FrmMain form(run);
  try {
    StartWindow(options, form, {[&] { program.ShowSplash(); }, [&] { program.BringSplashToFront(); }});
  } catch (const ProgramEnded& ended) {
    return ended.status;
  }
  return program.Run();
}

}  // namespace

int RunWindow(int argc, char** argv, const ProgramOptions& options) {
  if (!QtProgram::CanShowWindows()) {
    std::cerr << "tarvolinex: there is no display to show the window on. \"tarvolinex --help\" lists the commands that "
                 "need none.\n";
    return kFailed;
  }
  // The commands stay English: scripts read what they say.
  UseTranslations(DeliveredFolder() + "\\locale");
  QtProgram program(argc, argv, VersionText());
  UseDesktop(&program.TheDesktop());
  int status = kFailed;
  try {
    const FolderLock lock(ChooseAppFolder(options.appFolder));
    status = RunForm(program, options);
  } catch (const RuntimeError& failure) {
    std::cerr << "tarvolinex: " << failure.Description() << '\n';
    TheDesktop().MessageBox(failure.Description(), "Tarvolinex", BoxButtons::Ok, BoxIcon::Critical);
  }
  UseDesktop(nullptr);
  return status;
}

}  // namespace tarvolinex
