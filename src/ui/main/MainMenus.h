// The menus of the main window.
#pragma once

#include "controls/Controls.h"

namespace tarvolinex {

struct MainMenus {
  explicit MainMenus(Window& window);
  Menu MnuFile, MnuOpen, MnuCreate, MnuShared, MnuQuotes, MnuImport, MnuExportSuppliers, MnuExportContacts, MnuBatch,
      MnuSent, MnuExit;
  Menu MnuEdit, MnuAdd, MnuRemove, MnuSaveDefault, MnuRefresh, MnuSearch, MnuCopyRates, MnuChangeRates, MnuUndoRemove;
  Menu MnuOptions, MnuPreferences, MnuDetails, MnuPreview, MnuMail;
  Menu MnuHelp, MnuHelpPage, MnuUpgrades, MnuAbout;
};

}  // namespace tarvolinex
