#include "platform/data/PostgresDialect.h"

#include <set>
#include <utility>

#include "platform/data/StatementWords.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

using Kind = StatementPart::Kind;
using Parts = std::vector<StatementPart>;

bool IsBlank(const StatementPart& part) {
  return part.kind == Kind::Other && (part.text == " " || part.text == "\n" || part.text == "\r" || part.text == "\t");
}

// The next part from `at` that is no blank; parts.size() at the end.
std::size_t NextPart(const Parts& parts, std::size_t at) {
  while (at < parts.size() && IsBlank(parts[at])) ++at;
  return at;
}

bool IsAt(const Parts& parts, std::size_t at, std::string_view text) {
  return at < parts.size() && parts[at].kind != Kind::Quoted && parts[at].Is(text);
}

std::vector<std::string_view> WordsOf(const Parts& parts) {
  std::vector<std::string_view> words;
  for (const StatementPart& part : parts) {
    if (part.kind == Kind::Word) words.push_back(part.text);
  }
  return words;
}

// An empty text that is no part of a longer one with a quote in it.
bool IsEmptyText(const Parts& parts, std::size_t at) {
  const auto quoted = [&](std::size_t i) { return i < parts.size() && parts[i].kind == Kind::Quoted; };
  return quoted(at) && parts[at].text == "''" && !quoted(at + 1) && (at == 0 || !quoted(at - 1));
}

// "INSERT [OR IGNORE] INTO table": where the table's name stands; parts.size() in any other statement.
std::size_t InsertedTable(const Parts& parts) {
  std::size_t at = NextPart(parts, 0);
  if (!IsAt(parts, at, "INSERT")) return parts.size();
  at = NextPart(parts, at + 1);
  if (IsAt(parts, at, "OR")) at = NextPart(parts, NextPart(parts, at + 1) + 1);
  return IsAt(parts, at, "INTO") ? NextPart(parts, at + 1) : parts.size();
}

// The names between the parentheses that open at `at`, and where they close.
std::vector<std::string_view> NamesIn(const Parts& parts, std::size_t& at) {
  std::vector<std::string_view> names;
  while (++at < parts.size() && !IsAt(parts, at, ")")) {
    if (parts[at].kind == Kind::Word) names.push_back(parts[at].text);
  }
  return names;
}

// Where empty texts stand that are to be Null: "column = ''" and a value of an INSERT with a column list.
class EmptyTexts {
 public:
  EmptyTexts(const Parts& parts, const PostgresCatalogue& catalogue)
      : parts_(parts), catalogue_(catalogue), words_(WordsOf(parts)) {
    const std::size_t table = InsertedTable(parts_);
    table < parts_.size() ? LookThroughValues(table) : LookThroughAssignments();
  }
  bool Contains(std::size_t at) const { return found_.contains(at); }

 private:
  void LookThroughAssignments() {
    std::string_view column;
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      if (IsBlank(parts_[i])) continue;
      if (IsEmptyText(parts_, i) && catalogue_.IsOther(column, words_)) found_.insert(i);
      if (parts_[i].kind == Kind::Word)
        column = parts_[i].text;
      else if (!IsAt(parts_, i, "="))
        column = {};
    }
  }
  void LookThroughValues(std::size_t at) {
    at = NextPart(parts_, at + 1);
    if (!IsAt(parts_, at, "(")) return;
    const auto columns = NamesIn(parts_, at);
    std::size_t value = 0;
    int depth = 0;
    for (; at < parts_.size(); ++at) {
      if (IsAt(parts_, at, "(") && depth++ == 0) value = 0;
      if (IsAt(parts_, at, ")")) --depth;
      if (IsAt(parts_, at, ",") && depth == 1) ++value;
      if (depth == 1 && IsEmptyText(parts_, at) && value < columns.size() &&
          catalogue_.IsOther(columns[value], words_)) {
        found_.insert(at);
      }
    }
  }

  const Parts& parts_;
  const PostgresCatalogue& catalogue_;
  std::vector<std::string_view> words_;
  std::set<std::size_t> found_;
};

class PostgresTranslator {
 public:
  PostgresTranslator(std::string_view statement, const PostgresCatalogue& catalogue)
      : parts_(PartsOf(statement)), catalogue_(catalogue), words_(WordsOf(parts_)), empty_(parts_, catalogue) {}

  std::string Run() {
    for (at_ = 0; at_ < parts_.size(); ++at_) {
      const StatementPart& part = parts_[at_];
      if (part.kind == Kind::Quoted) {
        Quoted(part.text);
      } else if (part.kind == Kind::Word) {
        Word(part);
      } else {
        if (part.text == "," || part.text == ")" || part.text == ";") CloseColumn();
        if (part.text == ")") ordering_ = false;
        out_ += part.text;
      }
    }
    CloseColumn();
    if (ignore_) out_ += " ON CONFLICT DO NOTHING";
    const std::size_t table = InsertedTable(parts_);
    if (table < parts_.size() && catalogue_.GivesIds(parts_[table].text)) out_ += " RETURNING id";
    return std::move(out_);
  }

