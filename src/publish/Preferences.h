// The organisation's preferences as a file and on the window.
#pragma once

#include "core/Records.h"

namespace tarvolinex {

// Reads "General.dat" into `CalculatorPreferences` when the file exists. A failure is a fatal report.
void LoadCalculatorPreferences();

// Writes the record to "General.dat", makes the calculator's two pages anew and applies the captions to the main
// window. A failure to write the record is a fatal report.
void SaveCalculatorPreferences(const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
