// The limits of the preferences against each other.
#pragma once

#include <string>

#include "core/Aliases.h"
#include "core/Records.h"

namespace tarvolinex {

// A sentence that names the first pair of limits between which nothing is left to choose: a minimum above its maximum
// (a minimum of 0 is none), or, where advanced payments are offered, as many of them as the longest term has. Empty
// when there is none.
std::string ContradictoryLimits(const CalculatorPreferencesRecord& prefs, const Words& words);
// The same in the words of the preferences themselves.
std::string ContradictoryLimits(const CalculatorPreferencesRecord& prefs);

// Throws RuntimeError with that sentence when there is one.
void CheckLimits(const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
