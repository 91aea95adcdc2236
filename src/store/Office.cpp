#include "store/Office.h"

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "store/Row.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

const std::string& TextIn(const OfficeFields& fields, const std::string& name) {
  static const std::string none;
  const auto found = fields.find(name);
  return found == fields.end() ? none : found->second;
}

void StoreField(Connection& connection, const std::string& name, const std::string& text) {
  const std::vector<Filling> fillings = {{"<NAME>", DoubleQuotes(name)}, {"<CONTENT>", DoubleQuotes(text)}};
  connection.Execute(FillStatement(statements::kDeleteOfficeField, fillings));
  connection.Execute(FillStatement(statements::kInsertOfficeField, fillings));
}

}  // namespace

bool IsShared(Database& database) {
  return database.IsOpen() && !database.Plain().IsFile();
}

OfficeFields ReadOffice(Database& database) {
  OfficeFields fields;
  // Whoever may write has made the table when the database was opened.
  if (!IsShared(database) || (database.ReadOnly() && !database.Plain().HasTable("Office"))) return fields;
  Recordset rows;
  rows.Open(statements::kOfficeFields, database.Plain(), Recordset::Rows::Later);
  rows.ReadRows({"Name", "Content"}, [&](const std::vector<std::string_view>& row) { fields.emplace(row[0], row[1]); });
  return fields;
}

bool ChangeOffice(Database& database,
                  const std::function<std::optional<OfficeFields>(const OfficeFields& now)>& change) {
  Connection& connection = database.Plain();
  connection.Begin();
  try {
    connection.Flush();  // nobody else stores anything from here on: what is read now stays so
    const OfficeFields now = ReadOffice(database);
    const auto wanted = change(now);
    for (const auto& [name, text] : wanted.value_or(OfficeFields())) {
      if (!now.contains(name) || TextIn(now, name) != text) StoreField(connection, name, text);
    }
    connection.Commit();
    return wanted.has_value();
  } catch (const RuntimeError&) {
    connection.Rollback();
    throw;
  }
}

OfficeFields MergedOffice(const OfficeFields& now, const OfficeFields& before, const OfficeFields& mine) {
  OfficeFields merged = mine;
  for (const auto& [name, text] : now) {
    if (TextIn(mine, name) == TextIn(before, name)) merged[name] = text;
  }
  return merged;
}

std::vector<std::string> MetInOffice(const OfficeFields& now, const OfficeFields& before, const OfficeFields& mine) {
  std::vector<std::string> met;
  for (const auto& [name, text] : now) {
    const std::string &own = TextIn(mine, name), &was = TextIn(before, name);
    if (own != was && text != was && own != text) met.push_back(name);
  }
  return met;
}

}  // namespace tarvolinex
