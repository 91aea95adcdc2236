// What an import would do, row by row, before anything is stored.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/TextTable.h"
#include "store/Tables.h"

namespace tarvolinex {

enum class Fate { New, Changed, Unchanged, Refused };
// "new", "changed", "unchanged", "refused".
std::string_view FateName(Fate fate);

struct PlannedRow {
  long line = 0;  // of the file
  Fate fate = Fate::Unchanged;
  int id = 0;          // in the database; 0 = none
  std::string detail;  // new: the name; changed: which field from what to what; refused: which column and why
};

struct ImportPlan {
  std::vector<PlannedRow> rows;
  std::vector<std::shared_ptr<const Table>> tables;  // that the change names
  DatabaseChange change;
  long Count(Fate fate) const;
};

// What is done with a column whose name is none.
enum class UnknownColumns { Refuse, LeaveOut };

enum class ImportKind { Suppliers, Contacts };

// For each column of the file its place among the known ones, -1 = left out. Each known one is named at most once.
using ColumnChoice = std::vector<int>;

// The columns that an import knows, in the order in which they are exported.
std::vector<std::string> KnownColumns(Database& database, ImportKind kind);

// The choice that a heading makes: names are compared without regard to case, blanks and underscores. Throws
// RuntimeError, which tells the known columns, when a name is none of them or is there twice.
ColumnChoice ChoiceOf(const TextRow& heading, const std::vector<std::string>& known,
                      UnknownColumns unknown = UnknownColumns::Refuse);

// Plans the rows, which are those below the heading. A supplier is found by its ID, then by name and post code; a
// contact by its ID, then by its name at its supplier, which is found by its ID or its name. Throws RuntimeError when
// the database cannot be read.
ImportPlan PlanImport(Database& database, ImportKind kind, const std::vector<TextRow>& rows,
                      const ColumnChoice& choice);

// Stores the plan, all or nothing, and returns what takes it back. Throws RuntimeError, also when the database has
// changed since it was planned. REQUIRES: no row is refused.
RemovedRows StoreImport(Database& database, const ImportPlan& plan);

}  // namespace tarvolinex
