// The start-up sequence.
#pragma once

#include "cli/CommandLine.h"

namespace tarvolinex {

// Folders, delivered files, web settings and preferences; shared by the window and the commands.
void PrepareRun(const ProgramOptions& options);

}  // namespace tarvolinex
