// All that PostgreSQL must be told in other words than the program's.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Engine.h"
#include "platform/data/PostgresCatalogue.h"

namespace tarvolinex {

// The statement as PostgreSQL reads it: YES and NO are TRUE and FALSE, texts are ordered and compared by LIKE without
// regard to case, Null comes first, names in brackets are case-blind too, "INSERT OR IGNORE" passes over a row that
// is there, and an empty text in a column of anything else is Null. An INSERT into a table that gives IDs returns the
// row's.
std::string PostgresStatement(std::string_view statement, const PostgresCatalogue& catalogue);

// What puts the rows of a SELECT that names no order into the one in which a file gives them: that of their IDs; empty
// when nothing is to be added.
std::string OwnOrder(std::string_view statement, const PostgresCatalogue& catalogue);

// Inserts some of the rows, from `first` to before `end`.
std::string PostgresInsertion(std::string_view table, const std::vector<std::string>& columns, std::size_t first,
                              std::size_t end, const RowValue& valueOf, const PostgresCatalogue& catalogue);

// A SELECT without the order of its rows.
std::string_view WithoutOrder(std::string_view statement);

// The table that an INSERT writes into, when it says the rows' IDs itself; empty for any other statement.
std::string TableOfGivenIds(std::string_view statement, const PostgresCatalogue& catalogue);

// The INSERT that gives its row an ID, as PostgresStatement made it, with this one; empty for any other statement.
std::string WithId(std::string_view statement, int id);

// Lets the table's next ID follow its largest. IDs that other desks are given meanwhile are passed over.
std::string FollowLargestId(std::string_view table);

// Lets its next ID be the one after this.
std::string SetNextId(std::string_view table, int id);

// Gives the version of the tables, which is kept as the comment on what counts their changes.
inline constexpr const char* kReadSchemaVersion =
    "SELECT obj_description(to_regclass('tarvolinex_changes'), 'pg_class')";

// Whether tables or columns are others after it.
bool ChangesTables(std::string_view statement);

// What makes the table, its columns' spelling included, and has every change to it counted and told (see
// PostgresEngine). One statement each.
std::vector<std::string> PostgresTable(const TableDesign& design);

}  // namespace tarvolinex
