// HTML pages as bytes: what the program does not change survives, what it inserts is written in the page's own
// character set.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// The name of the character set that a page declares (byte order mark, or "charset=" in its first 1024 bytes);
// "windows-1252" when it declares none, or one in which it cannot have been written.
std::string PageCharset(std::string_view page);

// The page with a carriage return and line feed before each of its lines, and none at its end. A byte order mark stays
// in front; a page in UTF-16 becomes one in UTF-8. Throws RuntimeError when it cannot be read.
std::string ReadPage(std::string_view path);

// The whole page as UTF-8 text, its lines as in ReadPage.
std::string ReadPageText(std::string_view path);

// Of a page's text: what stands between the tags of the first line that holds both; empty when none does.
std::string PageTitle(std::string_view text);

// A page as its file holds it: with a line end after it.
std::string PageBytes(std::string_view page);

// Writes what ReadPage gave, with a line end after it, whole or not at all. Throws RuntimeError.
void WritePage(std::string_view path, std::string_view page);

}  // namespace tarvolinex
