// The INI files in the app folder.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// One key of `AppFolder`\baseName.INI, trimmed and cut to 254 characters. A missing key gives the default, a key whose
// value is blank an empty text whatever the default. Throws RuntimeError when the file cannot be read.
std::string ReadIni(std::string_view baseName, std::string_view section, std::string_view key,
                    std::string_view defaultValue);

// A failure to write is passed over.
void WriteIni(std::string_view baseName, std::string_view section, std::string_view key, std::string_view value);

// Reads `WebServer` and `CustomerReference`. Without "Tarvolinex.ini" the web server is the built-in one; with it, it
// is what the file says, even nothing. A customer reference that no file gives is made once and kept in General.INI.
void LoadWebSettings();

// The four "OPTIONS" keys of General.INI: the install-file box, `DataFolder`, the e-mail subject and message; then the
// first file type. A failure is reported and the load goes on.
void LoadIniFileValues();

// The folder that this run was started with, else as General.INI gives it, else the app folder.
std::string RememberedDataFolder();

}  // namespace tarvolinex
