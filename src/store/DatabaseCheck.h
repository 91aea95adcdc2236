// What is wrong in a database that can be opened.
#pragma once

#include <string>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

// One line each, for people, in English: contacts, form links and deliveries that lead nowhere, rate cards that cannot
// price, available forms without a page in the database's folder or on its server, quotes whose records cannot be read,
// and what a file says of itself. Empty = nothing. Nothing is changed. Throws RuntimeError when a table cannot be read.
std::vector<std::string> CheckDatabase(Database& database);

}  // namespace tarvolinex
