// The supplier of the database that a command names.
#pragma once

#include <string>

#include "cli/Commands.h"
#include "publish/CalculatorFolder.h"
#include "store/Database.h"
#include "store/KeptQuotes.h"
#include "store/Suppliers.h"

namespace tarvolinex {

// A whole number without a sign.
bool IsIdOrNumber(const std::string& text);

// The value of "--supplier". Throws UsageError when it is missing or no ID.
std::string SupplierIdOf(const Arguments& arguments);

// Unpacks and opens the data folder's database, without asking and without remembering the folder. Returns false, after
// a report, when there is none.
bool OpenDatabaseForCommand(Run& run, Database& database);

// Opens the database and reads the supplier. Throws RuntimeError when there is no database, no such supplier in it, or
// its rates are no numbers.
SupplierRow ChooseSupplier(Run& run, Database& database, const std::string& id);

// The same for a command that publishes: its calculator, which gets the icon that the preferences choose.
Publication ChooseCalculator(Run& run, Database& database, const std::string& id);

// Opens the database for the quotes that were kept. Throws RuntimeError when there is none.
void OpenQuotes(Run& run, Database& database);
// The quote whose number is the command's plain word. Throws UsageError without one, RuntimeError when there is none.
KeptQuote ChooseQuote(Run& run, const Arguments& arguments);

// Whose calculators this run publishes.
Branding OwnBranding(const Run& run);

}  // namespace tarvolinex
