// Unpacks the archive of an install file and starts what it holds.
#pragma once

#include <string>
#include <vector>

#include "system/Files.h"

namespace tarvolinex::windows {

struct Options {
  bool silent = false;  // /S: no window and no question; failures go to the standard error handle
  std::wstring folder;  // /D=FOLDER: unpack there and start nothing; empty: into a folder of its own, and start
};

// Understands `/S` and `/D=FOLDER` in any case. A folder with blanks may stand in quotes or run on up to the next word
// that begins with "/". Anything else is a failure; it is reported silently when `/S` came before it.
Options ReadOptions(const std::vector<std::wstring>& arguments);

// Does what the options say with the install file. The whole archive is tested before the first file is written.
// Returns the exit status: that of the started program, 0 when none was started, 2 when the user stopped it.
unsigned long UnpackAndStart(const InputFile& file, const Options& options);

}  // namespace tarvolinex::windows
