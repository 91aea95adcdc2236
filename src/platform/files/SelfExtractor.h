// Makes a self-extracting Windows program of a finished archive; docs/formats.md describes what comes out.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

struct SelfExtractorSettings {
  std::string title;          // of its windows
  std::string folder = "%t";  // a new folder in the user's temporary folder; the module takes no other
  std::string command;        // what is started after unpacking: "%t\setup.exe"; empty starts nothing
};

// Writes `target`, whole or not at all: the module, with the icon's 32 by 32 picture in place of its own, the settings
// and the archive, whose offsets are counted anew from the start of the file, so that it stays a correct archive.
// An empty `icon` keeps the module's. The icon must hold a picture of 32 by 32 dots in 16 colours (744 bytes), which is
// what it becomes. Throws RuntimeError naming the file that cannot be read, used or written: kBadPicture for the icon,
// kBadArchive for the module and the archive (which must be smaller than 4 GB and without a comment).
void WriteSelfExtractor(const SelfExtractorSettings& settings, std::string_view module, std::string_view icon,
                        std::string_view archive, std::string_view target);

// Whether the bytes begin with the module as WriteSelfExtractor writes it, with whatever icon. Throws RuntimeError when
// the module cannot be read or used.
bool BeginsWithModule(std::string_view bytes, std::string_view module);

// Whether the file can be read and is an icon that WriteSelfExtractor takes.
bool IsInstallIcon(std::string_view path);

}  // namespace tarvolinex
