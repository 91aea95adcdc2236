#include "publish/Preferences.h"

#include "calc/QuotePanel.h"
#include "calc/RateCard.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "publish/Template.h"

namespace tarvolinex {

namespace {
std::string PreferencesPath() {
  return AppFolder + "\\General.dat";
}
}  // namespace

void LoadCalculatorPreferences() {
  if (!FileExists(PreferencesPath())) return;
  try {
    ReadRecord(PreferencesPath(), CalculatorPreferences);
  } catch (const RuntimeError&) {
    ShowError("General Calculator Preferences Load Failed", true);
  }
}

void SaveCalculatorPreferences(const CalculatorPreferencesRecord& prefs) {
  try {
    WriteRecord(PreferencesPath(), prefs);
  } catch (const RuntimeError&) {
    ShowError("General Calculator Preferences Save Failed", true);
  }
  MakePages(prefs);
  if (!MainFormExists()) return;
  const KeptQuote kept;
  ApplyCaptions(MainForm());
  NameWhatIsLocked();
}

}  // namespace tarvolinex
