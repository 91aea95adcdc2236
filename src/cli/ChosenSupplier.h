// The supplier of the database that a command names.
#pragma once

#include <string>

#include "cli/Commands.h"

namespace tarvolinex {

// A whole number without a sign.
bool IsSupplierId(const std::string& text);

// The value of "--supplier". Throws UsageError when it is missing or no ID.
std::string SupplierIdOf(const Arguments& arguments);

// Opens the database and reads the supplier into `SupplierCalcSettings` and `CurrentSupplierId`. Throws RuntimeError
// when there is no database, or no such supplier in it.
void ChooseSupplier(const std::string& id);
// The same for a command that publishes: its calculator gets the icon that the preferences choose.
void ChooseSupplierToPublish(const std::string& id);

}  // namespace tarvolinex
