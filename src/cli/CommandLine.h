// The program's commands for a run without a window.
#pragma once

#include <string>
#include <vector>

#include "core/Run.h"

namespace tarvolinex {

// What stands before the command.
struct ProgramOptions {
  std::string appFolder, dataFolder;
  std::string database;                // a connection string
  std::string command;                 // empty = the window
  std::vector<std::string> arguments;  // of the command
  bool help = false, version = false, yes = false;
  std::string error;  // a usage error; empty = none
};

ProgramOptions ParseProgramOptions(const std::vector<std::string>& arguments);

// Usage of the program, or of one command; empty for a command that does not exist.
std::string UsageText();
std::string UsageText(const std::string& command);

// False for a command that works on the files that it is given and nothing else.
bool CommandUsesFolders(const std::string& command);

// Whether it writes into the app folder; one of them at a time may work there.
bool WritesFolders(const ProgramOptions& options);

// Whether it only says what it would do. In an app folder that has been used before it then writes nothing.
bool IsDryRun(const ProgramOptions& options);

// The only one of the app folder's delivered files that the command reads; empty = it may read all of them.
std::string_view OnlyFileOfCommand(const std::string& command);

// Exit status of a run.
inline constexpr int kDone = 0, kFailed = 1, kUsageError = 2;

// Gives standard output what has been printed. False, after a message, when it does not take all of it.
bool FlushOutput();

// Runs the command. REQUIRES: options.command exists, the desktop is chosen and, where it uses them, the run's folders
// are set.
int RunCommand(const ProgramOptions& options, Run& run);

}  // namespace tarvolinex