 private:
  void Quoted(std::string_view text) {
    if (text.front() != '\'') {
      out_ += '"' + FoldCase(text.substr(1, text.size() - 2)) + '"';
      return;
    }
    out_ += empty_.Contains(at_) ? std::string_view("NULL") : text;
    const bool goesOn = at_ + 1 < parts_.size() && parts_[at_ + 1].kind == Kind::Quoted;
    if (!goesOn && std::exchange(patternPending_, false)) out_ += " ESCAPE ''";
  }
  void Word(const StatementPart& part) {
    if (ordering_ && (part.Is("ASC") || part.Is("DESC"))) {
      nulls_ = part.Is("DESC") ? " NULLS LAST" : " NULLS FIRST";
      out_ += part.text;
    } else if (ordering_ && part.Is("LIMIT")) {
      CloseColumn();
      ordering_ = false;
      out_ += " LIMIT";
    } else if (ordering_) {
      Ordered(part.text);
    } else {
      Other(part);
    }
  }
  void Ordered(std::string_view column) {
    const bool text = catalogue_.IsText(column, words_);
    out_ += text ? "lower(" + std::string(column) + " COLLATE \"und-x-icu\") COLLATE \"C\"" : std::string(column);
    nulls_ = " NULLS FIRST";
  }
  void Other(const StatementPart& part) {
    if (part.Is("YES") || part.Is("TRUE")) {
      out_ += "TRUE";
    } else if (part.Is("NO") || part.Is("FALSE")) {
      out_ += "FALSE";
    } else if (part.Is("LIKE")) {
      out_ += "ILIKE";
      patternPending_ = true;
    } else if (part.Is("OR") && IsAt(parts_, NextPart(parts_, at_ + 1), "IGNORE")) {
      at_ = NextPart(parts_, at_ + 1);
      ignore_ = true;
    } else {
      ordering_ = afterOrder_ && part.Is("BY");
      afterOrder_ = part.Is("ORDER");
      out_ += part.text;
    }
  }
  // Where the column of an ORDER BY ends.
  void CloseColumn() {
    if (ordering_) out_ += std::exchange(nulls_, "");
  }

  Parts parts_;
  const PostgresCatalogue& catalogue_;
  std::vector<std::string_view> words_;
  EmptyTexts empty_;
  std::size_t at_ = 0;
  std::string out_;
  std::string nulls_;  // what the column that is open still needs
  bool afterOrder_ = false, ordering_ = false, patternPending_ = false, ignore_ = false;
};

std::string ColumnText(const ColumnDesign& column) {
  switch (column.kind) {
    case ColumnKind::Id:
      return " integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY";
    case ColumnKind::WholeNumber:
      return " integer";
    case ColumnKind::SmallNumber:
      return " smallint";
    case ColumnKind::Currency:
      return " numeric(19,4)";
    case ColumnKind::Single:
      return " real";
    case ColumnKind::YesNo:
      return " boolean NOT NULL DEFAULT FALSE";
    case ColumnKind::Day:
      return " date";
    case ColumnKind::Moment:
      return " timestamp(0)";
    // However long it is: an ordinary index has no room for it.
    case ColumnKind::OnceText:
      return " text, EXCLUDE USING hash (" + column.name + " WITH =)";
    case ColumnKind::Text:
      break;
  }
  const std::string type = column.size > 0 ? " varchar(" + std::to_string(column.size) + ")" : " text";
  return type + " COLLATE \"und-x-icu\"";
}

// Counts a change and tells whoever listens into which table something was written. It runs with the rights of who
// made it, so that a desk needs none to the counter.
constexpr const char* kNoteChange =
    "CREATE OR REPLACE FUNCTION tarvolinex_note() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = "
    "pg_catalog, pg_temp AS $note$ BEGIN PERFORM nextval(format('%I.tarvolinex_changes', TG_TABLE_SCHEMA)::regclass); "
    "PERFORM pg_notify('tarvolinex', TG_TABLE_NAME); RETURN NULL; END $note$";

}  // namespace

std::string PostgresStatement(std::string_view statement, const PostgresCatalogue& catalogue) {
  return PostgresTranslator(statement, catalogue).Run();
}

std::string PostgresInsertion(std::string_view table, const std::vector<std::string>& columns, std::size_t first,
                              std::size_t end, const RowValue& valueOf, const PostgresCatalogue& catalogue) {
  std::string names;
  std::vector<bool> others;  // an empty text is nothing there
  for (const std::string& column : columns) {
    names += (names.empty() ? "" : ",") + column;
    others.push_back(catalogue.IsOther(column, {table}));
  }
  std::string text = "INSERT INTO " + std::string(table) + " (" + names + ") VALUES";
  for (std::size_t row = first; row < end; ++row) {
    text += row == first ? "(" : ",(";
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) text += ',';
      const Value& value = valueOf(row, i);
      const std::string plain = ValueText(value);
      const bool nothing = IsNull(value) || (plain.empty() && others[i]);
      text += nothing ? "NULL" : "'" + ReplaceAll(plain, "'", "''") + "'";
    }
    text += ')';
  }
  return text;
}

