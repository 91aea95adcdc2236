// Texts as Windows wants them, from the encodings of the files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex::windows {

constexpr unsigned kUtf8 = 65001, kAnsi = 1252, kDos = 437;  // code pages

// False when the bytes are no text of that code page; `text` is then empty.
bool Decode(std::string_view bytes, unsigned code_page, std::wstring& text);
std::string ToUtf8(const std::wstring& text);
std::wstring Decimal(unsigned long long number);

// The lines without their ends (line feed, or carriage return and line feed).
std::vector<std::wstring> Lines(const std::wstring& text);
// Without blanks and tabs at both ends.
std::wstring Trimmed(const std::wstring& text);
// Runs of blanks are one blank: a title comes out of a field of fixed width.
std::wstring Squeezed(const std::wstring& text);

// Without regard to case, as the file system compares.
bool SameName(const std::wstring& a, const std::wstring& b);
bool StartsWithName(const std::wstring& text, const std::wstring& start);

}  // namespace tarvolinex::windows
