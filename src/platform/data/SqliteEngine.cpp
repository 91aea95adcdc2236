// The database as a file of SQLite's.
#include <sqlite3.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/data/Engine.h"
#include "platform/data/SqliteText.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// How long a statement waits for another program that is writing.
constexpr int kBusyMilliseconds = 2000;

std::string_view ViewOf(const void* bytes, int length) {
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

int CompareCaseBlind(void*, int na, const void* a, int nb, const void* b) {
  return CompareNoCase(ViewOf(a, na), ViewOf(b, nb));
}

// On a full disk with the file that found no room.
std::string WhyItFailed(sqlite3* database) {
  const std::string why = sqlite3_errmsg(database);
  const int code = sqlite3_errcode(database);
  return code == SQLITE_FULL || code == SQLITE_IOERR ? why + ": " + sqlite3_db_filename(database, "main") : why;
}

// "%" stands for any text and "_" for any character, both texts folded.
bool LikeMatches(std::string_view text, std::string_view pattern) {
  while (!pattern.empty()) {
    if (pattern.front() == '%') {
      for (std::size_t skip = 0; skip <= text.size(); ++skip) {
        if (LikeMatches(text.substr(skip), pattern.substr(1))) return true;
      }
      return false;
    }
    if (text.empty() || (pattern.front() != '_' && pattern.front() != text.front())) return false;
    text.remove_prefix(pattern.front() == '_' ? FirstCharacters(text, 1).size() : 1);
    pattern.remove_prefix(1);
  }
  return text.empty();
}

void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  std::array<std::string, 2> texts;
  for (std::size_t i = 0; i < 2; ++i) {
    const auto* bytes = sqlite3_value_text(arguments[i]);
    if (!bytes) return sqlite3_result_null(context);
    texts[i] = FoldCase(ViewOf(bytes, sqlite3_value_bytes(arguments[i])));
  }
  sqlite3_result_int(context, LikeMatches(texts[1], texts[0]));
}

// Type and defined size of a declared column type such as "TEXT(50)" or "CURRENCY".
std::pair<ColumnType, int> DeclaredType(std::string_view declared) {
  const std::string type = UpperCase(declared);
  const auto has = [&](std::string_view word) { return type.find(word) != std::string::npos; };
  if (has("YESNO") || has("BIT") || has("BOOL")) return {ColumnType::YesNo, 2};
  if (has("CURRENCY") || has("MONEY")) return {ColumnType::Currency, 8};
  if (has("SINGLE")) return {ColumnType::Single, 4};
  if (has("REAL") || has("DOUB") || has("FLOA")) return {ColumnType::Double, 8};
  if (has("DATE") || has("TIME")) return {ColumnType::Date, 8};
  if (has("SHORT") || has("SMALLINT")) return {ColumnType::WholeNumber, 2};
  if (has("INT") || has("LONG") || has("COUNTER")) return {ColumnType::WholeNumber, 4};
  int size = 255;
  if (const auto open = type.find('('); open != std::string::npos) {
    std::from_chars(type.data() + open + 1, type.data() + type.size(), size);
  }
  return {ColumnType::Text, size};
}

// Whether the column is there for numbers; what another program has stored in one need not be one.
bool HoldsNumbers(ColumnType type) {
  return type != ColumnType::Text && type != ColumnType::Date && type != ColumnType::YesNo;
}

Value ColumnValue(sqlite3_stmt* row, int column, ColumnType type) {
  const int stored = sqlite3_column_type(row, column);
  if (stored == SQLITE_NULL) return Null{};
  const auto text = [&] {
    const auto* bytes = sqlite3_column_text(row, column);
    return std::string(ViewOf(bytes, sqlite3_column_bytes(row, column)));
  };
  if (HoldsNumbers(type) && (stored == SQLITE_TEXT || stored == SQLITE_BLOB)) return text();
  switch (type) {
    case ColumnType::WholeNumber:
      return static_cast<std::int64_t>(sqlite3_column_int64(row, column));
    case ColumnType::Currency: {
      // Through the text, so that a decimal of 15 digits arrives as it was written.
      const auto exact = Currency::FromText(text());
      return exact ? *exact : Currency::FromDouble(sqlite3_column_double(row, column)).value_or(Currency());
    }
    case ColumnType::Single:
      return static_cast<float>(sqlite3_column_double(row, column));
    case ColumnType::Double:
      return sqlite3_column_double(row, column);
    case ColumnType::YesNo:
      if (stored != SQLITE_TEXT) return sqlite3_column_int64(row, column) != 0;
      return EqualNoCase(text(), "YES") || EqualNoCase(text(), "TRUE") || LeadingNumber(text()) != 0;
    case ColumnType::Text:
    case ColumnType::Date:
      break;
  }
  return text();
}

