// The forms that calculators can carry, and each supplier's choice of them.
#pragma once

#include <string>

#include "controls/Controls.h"

namespace tarvolinex {

// The page file of a form.
std::string FormPagePath(int formId);

// Fills the list with the available forms that have a page file; none is ticked.
void LoadFormsList(ListView& list);

// Ticks, in the main window's forms list, exactly the forms linked to the supplier (0 for the default supplier).
void LoadSupplierFormLinks(int supplierId);

// Replaces the supplier's links by the ticked forms. The default supplier's (0) only when the user changed ticks.
void SaveSupplierFormLinks(int supplierId);

}  // namespace tarvolinex
