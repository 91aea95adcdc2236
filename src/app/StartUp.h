// The start-up sequence.
#pragma once

#include <functional>

#include "cli/CommandLine.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

// Folders, delivered files, web settings and preferences; shared by the window and the commands.
void PrepareRun(const ProgramOptions& options, Run& run);

// The splash window, drawn by whoever draws windows.
struct Splash {
  std::function<void()> show, bringToFront;
};

// Brings the window up: folders and settings, splash, the window's load, and on a first run the organisation's details.
// Throws ProgramEnded when the program cannot go on; what failed has then been reported.
void StartWindow(const ProgramOptions& options, FrmMain& form, const Splash& splash);

}  // namespace tarvolinex
