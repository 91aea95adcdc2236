// The program's statements as SQLite reads them.
#pragma once

#include <string>
#include <string_view>

#include "platform/data/Values.h"

namespace tarvolinex {

// Name of the case-blind order that SqliteText gives to ORDER BY.
inline constexpr const char* kCaseBlindOrder = "CASEBLIND";

// Outside quotes: YES and TRUE become 1, NO and FALSE become 0 (in any case, not as part of another word), and each
// column of an ORDER BY is ordered without regard to case.
std::string SqliteText(std::string_view statement);

// What makes the table, unless there is one. The declared types are what a record set goes by.
std::string SqliteTable(const TableDesign& design);

}  // namespace tarvolinex
