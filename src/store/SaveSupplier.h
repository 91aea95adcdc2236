// The text of a rate column in its field, and the three lists of the statements that store a supplier.
#pragma once

#include <string>

#include "platform/data/Database.h"

namespace tarvolinex {

// The shown supplier's row, its tooltip and the window's title take the name of the name field.
void ShowSupplierName();

// Two decimals where they hold the whole rate, every digit otherwise; Null is empty, a text that is no number itself.
std::string RateFieldText(const Value& value);

// Whether another program has stored a text that is no number.
bool IsNoNumber(const Value& value);

// Remembers the fields as `LoadedSupplierFields`: what they show now and what the record set holds for them.
void RememberLoadedFields(const Recordset& records);

// "A = 'x' ,B =YES,", "A,B," and "'x' ,YES,": the fields of the main window in control order. Each list ends with a
// comma. The assignments are those of the fields that were edited, the other two lists hold all; a field that was not
// edited has the value as it is stored.
struct SupplierFieldLists {
  std::string assignments, columns, values;
};
// asSupplier false: only the fields that belong to the default supplier.
SupplierFieldLists CollectSupplierFields(bool asSupplier);

}  // namespace tarvolinex
