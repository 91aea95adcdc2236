// What the office has in common beside the rows that its desks work on: named texts, a row each, of a database on a
// server. A file has none.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

using OfficeFields = std::map<std::string, std::string>;  // by name

// Whether an open database is one that several desks share.
bool IsShared(Database& database);

// Empty when nobody has stored any. Throws RuntimeError.
OfficeFields ReadOffice(Database& database);

// Reads them and stores those that `change` makes different, in one transaction, in which no other desk stores
// anything; nullopt is nothing to store. Returns whether it was stored. What `change` throws, and RuntimeError, ends it
// with nothing stored.
bool ChangeOffice(Database& database,
                  const std::function<std::optional<OfficeFields>(const OfficeFields& now)>& change);

// What is stored once a desk has made `mine` of `before`, and others what is there now: each field as whoever changed
// it left it, where both have, as it is here.
OfficeFields MergedOffice(const OfficeFields& now, const OfficeFields& before, const OfficeFields& mine);
// The fields that both have changed, and not to the same.
std::vector<std::string> MetInOffice(const OfficeFields& now, const OfficeFields& before, const OfficeFields& mine);

}  // namespace tarvolinex
