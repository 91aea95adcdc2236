// A whole database brought from one engine to another, or to a file of its own.
#pragma once

#include <functional>
#include <string>

#include "platform/data/Database.h"

namespace tarvolinex {

// Told how much of the copy is done, in percent, and into which table it goes.
using CopyProgress = std::function<void(int percent, const std::string& table)>;

// Copies every row of every table of ours but the office's files, with its ID and as all of them are at one moment;
// makes the tables that are missing. All of it is stored or nothing, and `from` stays as it is. Throws RuntimeError,
// also when `to` already has suppliers, when it lacks a column that `from` has, or a value does not fit, which it
// names. REQUIRES: `from` is in no transaction.
void CopyDatabase(Connection& from, Connection& to, const CopyProgress& progress);

// The same into a new file, whole or not at all. Throws RuntimeError, also when there is a file of that name.
void CopyDatabaseToFile(Connection& from, const std::string& path, const CopyProgress& progress);

// The databases that two connection strings name, with the form pages, pictures and icons, which lie beside a file or
// in a database on a server: what is beside the new file already must be the same. Throws as above, also when one of
// them is a newer version's.
void CopyOffice(const std::string& from, const std::string& to, const CopyProgress& progress);

}  // namespace tarvolinex
