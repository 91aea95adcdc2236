#include "ui/main/MainMenus.h"

#include "platform/text/Translation.h"

namespace tarvolinex {

MainMenus::MainMenus(Window& window)
    : MnuFile(window, "MnuFile", "", Tr("&File")),
      MnuOpen(window, "MnuOpen", "MnuFile", Tr("Open <SUPPLIER> Database..."), "Ctrl+O"),
      MnuCreate(window, "MnuCreate", "MnuFile", Tr("Create New <SUPPLIER> Database...")),
      MnuShared(window, "MnuShared", "MnuFile", Tr("Shared &Database...")),
      MnuQuotes(window, "MnuQuotes", "MnuFile", Tr("&Quotes..."), "Ctrl+Shift+Q"),
      MnuImport(window, "MnuImport", "MnuFile", Tr("&Import...")),
      MnuExportSuppliers(window, "MnuExportSuppliers", "MnuFile", Tr("&Export <SUPPLIER>s...")),
      MnuExportContacts(window, "MnuExportContacts", "MnuFile", Tr("E&xport Contacts...")),
      MnuBatch(window, "MnuBatch", "MnuFile", Tr("&All <SUPPLIER>s at Once..."), "Ctrl+Shift+A"),
      MnuSent(window, "MnuSent", "MnuFile", Tr("&Sent..."), "Ctrl+Shift+S"),
      MnuExit(window, "MnuExit", "MnuFile", Tr("Exit"), "Ctrl+Q"),
      MnuEdit(window, "MnuEdit", "", Tr("Edi&t")),
      MnuAdd(window, "MnuAdd", "MnuEdit", Tr("&Add New <SUPPLIER>"), "Ctrl+N"),
      MnuRemove(window, "MnuRemove", "MnuEdit", Tr("R&emove <SUPPLIER>")),
      MnuSaveDefault(window, "MnuSaveDefault", "MnuEdit", Tr("Save <SUPPLIER> as default")),
      MnuRefresh(window, "MnuRefresh", "MnuEdit", Tr("&Refresh <SUPPLIER> List"), "F5"),
      MnuSearch(window, "MnuSearch", "MnuEdit", Tr("&Search For Contact..."), "Ctrl+F"),
      MnuCopyRates(window, "MnuCopyRates", "MnuEdit", Tr("&Copy Rate Card...")),
      MnuChangeRates(window, "MnuChangeRates", "MnuEdit", Tr("Change Ra&tes...")),
      MnuUndoRemove(window, "MnuUndoRemove", "MnuEdit", Tr("&Undo Remove <SUPPLIER>")),
      MnuOptions(window, "MnuOptions", "", Tr("&Options")),
      MnuPreferences(window, "MnuPreferences", "MnuOptions", Tr("Options and Preferences...")),
      MnuDetails(window, "MnuDetails", "MnuOptions", Tr("Your Details...")),
      MnuPreview(window, "MnuPreview", "MnuOptions", Tr("View <CALCNAME>")),
      MnuMail(window, "MnuMail", "MnuOptions", Tr("&E-mail Settings...")),
      MnuHelp(window, "MnuHelp", "", Tr("&Help")),
      MnuHelpPage(window, "MnuHelpPage", "MnuHelp", Tr("&Help"), "F1"),
      MnuUpgrades(window, "MnuUpgrades", "MnuHelp", Tr("&Check for Tarvolinex upgrades...")),
      MnuAbout(window, "MnuAbout", "MnuHelp", Tr("&About")) {}

}  // namespace tarvolinex
