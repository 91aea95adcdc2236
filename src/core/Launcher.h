// Hands documents to the desktop.
#pragma once

#include <string_view>

#include "core/Run.h"

namespace tarvolinex {

// Opens a file, program or address with the program associated with it, or with its editor. Blanks belong to the
// path. Without an associated editor the user chooses a program. Reports a failure; returns the desktop's result,
// 32 or more on success.
int LaunchDocument(Reporter& reporter, std::string_view command, bool edit = false);

// Reports a result of the desktop's that is no success.
void ReportLaunch(Reporter& reporter, int result);

// Topic 1 is "options", 2 "options_Forms", 4 "sendsub", any other "main".
void ShowHelpPage(Run& run, int topic);

}  // namespace tarvolinex
