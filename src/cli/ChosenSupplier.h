// The supplier of the database that a command names.
#pragma once

#include <string>

namespace tarvolinex {

// A whole number without a sign.
bool IsSupplierId(const std::string& text);

// Opens the database and reads the supplier into `SupplierCalcSettings` and `CurrentSupplierId`. Throws RuntimeError
// when there is no database, or no such supplier in it.
void ChooseSupplier(const std::string& id);

}  // namespace tarvolinex
