// The two ways of running the program.
#pragma once

#include "cli/CommandLine.h"

namespace tarvolinex {

// Both return the exit status.
int RunWithoutWindow(const ProgramOptions& options);
int RunWindow(int argc, char** argv, const ProgramOptions& options);

}  // namespace tarvolinex