std::string OwnOrder(std::string_view statement, const PostgresCatalogue& catalogue) {
  const Parts parts = PartsOf(statement);
  std::string_view table;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].kind != Kind::Word) continue;
    // One row for all of them has no order.
    if (parts[i].Is("ORDER") || parts[i].Is("GROUP") || IsAt(parts, i + 1, "(")) return {};
    const std::size_t next = NextPart(parts, i + 1);
    if (table.empty() && parts[i].Is("FROM") && next < parts.size()) table = parts[next].text;
  }
  if (!catalogue.HasTable(table)) return {};
  return catalogue.GivesIds(table) ? " ORDER BY " + std::string(table) + ".id" : " ORDER BY 1";
}

std::string_view WithoutOrder(std::string_view statement) {
  const Parts parts = PartsOf(statement);
  int depth = 0;
  std::size_t length = 0, order = statement.size();
  for (const StatementPart& part : parts) {
    if (part.text == "(") ++depth;
    if (part.text == ")") --depth;
    if (depth == 0 && part.kind == Kind::Word && part.Is("ORDER")) order = length;
    if (depth == 0 && part.kind == Kind::Word && part.Is("LIMIT")) order = statement.size();
    length += part.text.size();
  }
  return statement.substr(0, order);
}

std::string TableOfGivenIds(std::string_view statement, const PostgresCatalogue& catalogue) {
  const Parts parts = PartsOf(statement);
  const std::size_t table = InsertedTable(parts);
  if (table >= parts.size() || !catalogue.GivesIds(parts[table].text)) return {};
  std::size_t at = NextPart(parts, table + 1);
  if (!IsAt(parts, at, "(")) return std::string(parts[table].text);
  for (const std::string_view name : NamesIn(parts, at)) {
    if (EqualNoCase(name, "ID")) return std::string(parts[table].text);
  }
  return {};
}

std::string WithId(std::string_view statement, int id) {
  const Parts parts = PartsOf(statement);
  std::string with;
  const std::size_t table = InsertedTable(parts);
  if (table >= parts.size() || !statement.ends_with(" RETURNING id") || !IsAt(parts, NextPart(parts, table + 1), "(")) {
    return with;
  }
  bool values = false;
  std::string next = "id, ";
  for (std::size_t i = 0; i < parts.size(); ++i) {
    with += parts[i].text;
    values = values || IsAt(parts, i, "VALUES");
    if (!IsAt(parts, i, "(") || next.empty()) continue;
    with += next;
    next = values ? "" : std::to_string(id) + ", ";
  }
  return values && next.empty() ? with : std::string();
}

std::string FollowLargestId(std::string_view table) {
  const std::string name(table);
  return "SELECT CASE WHEN gap > 1000 THEN setval(ids, largest) WHEN gap > 0 THEN (SELECT nextval(ids) FROM "
         "generate_series(1, gap) ORDER BY 1 DESC LIMIT 1) END FROM (SELECT ids, largest, largest - "
         "COALESCE(pg_sequence_last_value(ids), 0) "
         "AS gap FROM (SELECT pg_get_serial_sequence('" +
         FoldCase(name) + "', 'id')::regclass AS ids, max(id)::bigint AS largest FROM " + name + ") a) b";
}

std::string SetNextId(std::string_view table, int id) {
  return "SELECT setval(pg_get_serial_sequence('" + FoldCase(table) + "', 'id'), " + std::to_string(id) + ")";
}

bool ChangesTables(std::string_view statement) {
  const Parts parts = PartsOf(statement);
  const std::size_t first = NextPart(parts, 0);
  return IsAt(parts, first, "CREATE") || IsAt(parts, first, "ALTER") || IsAt(parts, first, "DROP");
}

std::vector<std::string> PostgresTable(const TableDesign& design) {
  std::string columns;
  for (const ColumnDesign& column : design.columns) {
    columns += (columns.empty() ? "" : ", ") + column.name + ColumnText(column);
  }
  std::vector<std::string> statements = {"CREATE SEQUENCE IF NOT EXISTS tarvolinex_changes", kNoteChange,
                                         "CREATE TABLE IF NOT EXISTS " + design.name + " (" + columns + ")"};
  for (const ColumnDesign& column : design.columns) {
    statements.push_back("COMMENT ON COLUMN " + design.name + "." + column.name + " IS '" + column.name + "'");
  }
  if (!design.indexed.empty()) {
    statements.push_back("CREATE INDEX IF NOT EXISTS " + design.name + "By" + design.indexed + " ON " + design.name +
                         " (" + design.indexed + ")");
  }
  statements.push_back("CREATE OR REPLACE TRIGGER tarvolinex_note AFTER INSERT OR UPDATE OR DELETE OR TRUNCATE ON " +
                       design.name + " FOR EACH STATEMENT EXECUTE FUNCTION tarvolinex_note()");
  return statements;
}

}  // namespace tarvolinex
