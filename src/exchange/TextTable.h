// Tables in text files of any program, and how the cells of ours are written for spreadsheets.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

struct TextRow {
  long line = 0;  // on which it begins, from 1
  std::vector<std::string> cells;
};

// The rows with a cell that is not empty. UTF-8, UTF-16 with its mark, or else Windows-1252; commas, semicolons or tabs
// between the cells, whichever the first row has most of; any line ends. A cell may stand in quotes, with line breaks
// and separators in it and quotes doubled. Throws RuntimeError with `name` and the line for a quote that is not closed,
// and for a spreadsheet's own file.
std::vector<TextRow> ReadTextTable(std::string_view bytes, const std::string& name);

// A spreadsheet would run a text that begins with "=", "+", "-", "@", a tab or a line end (after blanks) as a formula;
// an apostrophe before it keeps it a text. Taking it off gives every text back as it was.
std::string GuardedCell(std::string_view text);
std::string_view UnguardedCell(std::string_view cell);

}  // namespace tarvolinex
