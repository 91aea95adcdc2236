// Supplier records: the supplier list, and the main window's fields bound to columns by their tags.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "core/Globals.h"
#include "platform/data/Database.h"
#include "store/Statements.h"

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
// load is in progress. A supplier that somebody else has removed is reported and left; nothing is then stored.
void SavePendingChanges();

// Whether the shown supplier is a stored one, and nothing of it has been edited since it was loaded.
bool ReadsAsLoaded();

// Whether the database holds the supplier at this moment.
bool SupplierIsStored(int supplierId);

// Puts the default supplier's values and form links into the fields.
void LoadDefaultSupplier();

// Adds and selects a row for a new supplier, seeded from the default supplier.
void NewSupplier();

// Deletes the shown supplier with its links and contacts, after a question. The last one stays.
void RemoveSupplier();

// Puts what was removed last in this run back, a supplier with its contacts and links or one contact, and selects the
// supplier. Returns the contact to show, 0 for none. Nothing when nothing was removed from this database.
int UndoRemove();

// Remembers what has just been removed and offers to put it back; without statements nothing is offered.
void OfferUndo(RemovedRows removed);

// A record set's row as a column list and a value list, to be inserted again under its own ID.
std::vector<Filling> RowLists(const Recordset& row);

// The number in a row's key, "ID12".
int IdOfKey(std::string_view key);

}  // namespace tarvolinex
