// Supplier records, each with its rate card.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/Records.h"
#include "store/Database.h"
#include "store/Row.h"
#include "store/Statements.h"

namespace tarvolinex {

// A supplier as the database holds it; without one the columns alone.
struct SupplierRow {
  int id = 0;
  Row row;
  SupplierCalcSettingsRecord settings;  // with the rate card
  // Why the rates can neither price nor be published; empty = they can. The settings then hold the name alone.
  std::string rateCardFault;
  bool Found() const { return row.Found(); }
};

// Reads that one row. Throws RuntimeError.
SupplierRow ReadSupplier(Database& database, int id);

// What is read next is that row, its form links and its contacts. Throws RuntimeError.
void ForeseeSupplier(Database& database, int id);

// The default supplier's row. A failure is the fatal report "Database Error".
Row ReadDefaultSupplier(Database& database);

// The record of a supplier's row; Null, an empty text and a column that the table lacks read as empty or 0. Throws
// RuntimeError, naming supplier and column, when a number is needed and something else is stored.
SupplierCalcSettingsRecord ReadSupplierSettings(const Row& supplier);

// Whether another program has stored a text that is no number.
bool IsNoNumber(const Value& value);

// Gives the named columns of every supplier, in the order of their IDs. A failure to open is the fatal report "Database
// Error"; a failure to read throws RuntimeError.
void ListSuppliers(Database& database, const std::vector<std::string>& columns, const Recordset::RowReader& read);

// Stands on every supplier in the order of their names. A failure is as above.
void ForEachSupplier(Database& database, const std::function<void(const Recordset&)>& read);

// Whether the database holds the supplier at this moment. Throws RuntimeError.
bool SupplierIsStored(Database& database, int id);

void UpdateSupplier(Database& database, int id, const FieldLists& fields);  // nothing without assignments
void InsertSupplier(Database& database, const FieldLists& fields);
void ReplaceDefaultSupplier(Database& database, const FieldLists& fields);
// Puts these columns of a row into it.
void UpdateDefaultSupplier(Database& database, const Row& row, const std::set<std::string>& columns);
// Both are asked for at once: the row, and then the form links of the default supplier.
void ForeseeDefaultSupplier(Database& database);

// What was removed, a supplier, one of its contacts or a kept quote, as the statements that put it back; empty =
// nothing.
struct RemovedRows {
  int supplier = 0;
  int contact = 0;  // 0 = the supplier itself
  std::vector<std::string> statements;
  int quote = 0;          // its number; the others are then 0
  std::string told = {};  // of changes to many: Connection::Told when they were stored
  struct StoredRow {
    int id = 0;
    bool isNew = false;
    std::vector<std::pair<int, Value>> fields;  // places among the columns; none of a new supplier
  };
  struct StoredTable {
    std::string name;
    std::vector<std::string> columns;
    std::vector<StoredRow> rows;
  };
  std::vector<StoredTable> stored = {};  // by them
};
// Deletes the supplier with its form links and contacts, together or not at all.
RemovedRows DeleteSupplier(Database& database, int id);
void RestoreRows(Database& database, const RemovedRows& removed);

// Inserts a row that somebody else has removed, as it was read here last, under its own ID where that is free. Returns
// the ID. A failure is a fatal report.
int PutRowBack(Database& database, std::string_view table, const Row& row);
// The same for a supplier with its contacts and form links, together or not at all; nothing when it is stored.
void PutSupplierBack(Database& database, const Row& supplier, const std::vector<Row>& contacts,
                     const std::set<int>& forms);

// A row as a column list and a value list, to be inserted again under its own ID.
std::vector<Filling> RowLists(const Row& row);

// The number in a row's key, "ID12".
int IdOfKey(std::string_view key);

}  // namespace tarvolinex
