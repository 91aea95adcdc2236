// Windows profile files ("INI"): [section] lines and key=value lines, in the desktop's 8-bit code page; a value that it
// cannot hold is UTF-8 behind a byte order mark.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvolinex {

// Bytes of the buffer that a value is read into, its terminator included.
inline constexpr int kProfileBuffer = 255;

// The value of the first such key in the first such section, case-blind, without blanks around it and without one
// pair of quotes around it, cut to buffer - 1 characters; the default when the file, the section or the key is
// missing. Lines that make no sense are passed over. A file that cannot be read throws RuntimeError.
std::string GetProfileString(std::string_view path, std::string_view section, std::string_view key,
                             std::string_view defaultValue, int buffer = kProfileBuffer);

// The names of the file's sections in their order; none when there is no such file.
std::vector<std::string> GetProfileSections(std::string_view path);

// Takes the first such section out, with everything up to the next one. Throws RuntimeError when the file cannot be
// written; no such section or file is no error.
void RemoveProfileSection(std::string_view path, std::string_view section);

// Replaces or adds the one key and leaves every other byte as it is. A line break in the value ends it.
// Throws RuntimeError when the file cannot be written.
void WriteProfileString(std::string_view path, std::string_view section, std::string_view key, std::string_view value);

// Key and value.
using ProfileEntry = std::pair<std::string, std::string>;

// The same for several keys of the section, which are written at once or not at all.
void WriteProfileStrings(std::string_view path, std::string_view section, const std::vector<ProfileEntry>& entries);

}  // namespace tarvolinex
