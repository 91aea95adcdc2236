// The organisation's preferences as a file and on the window.
#pragma once

namespace tarvolinex {

// Reads "General.dat" into `CalculatorPreferences` when the file exists. A failure is a fatal report.
void LoadCalculatorPreferences();

// Writes `CalculatorPreferences` to "General.dat" and applies the captions to the main window. A failure is a fatal
// report.
void SaveCalculatorPreferences();

}  // namespace tarvolinex