// Numbers with decimals go in as texts, which the column makes numbers of: so they are stored as they would be written.
// The value or `text` has to live until the statement is done.
void Bind(sqlite3_stmt* statement, int place, const Value& value, std::string& text) {
  if (IsNull(value)) {
    sqlite3_bind_null(statement, place);
  } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
    sqlite3_bind_int64(statement, place, *number);
  } else if (const auto* truth = std::get_if<bool>(&value)) {
    sqlite3_bind_int(statement, place, *truth ? 1 : 0);
  } else {
    const auto* stored = std::get_if<std::string>(&value);
    const std::string& bytes = stored ? * stored : text = ValueText(value);
    sqlite3_bind_text(statement, place, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC);
  }
}

// One statement, ready to run.
sqlite3_stmt* Prepared(sqlite3* database, std::string_view statement) {
  const std::string text = SqliteText(statement);
  sqlite3_stmt* prepared = nullptr;
  const char* rest = nullptr;
  if (sqlite3_prepare_v2(database, text.c_str(), static_cast<int>(text.size()), &prepared, &rest) != SQLITE_OK) {
    throw StatementFailure(sqlite3_errmsg(database), statement);
  }
  if (prepared && std::string_view(rest).find_first_not_of(" ;\r\n\t") == std::string_view::npos) return prepared;
  sqlite3_finalize(prepared);
  throw StatementFailure("not one statement", statement);
}

class SqliteRows final : public RowSource {
 public:
  SqliteRows(std::string_view statement, sqlite3* database)
      : database_(database), statement_(statement), rows_(Prepared(database, statement)) {
    for (int i = 0; i < sqlite3_column_count(rows_); ++i) {
      const char* declared = sqlite3_column_decltype(rows_, i);
      const auto [type, size] = DeclaredType(declared ? declared : "TEXT");
      columns_.push_back({sqlite3_column_name(rows_, i), type, size});
    }
  }
  ~SqliteRows() override {
    sqlite3_finalize(rows_);
    sqlite3_finalize(found_);
  }
  SqliteRows(const SqliteRows&) = delete;
  SqliteRows& operator=(const SqliteRows&) = delete;

  const std::vector<Column>& Columns() override { return columns_; }

  bool AtEnd() override {
    if (std::exchange(firstDue_, false)) Step(rows_);
    return current_ == nullptr;
  }

  void MoveFirst() override {
    if (found_) sqlite3_reset(found_);
    sqlite3_reset(rows_);
    current_ = nullptr;
    firstDue_ = true;
  }

  void MoveNext() override {
    if (current_ == found_) {
      current_ = nullptr;
    } else {
      Step(current_);
    }
  }

