// The organisation's preferences as a file.
#pragma once

#include "core/Folders.h"
#include "core/Records.h"
#include "core/Reports.h"
#include "publish/Template.h"

namespace tarvolinex {

// Reads the app folder's "General.dat" into the record when the file exists. A failure is a fatal report.
void LoadCalculatorPreferences(const Folders& folders, CalculatorPreferencesRecord& prefs, Reporter& reporter);

// Writes the record to "General.dat" and makes the calculator's two pages anew. A failure to write the record is a
// fatal report.
void SaveCalculatorPreferences(const Branding& branding, Reporter& reporter);

}  // namespace tarvolinex
