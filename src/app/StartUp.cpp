#include "app/StartUp.h"

#include "core/AppFolder.h"
#include "core/Globals.h"
#include "core/Settings.h"
#include "publish/Preferences.h"

namespace tarvolinex {

void PrepareRun(const ProgramOptions& options) {
  ChooseAppFolder(options.appFolder);
  DataFolder = options.dataFolder.empty() ? RememberedDataFolder() : options.dataFolder;
  FillAppFolder();
  LoadWebSettings();
  LoadCalculatorPreferences();
}

}  // namespace tarvolinex
