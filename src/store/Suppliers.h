// Supplier records: the supplier list, and the main window's fields bound to columns by their tags.
#pragma once

#include <string>
#include <string_view>

#include "platform/Controls.h"
#include "platform/Database.h"

namespace tarvolinex {

// Refills the supplier list and selects the newest supplier (the one with the highest ID) or the first; the selected
// supplier is not loaded.
void LoadSupplierList(bool selectNewest);

// Loads the supplier whose row is selected into the main window; the previous one's edits are saved first.
void LoadSupplier();

// Puts one column into one control when the control's tag names the record set; Null when clearOnly is set or the set
// is at its end. A column that the set lacks leaves the control as it was.
void BindFieldToControl(const Recordset& recordSet, Control& control, std::string_view recordSetName, bool clearOnly);

// asSupplier true: stores the shown supplier when it was edited. False: stores its fields as the default supplier.
void SaveSupplier(bool asSupplier);

// Stores the shown supplier, its form links and the shown contact, together or not at all, when there are edits and no
// load is in progress.
void SavePendingChanges();

// Puts the default supplier's values and form links into the fields.
void LoadDefaultSupplier();

// Adds and selects a row for a new supplier, seeded from the default supplier.
void NewSupplier();

// Deletes the shown supplier with its links and contacts, after a question. The last one stays.
void RemoveSupplier();

// Puts the supplier that was removed last in this run back, with its contacts and links, and selects it. Nothing when
// none was removed from this database.
void UndoRemoveSupplier();

// The number in a row's key, "ID12".
int IdOfKey(std::string_view key);

}  // namespace tarvolinex
