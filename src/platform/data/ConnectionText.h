// The text that says which database to open.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// Whether it names a server: "driver={PostgreSQL};...".
bool IsPostgres(std::string_view connectionString);

// The file that it names behind "dbq=", to its end: a path may hold semicolons itself. Empty when there is none.
std::string FileIn(std::string_view connectionString);

// The value of a key; empty when it is not there. A value stands in braces when it holds a semicolon: "pwd={a;b}", with
// "}}" for a brace in it.
std::string ValueIn(std::string_view connectionString, std::string_view key);

// As ValueIn reads it back.
std::string KeyAndValue(std::string_view key, std::string_view value);

// For people: "NAME on HOST", or the file.
std::string DatabaseName(std::string_view connectionString);

}  // namespace tarvolinex
