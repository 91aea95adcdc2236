#include "store/Tables.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <unordered_map>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

Table ReadRows(Database& database, std::string_view name, std::string_view statement, Rows rows) {
  Recordset records;
  records.Open(statement, database.Plain());
  Table table;
  table.name = name;
  for (int i = 0; i < records.ColumnCount(); ++i) {
    table.columns.push_back({records.ColumnName(i), records.TypeOf(i), records.DefinedSize(i)});
  }
  for (; rows == Rows::All && !records.EndOfFile(); records.MoveNext()) {
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

std::string Update(const Table& table, const RowChange& row, Value FieldChange::*value) {
  std::string values;
  for (const FieldChange& field : row.fields) {
    values += (values.empty() ? "" : ",") + NameOf(table, field) + "=";
    AppendValue(field.*value, values);
  }
  return FillStatement(statements::kUpdateRow,
                       {{"<TABLE>", table.name}, {"<VALUES>", values}, {"<ID>", std::int64_t{row.id}}});
}

std::string DeletionOf(const FormLink& link) {
  return FillStatement(statements::kDeleteFormLink,
                       {{"<formid>", std::int64_t{link.form}}, {"<supplierid>", std::int64_t{link.supplier}}});
}

// Inserts the rows that are new, those with the same fields together: nothing then is written for each of them.
void InsertNewRows(Connection& connection, const TableChange& change) {
  std::map<std::vector<int>, std::vector<const RowChange*>> byFields;
  std::vector<int> places;
  for (const RowChange& row : change.rows) {
    if (!row.isNew) continue;
    places.clear();
    for (const FieldChange& field : row.fields) places.push_back(field.column);
    byFields[places].push_back(&row);
  }
  for (const auto& [fields, rows] : byFields) {
    std::vector<std::string> columns;
    for (const int place : fields) columns.push_back(change.table->columns[static_cast<std::size_t>(place)].name);
    connection.InsertRows(
        change.table->name, columns, rows.size(),
        [&rows = rows](std::size_t row, std::size_t column) -> const Value& { return rows[row]->fields[column].to; });
  }
}

// Appends what deletes the rows whose column holds one of the IDs.
void AppendDeletions(std::string_view table, std::string_view column, const std::vector<int>& ids,
                     std::vector<std::string>& out) {
  constexpr std::size_t kAtOnce = 1000;
  for (std::size_t i = 0; i < ids.size();) {
    std::string list;
    for (const std::size_t end = std::min(i + kAtOnce, ids.size()); i < end; ++i) {
      list += (list.empty() ? "" : ",") + std::to_string(ids[i]);
    }
    out.push_back(FillStatement(statements::kDeleteRows,
                                {{"<TABLE>", std::string(table)}, {"<COLUMN>", std::string(column)}, {"<IDS>", list}}));
  }
}

// Does the changes of a table, and appends what takes them back. Returns the suppliers that are new.
std::set<int> StoreTable(Connection& connection, const TableChange& change, std::vector<std::string>& back) {
  std::vector<int> added;
  InsertNewRows(connection, change);
  for (const RowChange& row : change.rows) {
    if (row.isNew) {
      added.push_back(row.id);
      continue;
    }
    connection.Execute(Update(*change.table, row, &FieldChange::to));
    back.push_back(Update(*change.table, row, &FieldChange::from));
  }
  AppendDeletions(change.table->name, "ID", added, back);
  if (!EqualNoCase(change.table->name, "suppliers")) return {};
  // What has been given to the suppliers since goes with them.
  AppendDeletions("SupplierFormLink", "Supplierid", added, back);
  AppendDeletions("contacts", "Supplierid", added, back);
  return {added.begin(), added.end()};
}

void StoreLinks(Connection& connection, const std::vector<FormLink>& links) {
  std::vector<std::array<Value, 2>> rows;
  rows.reserve(links.size());
  for (const FormLink& link : links) {
    auto& row = rows.emplace_back();
    row[0] = std::int64_t{link.form};
    row[1] = std::int64_t{link.supplier};
  }
  connection.InsertRows("SupplierFormLink", {"FormId", "SupplierId"}, rows.size(),
                        [&](std::size_t row, std::size_t column) -> const Value& { return rows[row].at(column); });
}

std::vector<std::string> StoreAll(Database& database, const DatabaseChange& change) {
  Connection& connection = database.Plain();
  if (DatabaseVersion(database) != change.version) {
    throw RuntimeError(kDatabase, Tr("Another program has changed the database meanwhile; nothing was stored. Look at "
                                     "the changes once more"));
  }
  std::vector<std::string> back;
  std::set<int> newSuppliers;
  for (const TableChange& table : change.tables) newSuppliers.merge(StoreTable(connection, table, back));
  StoreLinks(connection, change.links);
  for (const FormLink& link : change.links) {
    if (!newSuppliers.contains(link.supplier)) back.push_back(DeletionOf(link));
  }
  std::reverse(back.begin(), back.end());
  return back;
}

std::vector<RemovedRows::StoredTable> StoredBy(const DatabaseChange& change) {
  std::vector<RemovedRows::StoredTable> stored;
  for (const TableChange& table : change.tables) {
    auto& kept = stored.emplace_back(RemovedRows::StoredTable{table.table->name, {}, {}});
    for (const TableColumn& column : table.table->columns) kept.columns.push_back(column.name);
    kept.rows.reserve(table.rows.size());
    const bool suppliers = EqualNoCase(kept.name, "suppliers");
    for (const RowChange& row : table.rows) {
      auto& one = kept.rows.emplace_back(RemovedRows::StoredRow{row.id, row.isNew, {}});
      if (suppliers && row.isNew) continue;
      one.fields.reserve(row.fields.size());
      for (const FieldChange& field : row.fields) one.fields.emplace_back(field.column, field.to);
    }
  }
  return stored;
}

// By their IDs.
std::unordered_map<int, const std::vector<Value>*> RowsOf(const Table& table) {
  std::unordered_map<int, const std::vector<Value>*> rows;
  const auto id = static_cast<std::size_t>(table.Find("ID"));
  for (const auto& row : table.rows) rows[static_cast<int>(ValueNumber(row[id]))] = &row;
  return rows;
}

bool Holds(const Table& table, const std::vector<Value>& row, const RemovedRows::StoredTable& stored,
           const RemovedRows::StoredRow& wanted) {
  return std::all_of(wanted.fields.begin(), wanted.fields.end(), [&](const auto& field) {
    const int column = table.Find(stored.columns[static_cast<std::size_t>(field.first)]);
    return column < 0 || ValueText(row[static_cast<std::size_t>(column)]) == ValueText(field.second);
  });
}

}  // namespace

int Table::Find(std::string_view column) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (EqualNoCase(columns[i].name, column)) return static_cast<int>(i);
  }
  return -1;
}