  void Find(const std::string& column, std::int64_t id) override {
    sqlite3_reset(rows_);
    firstDue_ = false;
    if (!found_) found_ = Prepared(database_, "SELECT * FROM (" + statement_ + ") WHERE " + column + "=?");
    sqlite3_reset(found_);
    sqlite3_bind_int64(found_, 1, id);
    Step(found_);
    foundRow_.clear();
    if (!current_) return;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      foundRow_.push_back(ColumnValue(found_, static_cast<int>(i), columns_[i].type));
    }
    sqlite3_reset(found_);  // other programs can write while the row is shown
  }

  Value Field(int column) override {
    const auto index = static_cast<std::size_t>(column);
    return current_ == found_ ? foundRow_.at(index) : ColumnValue(current_, column, columns_.at(index).type);
  }

  void ReadRows(const std::string& list, std::size_t columns, const RowReader& read) override {
    SqliteRows narrow("SELECT " + list + " FROM (" + statement_ + ") ORDER BY ID", database_);
    std::vector<std::string_view> texts(columns);
    for (narrow.Step(narrow.rows_); narrow.current_; narrow.Step(narrow.rows_)) {
      for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto column = static_cast<int>(i);
        const auto* bytes = sqlite3_column_text(narrow.rows_, column);
        texts[i] = bytes ? ViewOf(bytes, sqlite3_column_bytes(narrow.rows_, column)) : std::string_view();
      }
      read(texts);
    }
  }

 private:
  void Step(sqlite3_stmt* statement) {
    const int result = sqlite3_step(statement);
    current_ = result == SQLITE_ROW ? statement : nullptr;
    if (result == SQLITE_ROW) return;
    sqlite3_reset(statement);  // frees the read lock
    if (result != SQLITE_DONE) throw StatementFailure(sqlite3_errmsg(database_), statement_);
  }

  sqlite3* database_;
  std::string statement_;
  std::vector<Column> columns_;
  sqlite3_stmt* rows_;
  sqlite3_stmt* found_ = nullptr;
  sqlite3_stmt* current_ = nullptr;  // the one of the two that stands on a row
  std::vector<Value> foundRow_;      // its values, when Find stands on it
  bool firstDue_ = true;             // the first row has still to be read
};

