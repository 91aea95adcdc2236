// The tables of the database as files that spreadsheets open and that can be imported again.
#pragma once

#include <string>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

// path: empty = standard output; a name that ends in ".xlsx" gives a spreadsheet, any other CSV: UTF-8 with its mark,
// lines that end in CR LF, texts that a spreadsheet would run as formulas guarded. Appears whole or not at all. Throws
// RuntimeError.
void ExportTable(Database& database, ImportKind kind, const std::string& path);

}  // namespace tarvolinex
