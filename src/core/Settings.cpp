#include "core/Settings.h"

#include <algorithm>
#include <random>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ProfileFile.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

std::string IniPath(const std::string& appFolder, std::string_view baseName) {
  return appFolder + "\\" + std::string(baseName) + ".INI";
}

bool IsWholeNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string ReadIni(const std::string& appFolder, std::string_view baseName, std::string_view section,
                    std::string_view key, std::string_view defaultValue) {
  return std::string(Trim(GetProfileString(IniPath(appFolder, baseName), section, key, defaultValue)));
}

void WriteIni(const std::string& appFolder, std::string_view baseName, std::string_view section, std::string_view key,
              std::string_view value) {
  try {
    WriteProfileString(IniPath(appFolder, baseName), section, key, value);
  } catch (const RuntimeError&) {
    // The settings are a convenience; losing one must not stop the work in hand.
  }
}

std::string ReadOption(const std::string& appFolder, std::string_view key, std::string_view defaultValue) {
  std::string value = ReadIni(appFolder, "General", "OPTIONS", key, defaultValue);
  return value.empty() ? std::string(defaultValue) : value;
}

void LoadWebSettings(Run& run) {
  const auto setting = [&](const char* key) { return ReadIni(run.AppFolder, "Tarvolinex", "WEB", key, ""); };
  std::string& reference = run.CustomerReference;
  run.WebSecret.clear();
  run.WebServer = FileExists(run.AppFolder + "\\Tarvolinex.ini") ? WithoutSecret(setting("www"), run.WebSecret)
                                                                 : TARVOLINEX_WEB_SERVER;
  run.WebSecretCommand = setting("SecretCommand");
  run.WebCaFile = setting("CaFile");
  reference = setting("ref");
  if (IsWholeNumber(reference)) return;
  try {
    reference = ReadIni(run.AppFolder, "General", "WEB", "ref", "");
  } catch (const RuntimeError&) {
    reference.clear();  // the window reports a General.INI that cannot be read; another one is for this run
  }
  if (IsWholeNumber(reference)) return;
  std::random_device random;
  reference = std::to_string(std::uniform_int_distribution<int>(100000, 999999999)(random));
  WriteIni(run.AppFolder, "General", "WEB", "ref", reference);
}

WebAccount OwnWebAccount(const Run& run) {
  return {run.WebServer, run.CustomerReference, run.WebSecret, run.WebSecretCommand, run.WebCaFile};
}

std::string RememberedDataFolder(const Run& run) {
  if (!run.ChosenDataFolder.empty()) return run.ChosenDataFolder;
  const std::string& app = run.AppFolder;
  std::string folder = app;
  try {
    folder = ReadOption(app, "DATABASEPATH", app);
  } catch (const RuntimeError&) {
    // Reported where the window reads its settings.
  }
  // A value is cut; the app folder's own path is known whole.
  return folder == FirstCharacters(app, kProfileBuffer - 1) ? app : folder;
}

}  // namespace tarvolinex
