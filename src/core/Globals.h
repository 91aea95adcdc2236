// The values that live for the whole run. Every one of them is declared here and nowhere else.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/Quote.h"
#include "core/Records.h"
#include "platform/data/Database.h"

namespace tarvolinex {

// Folders, without a trailing separator; a path is built by appending a name that starts with "\".
inline std::string AppFolder;   // the program's folder
inline std::string DataFolder;  // the folder of the database file
// The data folder that this run was started with; empty = the remembered one.
inline std::string ChosenDataFolder;

// The folder that every preview and every send builds anew; ends with "\".
inline std::string CalculatorFolder() {
  return AppFolder + "\\calculator\\";
}

inline std::string WebServer;          // host of the maker's web server
inline std::string CustomerReference;  // a whole number, as text

// Set by every error report, cleared when the main window starts loading; while it is set, closing the main window
// does not save pending edits.
inline bool ErrorShown = false;

inline CalculatorPreferencesRecord CalculatorPreferences;
inline SupplierCalcSettingsRecord SupplierCalcSettings;  // of the supplier that is shown
// Why the shown supplier's rates can neither price nor be published; empty = they can.
inline std::string RateCardFault;

inline QuoteRecord Quote;  // the calculation that the quote panel shows
// How it came about: the mode, and the box that the user changed (-1 for none).
inline int ShownQuoteMode = 0;
inline int ShownQuoteBox = -1;

// The shared connection and record sets. Each record set has one owner that reopens it.
struct Store {
  Connection connection;
  Recordset SupplierRecords, FormRecords, FormLinkRecords, ContactRecords;
};
inline std::unique_ptr<Store> TheStore = std::make_unique<Store>();
inline std::string CopiedDatabase;     // data folder and day of the last daily copy
inline bool DatabaseUnpacked = false;  // this run has put a fresh database in place

// State of the main window that the modules below it share.
inline int CurrentSupplierId = 0;     // 0 while a new supplier is not yet saved
inline int CurrentSupplierIndex = 0;  // row of the supplier list
inline bool SupplierChanged = false;
// What a field of the shown supplier showed when it was loaded, and the stored value as a statement has it. While the
// field still reads the same there is nothing to store, and where all fields are stored the value goes back unrounded.
struct LoadedField {
  std::string text, literal;
};
inline std::map<std::string, LoadedField> LoadedSupplierFields;  // by column
// What was removed last, a supplier or one of its contacts, as the statements that put it back; empty = nothing.
struct RemovedRows {
  int supplier = 0;
  int contact = 0;  // 0 = the supplier itself
  std::vector<std::string> statements;
};
inline RemovedRows Removed;
inline bool FormLinksChanged = false;
inline bool LoadingSupplier = false;  // what changes meanwhile is no edit
inline int CurrentContactId = 0;      // 0 for none or a new contact
inline bool ContactChanged = false;
inline bool ContactListStale = false;  // a contact has been saved since the lists were filled

// How the calculator is sent; each send's dialog sets them anew.
inline int SendType = 0;  // 0 install file attached, 1 zip attached, 2 download link
inline bool SendConfirmed = false;
inline bool IncludeInstructions = false;
inline std::array<std::string, 3> Instructions;  // what each way explains to its readers, with aliases

// While a calculator is packed and sent, and the user's wish to stop that.
inline bool Working = false;
inline bool StopRequested = false;

// Puts every one of them back to its value at the start of a run.
void ResetGlobals();

}  // namespace tarvolinex
