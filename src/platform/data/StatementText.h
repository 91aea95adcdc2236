// The program's statements as the database behind it reads them.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// Name of the case-blind order that TranslateStatement gives to ORDER BY.
inline constexpr const char* kCaseBlindOrder = "CASEBLIND";

// Outside quotes: YES and TRUE become 1, NO and FALSE become 0 (in any case, not as part of another word), and each
// column of an ORDER BY is ordered without regard to case.
std::string TranslateStatement(std::string_view statement);

}  // namespace tarvolinex
