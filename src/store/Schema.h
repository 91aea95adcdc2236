// The tables of a database. They are made, and brought to what a newer version of the program needs, by numbered steps,
// which a database remembers. A file gets those of the later steps when it first needs them, a database on a server at
// once.
#pragma once

#include <vector>

#include "platform/data/Database.h"

namespace tarvolinex {

// In this order; a step is never changed once it has gone out.
enum class SchemaStep { Suppliers = 1, Quotes, Deliveries, Letters, OfficeFiles, Changes, Office };
inline constexpr SchemaStep kNewestStep = SchemaStep::Office;

// Does the steps that are missing up to this one, in a transaction; a desk that is at it meanwhile is waited for.
// Throws RuntimeError.
void BringTo(Connection& connection, SchemaStep step);

// Throws RuntimeError when a newer version of the program has changed the tables.
void RefuseNewer(Connection& connection, const std::string& name);

// Where a database on a server keeps files (store/SharedFiles).
inline constexpr const char* kOfficeFilesTable = "OfficeFiles";

// All of them, in the order in which their rows can be copied.
std::vector<TableDesign> AllTables();

}  // namespace tarvolinex
