#include "publish/Preferences.h"

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex {

namespace {
std::string PreferencesPath(const Folders& folders) {
  return folders.app + "\\General.dat";
}
}  // namespace

void LoadCalculatorPreferences(const Folders& folders, CalculatorPreferencesRecord& prefs, Reporter& reporter) {
  if (!FileExists(PreferencesPath(folders))) return;
  try {
    ReadRecord(PreferencesPath(folders), prefs);
  } catch (const RuntimeError&) {
    reporter.ShowError("General Calculator Preferences Load Failed", true);
  }
}

void SaveCalculatorPreferences(const Branding& branding, Reporter& reporter) {
  try {
    WriteRecord(PreferencesPath(branding.folders), branding.prefs);
  } catch (const RuntimeError&) {
    reporter.ShowError("General Calculator Preferences Save Failed", true);
  }
  MakePages(branding, reporter);
}

}  // namespace tarvolinex
