// The published calculator: a folder of plain files, built anew for every preview and every send.
#pragma once

#include <vector>

#include "core/Records.h"

namespace tarvolinex {

// Builds `CalculatorFolder` for the current supplier (`CurrentSupplierId`, `SupplierCalcSettings`): both records, both
// pages, logo, background, the linked form pages, and "calcdata.txt". A linked form whose page is missing or
// empty, or whose link name no file can have, is left out and named in a warning. A failure is a fatal report ("Failed
// setting up calculator").
void BuildCalculatorFolder();

// Whether there is a supplier to publish, with rates that are numbers; tells what is in the way.
bool MayPublish();

// The forms linked to a supplier, in the order in which they are published.
std::vector<int> LinkedFormIds(int supplierId);

// False when limits of the preferences contradict each other; a box has then said which. Whoever stores preferences or
// hands a calculator out asks first.
bool CanPublish(const CalculatorPreferencesRecord& prefs);

// Builds the folder and opens its test page, when the preferences' limits allow it.
void PreviewCalculator();

// The chosen install icon's file in the data folder; "" when none is chosen or there is none of that name.
std::string InstallIconPath();

// Copies the chosen install icon as below where there is one, and says nothing where there is none. Throws
// RuntimeError.
void BringInstallIcon();

// Copies the install icon that the preferences choose to the folder's "calc.ico"; warns when none is chosen. A failure
// is a fatal report.
void CopyInstallIcon(const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
