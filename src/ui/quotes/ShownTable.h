// What windows do with a table that they show: copy it, save it.
#pragma once

#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "platform/files/Spreadsheet.h"

namespace tarvolinex {

// The heading and every row, for a text with tabs and, beside it, as a table that a mail or document takes.
void CopyTable(const ListView& list);

// Asks for a name, proposing one, and writes CSV or a spreadsheet, as the name ends. An existing file is replaced only
// after a question. rows: CSV. Returns whether it was written; a failure is reported.
bool SaveTable(Run& run, const std::string& title, const std::string& proposedName,
               const std::vector<SheetColumn>& columns, const std::string& rows);

}  // namespace tarvolinex
