#include "core/Settings.h"

#include <algorithm>
#include <random>

#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ProfileFile.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

std::string IniPath(std::string_view baseName) {
  return AppFolder + "\\" + std::string(baseName) + ".INI";
}

// The key's value, or the default when the key is missing or blank.
std::string OptionOr(std::string_view key, std::string_view defaultValue) {
  std::string value = ReadIni("General", "OPTIONS", key, defaultValue);
  return value.empty() ? std::string(defaultValue) : value;
}

bool IsWholeNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string ReadIni(std::string_view baseName, std::string_view section, std::string_view key,
                    std::string_view defaultValue) {
  return std::string(Trim(GetProfileString(IniPath(baseName), section, key, defaultValue)));
}

void WriteIni(std::string_view baseName, std::string_view section, std::string_view key, std::string_view value) {
  try {
    WriteProfileString(IniPath(baseName), section, key, value);
  } catch (const RuntimeError&) {
    // The settings are a convenience; losing one must not stop the work in hand.
  }
}

void LoadWebSettings() {
  WebServer =
      FileExists(AppFolder + "\\Tarvolinex.ini") ? ReadIni("Tarvolinex", "WEB", "www", "") : TARVOLINEX_WEB_SERVER;
  CustomerReference = ReadIni("Tarvolinex", "WEB", "ref", "");
  if (IsWholeNumber(CustomerReference)) return;
  try {
    CustomerReference = ReadIni("General", "WEB", "ref", "");
  } catch (const RuntimeError&) {
    CustomerReference.clear();  // the window reports a General.INI that cannot be read; another one is for this run
  }
  if (IsWholeNumber(CustomerReference)) return;
  std::random_device random;
  CustomerReference = std::to_string(std::uniform_int_distribution<int>(100000, 999999999)(random));
  WriteIni("General", "WEB", "ref", CustomerReference);
}

std::string RememberedDataFolder() {
  if (!ChosenDataFolder.empty()) return ChosenDataFolder;
  std::string folder = AppFolder;
  try {
    folder = OptionOr("DATABASEPATH", AppFolder);
  } catch (const RuntimeError&) {
    // Reported where the window reads its settings.
  }
  // A value is cut; the app folder's own path is known whole.
  return folder == FirstCharacters(AppFolder, kProfileBuffer - 1) ? AppFolder : folder;
}

void LoadIniFileValues() {
  MainWindow& form = MainForm();
  try {
    // Before the path, which chooses its own type: a remembered ".zip" stays one.
    form.send.cmboFileType.SetListIndex(0);
    form.send.TxtCalcCreate.SetText(OptionOr("LASTINSTALLFILE", "C:\\CalcInstall.exe"));
    DataFolder = RememberedDataFolder();
    form.send.TxtEmail(0).SetText(OptionOr("LASTSUBJECT", ""));
    form.send.TxtEmail(1).SetText(ReplaceAll(OptionOr("LASTMSG", ""), "|+|", "\r\n"));
  } catch (const RuntimeError&) {
    ShowError("Initialisation File Loading Error");
  }
}

}  // namespace tarvolinex
