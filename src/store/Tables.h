// Whole tables as values, and many writes to their rows at once.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/Database.h"
#include "store/Suppliers.h"

namespace tarvolinex {

struct TableColumn {
  std::string name;
  ColumnType type = ColumnType::Text;
  int size = 0;  // characters of a text column
};

// Every row of a table, in the order of the IDs.
struct Table {
  std::string name;
  std::vector<TableColumn> columns;
  std::vector<std::vector<Value>> rows;
  // -1 when there is no such column. Names are case-blind.
  int Find(std::string_view column) const;
};

enum class Rows { All, None };
// A table with IDs, its columns in their order, with its rows or without. Throws RuntimeError when it cannot be read.
Table ReadTable(Database& database, const std::string& name, Rows rows = Rows::All);
Table ReadSupplierTable(Database& database, Rows rows = Rows::All);
// ID, SupplierID, CompanyName (of the supplier; no column of the table), and then the other columns.
Table ReadContactTable(Database& database, Rows rows = Rows::All);

// A form of a supplier.
struct FormLink {
  int form = 0, supplier = 0;
  auto operator<=>(const FormLink&) const = default;
};

// The largest ID that a row of the table has, or has ever had where the database remembers it.
int LargestId(Database& database, std::string_view table);

// A column's place in its table, with the value before and after; before is Null in a row that is new.
struct FieldChange {
  int column = 0;
  Value from, to;
};
struct RowChange {
  int id = 0;
  bool isNew = false;
  std::vector<FieldChange> fields;
};
struct TableChange {
  const Table* table = nullptr;  // not owned; names the columns
  std::vector<RowChange> rows;
};

// Another text once another program has stored something.
std::string DatabaseVersion(Database& database);

// Which state of the database changes were planned on.
struct DatabaseChange {
  std::string version;  // DatabaseVersion before the first table was read
  std::vector<TableChange> tables;
  std::vector<FormLink> links;  // that are new
};

// Stores all of it in one transaction, or nothing, and returns the statements that take it back. Throws RuntimeError,
// also when another program has written since the version, because what was planned may then be wrong.
RemovedRows StoreChange(Database& database, const DatabaseChange& change);

// The names of the suppliers in whose rows, or contacts' rows, something else stands by now than the change stored:
// what is lost when it is taken back. New suppliers count when anything at all was stored since.
std::vector<std::string> ChangedSince(Database& database, const RemovedRows& change);

}  // namespace tarvolinex
