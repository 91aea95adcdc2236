#include "store/Tables.h"

#include <algorithm>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

Table ReadRows(Database& database, std::string_view name, std::string_view statement) {
  Recordset records;
  records.Open(statement, database.Plain());
  Table table;
  table.name = name;
  for (int i = 0; i < records.ColumnCount(); ++i) {
    table.columns.push_back({records.ColumnName(i), records.TypeOf(i), records.DefinedSize(i)});
  }
  for (; !records.EndOfFile(); records.MoveNext()) {
    auto& row = table.rows.emplace_back();
    row.reserve(table.columns.size());
    for (int i = 0; i < records.ColumnCount(); ++i) row.push_back(records.Field(i));
  }
  return table;
}

int LargestOf(Database& database, std::string_view statement, std::string_view table) {
  Recordset largest;
  largest.Open(FillStatement(statement, "<TABLE>", std::string(table)), database.Plain());
  return largest.EndOfFile() ? 0 : static_cast<int>(ValueNumber(largest.Field(0)));
}

// The value in a statement. An apostrophe that another program has stored goes back as it was.
void AppendValue(const Value& value, std::string& out) {
  if (IsNull(value)) {
    out += "NULL";
  } else if (const auto* truth = std::get_if<bool>(&value)) {
    out += *truth ? "YES" : "NO";
  } else {
    out += "'" + DoubleQuotes(ValueText(value)) + "'";
  }
}

const std::string& NameOf(const Table& table, const FieldChange& field) {
  return table.columns[static_cast<std::size_t>(field.column)].name;
}

std::string Insertion(const Table& table, const RowChange& row) {
  std::string columns, values;
  for (const FieldChange& field : row.fields) {
    columns += (columns.empty() ? "" : ",") + NameOf(table, field);
    if (!values.empty()) values += ',';
    AppendValue(field.to, values);
  }
  return FillStatement(statements::kInsertRow, {{"<TABLE>", table.name}, {"<FIELDS>", columns}, {"<VALUES>", values}});
}

std::string Update(const Table& table, const RowChange& row, Value FieldChange::*value) {
  std::string values;
  for (const FieldChange& field : row.fields) {
    values += (values.empty() ? "" : ",") + NameOf(table, field) + "=";
    AppendValue(field.*value, values);
  }
  return FillStatement(statements::kUpdateRow,
                       {{"<TABLE>", table.name}, {"<VALUES>", values}, {"<ID>", std::int64_t{row.id}}});
}

std::string LinkStatement(std::string_view statement, const FormLink& link) {
  return FillStatement(statement,
                       {{"<formid>", std::int64_t{link.form}}, {"<supplierid>", std::int64_t{link.supplier}}});
}

// Does the row's change, and appends what takes it back.
void StoreRow(Connection& connection, const Table& table, const RowChange& row, std::vector<std::string>& back) {
  if (!row.isNew) {
    connection.Execute(Update(table, row, &FieldChange::to));
    back.push_back(Update(table, row, &FieldChange::from));
    return;
  }
  connection.Execute(Insertion(table, row));
  back.push_back(FillStatement(statements::kDeleteRow, {{"<TABLE>", table.name}, {"<ID>", std::int64_t{row.id}}}));
  if (!EqualNoCase(table.name, "suppliers")) return;
  // What has been given to the supplier since goes with it.
  back.push_back(FillStatement(statements::kDeleteFormLinks, "<ID>", row.id));
  back.push_back(FillStatement(statements::kDeleteContacts, "<supplierID>", row.id));
}

std::vector<std::string> StoreAll(Database& database, const DatabaseChange& change) {
  Connection& connection = database.Plain();
  if (DatabaseVersion(database) != change.version) {
    throw RuntimeError(kDatabase, Tr("Another program has changed the database meanwhile; nothing was stored. Look at "
                                     "the changes once more"));
  }
  std::vector<std::string> back;
  for (const TableChange& table : change.tables) {
    for (const RowChange& row : table.rows) StoreRow(connection, *table.table, row, back);
  }
  for (const FormLink& link : change.links) {
    connection.Execute(LinkStatement(statements::kInsertFormLink, link));
    back.push_back(LinkStatement(statements::kDeleteFormLink, link));
  }
  std::reverse(back.begin(), back.end());
  return back;
}

void RollBack(Connection& connection) {
  try {
    connection.Rollback();
  } catch (const RuntimeError&) {
    // A statement that failed has rolled back by itself.
  }
}

}  // namespace

int Table::Find(std::string_view column) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (EqualNoCase(columns[i].name, column)) return static_cast<int>(i);
  }
  return -1;
}

Table ReadTable(Database& database, const std::string& name) {
  return ReadRows(database, name, FillStatement(statements::kTableById, "<TABLE>", name));
}

Table ReadSupplierTable(Database& database) {
  return ReadTable(database, "suppliers");
}

Table ReadContactTable(Database& database) {
  Table table = ReadRows(database, "contacts", statements::kContactsById);
  // ID, SupplierID, CompanyName, the others.
  std::vector<int> order = {table.Find("ID"), table.Find("SupplierID"), static_cast<int>(table.columns.size()) - 1};
  for (int i = 0; i + 1 < static_cast<int>(table.columns.size()); ++i) {
    if (std::find(order.begin(), order.end(), i) == order.end()) order.push_back(i);
  }
  if (order[0] < 0 || order[1] < 0)
    throw RuntimeError(kDatabase, "The table contacts has no columns ID and Supplierid");
  const auto arrange = [&](auto& cells) {
    auto arranged = cells;
    for (std::size_t i = 0; i < order.size(); ++i) arranged[i] = std::move(cells[static_cast<std::size_t>(order[i])]);
    cells = std::move(arranged);
  };
  arrange(table.columns);
  table.columns[1].name = "SupplierID";
  for (auto& row : table.rows) arrange(row);
  return table;
}

int LargestId(Database& database, std::string_view table) {
  const int present = LargestOf(database, statements::kLargestId, table);
  if (!database.Plain().HasTable("sqlite_sequence")) return present;
  return std::max(present, LargestOf(database, statements::kLargestIdEver, table));
}

std::string DatabaseVersion(Database& database) {
  Recordset version;
  version.Open("PRAGMA data_version", database.Plain());
  return ValueText(version.Field(0));
}

RemovedRows StoreChange(Database& database, const DatabaseChange& change) {
  database.KeepDailyCopy();
  Connection& connection = database.Plain();
  connection.Begin();
  try {
    RemovedRows undo;
    undo.statements = StoreAll(database, change);
    connection.Commit();
    return undo;
  } catch (const RuntimeError&) {
    RollBack(connection);
    throw;
  }
}

}  // namespace tarvolinex
