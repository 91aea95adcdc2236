// Text and numbers as the program reads and shows them. Text is UTF-8 in memory, Windows-1252 on disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

// Without leading and trailing blanks (spaces only, as record texts are padded).
std::string_view Trim(std::string_view text);

// Lower case for comparing without regard to case: the letters of Windows-1252, everything else unchanged.
std::string FoldCase(std::string_view text);
std::string UpperCase(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);
// -1, 0 or 1 in the order of the folded texts.
int CompareNoCase(std::string_view a, std::string_view b);
bool EndsWithNoCase(std::string_view text, std::string_view end);

// The order in which the texts follow each other byte by byte, as indexes of them; equal ones stay as they stand.
std::vector<std::size_t> OrderOf(const std::vector<std::string>& texts, bool ascending = true);

// Every occurrence, in one pass: what was put in is not searched again. An empty `from` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);
std::string ReplaceAllNoCase(std::string_view text, std::string_view from, std::string_view to);

// "a;;b" gives "a", "", "b"; an empty text gives one empty part.
std::vector<std::string_view> Split(std::string_view text, char separator);

// The first n characters (not bytes) of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, int n);

// The number at the start of a text, 0 when there is none: blanks, a sign, digits, a decimal point. Well-formed
// thousands separators belong to the number ("12,345.67" is twelve thousand), others end it ("12,34" is twelve).
double LeadingNumber(std::string_view text);

// The whole text as a number, blanks around it allowed, thousands separators as above; nullopt when anything else is
// in it ("12.5abc", "", "nan"). The view stays valid while the text does; separators are removed into `buffer`.
std::optional<std::string_view> ExactNumberText(std::string_view text, std::string& buffer);

// "#0.00" and "#0": decimal rounding with halves away from zero, of the shortest decimal that reads back as the value
// (so 1.005 is shown as 1.01). Values that are no number are shown as 0.
std::string FormatFixed(double value, int decimals);

// A number as FormatFixed writes it with a comma before every three digits of its whole part; any other
// text as it is.
std::string WithThousands(std::string_view number);

// The shortest decimal text that reads back as the same float, without an exponent.
std::string FormatSingle(float value);

// Characters that the code page lacks become "?"; bytes that it does not define keep their value (so a round trip
// from bytes to text and back changes nothing).
std::string ToWindows1252(std::string_view utf8);
std::string FromWindows1252(std::string_view bytes);
// Whether a record, an INI file or a page in Windows-1252 can hold the text as it is.
bool FitsWindows1252(std::string_view utf8);

}  // namespace tarvolinex
