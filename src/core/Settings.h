// The INI files in the app folder.
#pragma once

#include <string>
#include <string_view>

#include "core/Run.h"
#include "core/WebAccount.h"

namespace tarvolinex {

// One key of baseName.INI in the app folder, trimmed and cut to 254 characters. A missing key gives the default, a key
// whose value is blank an empty text whatever the default. Throws RuntimeError when the file cannot be read.
std::string ReadIni(const std::string& appFolder, std::string_view baseName, std::string_view section,
                    std::string_view key, std::string_view defaultValue);

// A failure to write is passed over.
void WriteIni(const std::string& appFolder, std::string_view baseName, std::string_view section, std::string_view key,
              std::string_view value);

// A key of General.INI's "OPTIONS"; the default when it is missing or blank. Throws RuntimeError as ReadIni.
std::string ReadOption(const std::string& appFolder, std::string_view key, std::string_view defaultValue);

// Reads `WebServer` and `CustomerReference`. Without "Tarvolinex.ini" the web server is the built-in one; with it, it
// is what the file says, even nothing, but for a secret in it, which is kept apart. A customer reference that no file
// gives is made once and kept in General.INI.
void LoadWebSettings(Run& run);
WebAccount OwnWebAccount(const Run& run);

// The folder that this run was started with, else as General.INI gives it, else the app folder.
std::string RememberedDataFolder(const Run& run);

}  // namespace tarvolinex
