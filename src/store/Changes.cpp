#include "store/Changes.h"

#include <array>

#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "store/Row.h"
#include "store/Schema.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

// As they are stored.
constexpr std::array<const char*, 3> kNames = {"supplier", "quote", "delivery"};

Change OwnChange(Database& database) {
  constexpr int kMostInName = 60;
  return {std::string(FirstCharacters(database.User(), kMostInName)), IsoMoment(database.Now())};
}

std::string StatementFor(std::string_view statement, Changed what, int id, const Change& change = {}) {
  return FillStatement(statement, {{"<WHAT>", kNames.at(static_cast<std::size_t>(what))},
                                   {"<ROWID>", std::int64_t{id}},
                                   {"<NAME>", DoubleQuotes(change.by)},
                                   {"<DATE>", change.at}});
}

}  // namespace

Change NoteChange(Database& database, Changed what, int id) {
  Change change = OwnChange(database);
  database.BringTo(SchemaStep::Changes);
  database.ExecuteStatement(StatementFor(statements::kForgetChange, what, id));
  database.ExecuteStatement(StatementFor(statements::kInsertChange, what, id, change));
  return change;
}

void NoteMaker(Database& database, Changed what, int id) {
  BringTo(database.Plain(), SchemaStep::Changes);
  database.Plain().Execute(StatementFor(statements::kInsertChange, what, id, OwnChange(database)));
}

std::optional<Change> LastChange(Database& database, Changed what, int id) {
  if (!database.Plain().HasTable("Changes")) return std::nullopt;
  Recordset found;
  found.Open(StatementFor(statements::kLastChange, what, id), database.Plain());
  if (found.EndOfFile()) return std::nullopt;
  const Row row(found);
  return Change{row.Text("ChangedBy"), row.Text("ChangedAt")};
}

std::unordered_map<int, std::string> MakersOf(Database& database, Changed what) {
  std::unordered_map<int, std::string> makers;
  if (database.Plain().IsFile() || !database.Plain().HasTable("Changes")) return makers;
  Recordset rows;
  rows.Open(StatementFor(statements::kMakers, what, 0), database.Plain(), Recordset::Rows::Later);
  rows.ReadRows({"RowId", "ChangedBy"}, [&](const std::vector<std::string_view>& texts) {
    makers[static_cast<int>(LeadingNumber(texts[0]))] = texts[1];
  });
  return makers;
}

}  // namespace tarvolinex
