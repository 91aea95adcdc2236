// Databases of the kind that offices had in the 1990s and later, read by the programs of mdbtools.
#pragma once

#include <string>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

// Plans what the file's suppliers, default supplier, contacts, forms and form links would change; each row's line is
// that of its own table, whose name begins its detail. The file's IDs are its own: a supplier, form or contact that has
// the ID of another one here, and is not found by its name, gets a new ID, and what belongs to it follows. Throws
// RuntimeError when mdbtools is missing or cannot read the file.
ImportPlan PlanOldDatabase(Database& database, const std::string& path);

}  // namespace tarvolinex