Table ReadTable(Database& database, const std::string& name, Rows rows) {
  return ReadRows(database, name, FillStatement(statements::kTableById, "<TABLE>", name), rows);
}

Table ReadSupplierTable(Database& database, Rows rows) {
  return ReadTable(database, "suppliers", rows);
}

Table ReadContactTable(Database& database, Rows rows) {
  Table table = ReadRows(database, "contacts", statements::kContactsById, rows);
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
  return std::max(LargestOf(database, statements::kLargestId, table), database.Plain().LargestIdGiven(table));
}

std::string DatabaseVersion(Database& database) {
  return database.Plain().Version();
}

RemovedRows StoreChange(Database& database, const DatabaseChange& change) {
  database.KeepDailyCopy();
  Connection& connection = database.Plain();
  connection.Begin();
  try {
    RemovedRows undo;
    undo.statements = StoreAll(database, change);
    undo.stored = StoredBy(change);
    connection.Commit();
    undo.told = connection.Told();
    return undo;
  } catch (const RuntimeError&) {
    connection.Rollback();
    throw;
  }
}

std::vector<std::string> ChangedSince(Database& database, const RemovedRows& change) {
  std::set<std::string> names;
  for (const RemovedRows::StoredTable& stored : change.stored) {
    const bool suppliers = EqualNoCase(stored.name, "suppliers");
    const Table table = suppliers ? ReadSupplierTable(database) : ReadContactTable(database);
    const auto name = static_cast<std::size_t>(table.Find("CompanyName"));
    const auto rows = RowsOf(table);
    for (const RemovedRows::StoredRow& row : stored.rows) {
      const auto now = rows.find(row.id);
      if (now == rows.end()) continue;
      const bool stands = Holds(table, *now->second, stored, row) && !(suppliers && row.isNew);
      if (!stands) names.insert(ValueText((*now->second)[name]));
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace tarvolinex