class SqliteEngine final : public Engine {
 public:
  explicit SqliteEngine(const std::string& path) {
    const int result =
        sqlite3_open_v2(NativePath(path).c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_busy_timeout(database_, kBusyMilliseconds);
    // Opening reads nothing; asking for the schema does.
    const int read = result != SQLITE_OK
                         ? result
                         : sqlite3_exec(database_, "SELECT COUNT(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    if (read != SQLITE_OK) {
      const std::string why = database_ ? sqlite3_errmsg(database_) : sqlite3_errstr(read);
      sqlite3_close_v2(database_);
      throw RuntimeError(kDatabase, Tr("The database %1 cannot be opened: %2", {path, why}));
    }
    sqlite3_exec(database_, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
    sqlite3_create_collation(database_, kCaseBlindOrder, SQLITE_UTF8, nullptr, CompareCaseBlind);
    sqlite3_create_function(database_, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, Like, nullptr, nullptr);
  }
  ~SqliteEngine() override { sqlite3_close_v2(database_); }
  SqliteEngine(const SqliteEngine&) = delete;
  SqliteEngine& operator=(const SqliteEngine&) = delete;

  std::unique_ptr<RowSource> Select(std::string_view statement, bool) override {
    return std::make_unique<SqliteRows>(statement, database_);
  }

  void Execute(std::string_view statement) override {
    sqlite3_stmt* prepared = Prepared(database_, statement);
    int result = SQLITE_ROW;
    while (result == SQLITE_ROW) result = sqlite3_step(prepared);
    const std::string why = result == SQLITE_DONE ? "" : WhyItFailed(database_);
    sqlite3_finalize(prepared);
    if (result != SQLITE_DONE) throw StatementFailure(why, statement);
  }

  void InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                  const RowValue& valueOf) override;
  void Begin() override { Execute("BEGIN IMMEDIATE"); }
  void BeginReading() override { Execute("BEGIN"); }
  void Flush() override {}
  void Commit() override { Execute("COMMIT"); }
  void Rollback() override { Execute("ROLLBACK"); }

  int LastInsertedId() override { return static_cast<int>(sqlite3_last_insert_rowid(database_)); }

  int ChangedRows() override { return sqlite3_changes(database_); }

  int LargestIdGiven(std::string_view table) override {
    if (!HasTable("sqlite_sequence")) return 0;
    const auto largest = FirstOf("SELECT seq FROM sqlite_sequence WHERE name LIKE '" + WithoutQuotes(table) + "'");
    return largest ? static_cast<int>(LeadingNumber(*largest)) : 0;
  }

  void KeepIdsAbove(std::string_view table, int id) override {
    if (LargestIdGiven(table) >= id) return;
    const std::string name = "'" + WithoutQuotes(table) + "'", number = std::to_string(id);
    Execute("DELETE FROM sqlite_sequence WHERE name LIKE " + name);
    Execute("INSERT INTO sqlite_sequence (name, seq) VALUES(" + name + ", " + number + ")");
  }

  int SchemaVersion() override { return static_cast<int>(LeadingNumber(FirstOf("PRAGMA user_version").value_or(""))); }
  void SetSchemaVersion(int version) override { Execute("PRAGMA user_version = " + std::to_string(version)); }

  std::string Version() override { return FirstOf("PRAGMA data_version").value_or(""); }
  std::string Told() override { return Version(); }
  bool UnsureWasStored() override { return false; }

  bool HasTable(std::string_view name) override {
    return FirstOf("SELECT name FROM sqlite_schema WHERE type='table' AND name='" + WithoutQuotes(name) +
                   "' COLLATE NOCASE")
        .has_value();
  }

  void MakeTable(const TableDesign& design) override {
    Execute(SqliteTable(design));
    if (design.indexed.empty()) return;
    Execute("CREATE INDEX IF NOT EXISTS " + design.name + "By" + design.indexed + " ON " + design.name + " (" +
            design.indexed + ")");
  }

  bool IsFile() const override { return true; }
  bool MayWrite() override { return true; }
  void CopyTo(std::string_view path, const std::function<void()>& pause) override;

 private:
  static std::string WithoutQuotes(std::string_view name) { return ReplaceAll(name, "'", ""); }
  std::optional<std::string> FirstOf(const std::string& statement) {
    SqliteRows rows(statement, database_);
    return rows.AtEnd() ? std::nullopt : std::optional(ValueText(rows.Field(0)));
  }
  sqlite3* database_ = nullptr;
};

void SqliteEngine::InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                              const RowValue& valueOf) {
  std::string names, places;
  for (const std::string& column : columns) {
    names += (names.empty() ? "" : ",") + column;
    places += places.empty() ? "?" : ",?";
  }
  sqlite3_stmt* insertion =
      Prepared(database_, "INSERT INTO " + std::string(table) + " (" + names + ") VALUES(" + places + ")");
  std::vector<std::string> texts(columns.size());
  std::string why;
  for (std::size_t row = 0; row < rows && why.empty(); ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      Bind(insertion, static_cast<int>(i) + 1, valueOf(row, i), texts[i]);
    }
    if (sqlite3_step(insertion) != SQLITE_DONE) {
      why = WhyItFailed(database_) + ": " + std::string(table) + ", row " + std::to_string(row + 1);
    }
    sqlite3_reset(insertion);
  }
  sqlite3_finalize(insertion);
  if (!why.empty()) throw RuntimeError(kDatabase, why);
}

void SqliteEngine::CopyTo(std::string_view path, const std::function<void()>& pause) {
  // The library makes names of its own from the one that it is given.
  const UnfinishedFile mine(path);
  const std::string beside = mine.Path() + ".mdb";
  sqlite3* copy = nullptr;
  int result = sqlite3_open(beside.c_str(), &copy);
  if (sqlite3_backup* backup = sqlite3_backup_init(copy, "main", database_, "main")) {
    constexpr int kPages = 1000;
    while (sqlite3_backup_step(backup, kPages) == SQLITE_OK) pause();
    result = sqlite3_backup_finish(backup);
  }
  sqlite3_close(copy);
  std::error_code failed;
  if (result == SQLITE_OK) std::filesystem::rename(beside, NativePath(path), failed);
  if (result == SQLITE_OK && !failed) return;
  throw RuntimeError(kDatabase, Tr("The database cannot be copied to %1", {path}));
}

}  // namespace

std::unique_ptr<Engine> OpenSqlite(std::string_view connectionString) {
  const std::string path = FileIn(connectionString);
  if (!FileExists(path)) {
    throw RuntimeError(kFileNotFound, Tr("The database file does not exist or is no file: %1", {path}));
  }
  return std::make_unique<SqliteEngine>(path);
}

}  // namespace tarvolinex
