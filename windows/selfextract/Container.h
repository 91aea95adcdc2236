// Where the settings and the archive lie in the install file; docs/formats.md describes it.
#pragma once

#include <cstdint>
#include <string>

#include "system/Files.h"

namespace tarvolinex::windows {

struct Container {
  std::wstring title;              // of the windows
  std::wstring command;            // name of the unpacked file that is started; empty: none
  std::uint64_t archive = 0;       // offset of the archive in the file
  std::uint64_t archive_size = 0;  // bytes
};

// Finds them from the program's own headers, so whatever a signature appends behind them does no harm. A file without
// them, one that is cut short and settings that name anything but a plain file in "%t" are failures.
Container ReadContainer(const InputFile& file);

}  // namespace tarvolinex::windows
