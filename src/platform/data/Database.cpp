#include "platform/data/Database.h"

#include <sqlite3.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/StatementText.h"
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

// The path comes last and may hold semicolons itself.
std::string PathIn(std::string_view connectionString) {
  constexpr std::string_view kKey = "dbq=";
  while (!EqualNoCase(connectionString.substr(0, kKey.size()), kKey)) {
    const auto end = connectionString.find(';');
    if (end == std::string_view::npos) return {};
    connectionString.remove_prefix(end + 1);
  }
  return std::string(connectionString.substr(kKey.size()));
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

}  // namespace

void Connection::Open(std::string_view connectionString) {
  Close();
  const std::string path = PathIn(connectionString);
  if (!FileExists(path)) {
    throw RuntimeError(kFileNotFound, Tr("The database file does not exist or is no file: %1", {path}));
  }
  const int result =
      sqlite3_open_v2(NativePath(path).c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  sqlite3_busy_timeout(database_, kBusyMilliseconds);
  // Opening reads nothing; asking for the schema does.
  const int read = result != SQLITE_OK
                       ? result
                       : sqlite3_exec(database_, "SELECT COUNT(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
  if (read != SQLITE_OK) {
    const std::string why = database_ ? sqlite3_errmsg(database_) : sqlite3_errstr(read);
    Close();
    throw RuntimeError(kDatabase, Tr("The database %1 cannot be opened: %2", {path, why}));
  }
  sqlite3_exec(database_, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
  sqlite3_create_collation(database_, kCaseBlindOrder, SQLITE_UTF8, nullptr, CompareCaseBlind);
  sqlite3_create_function(database_, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, Like, nullptr, nullptr);
}

void Connection::Close() {
  sqlite3_close_v2(database_);
  database_ = nullptr;
  depth_ = 0;
}

sqlite3_stmt* Connection::Prepare(std::string_view statement) {
  errors_.clear();
  if (!database_) throw RuntimeError(kDatabase, "No database is open");
  const std::string text = TranslateStatement(statement);
  sqlite3_stmt* prepared = nullptr;
  const char* rest = nullptr;
  if (sqlite3_prepare_v2(database_, text.c_str(), static_cast<int>(text.size()), &prepared, &rest) != SQLITE_OK) {
    errors_.emplace_back(sqlite3_errmsg(database_));
  } else if (!prepared || std::string_view(rest).find_first_not_of(" ;\r\n\t") != std::string_view::npos) {
    sqlite3_finalize(prepared);
    errors_.emplace_back("not one statement");
  }
  if (errors_.empty()) return prepared;
  throw RuntimeError(kDatabase, errors_.front() + ": " + std::string(statement));
}

void Connection::Execute(std::string_view statement) {
  sqlite3_stmt* prepared = Prepare(statement);
  int result = SQLITE_ROW;
  while (result == SQLITE_ROW) result = sqlite3_step(prepared);
  if (result != SQLITE_DONE) errors_.push_back(WhyItFailed(database_));
  sqlite3_finalize(prepared);
  if (!errors_.empty()) throw RuntimeError(kDatabase, errors_.front() + ": " + std::string(statement));
}

void Connection::InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                            const RowValue& valueOf) {
  std::string names, places;
  for (const std::string& column : columns) {
    names += (names.empty() ? "" : ",") + column;
    places += places.empty() ? "?" : ",?";
  }
  sqlite3_stmt* insertion = Prepare("INSERT INTO " + std::string(table) + " (" + names + ") VALUES(" + places + ")");
  std::vector<std::string> texts(columns.size());
  for (std::size_t row = 0; row < rows && errors_.empty(); ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      Bind(insertion, static_cast<int>(i) + 1, valueOf(row, i), texts[i]);
    }
    if (sqlite3_step(insertion) != SQLITE_DONE) {
      errors_.push_back(WhyItFailed(database_) + ": " + std::string(table) + ", row " + std::to_string(row + 1));
    }
    sqlite3_reset(insertion);
  }
  sqlite3_finalize(insertion);
  if (!errors_.empty()) throw RuntimeError(kDatabase, errors_.front());
}

int Connection::LastInsertedId() const {
  return database_ ? static_cast<int>(sqlite3_last_insert_rowid(database_)) : 0;
}

bool Connection::HasTable(std::string_view name) {
  Recordset table;
  table.Open(
      "SELECT name FROM sqlite_schema WHERE type='table' AND name='" + ReplaceAll(name, "'", "") + "' COLLATE NOCASE",
      *this);
  return !table.EndOfFile();
}

void Connection::CopyTo(std::string_view path, const std::function<void()>& pause) {
  if (!database_) throw RuntimeError(kDatabase, "No database is open");
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

void Connection::Begin() {
  if (depth_ == 0) Execute("BEGIN IMMEDIATE");
  ++depth_;
}

void Connection::Commit() {
  if (depth_ == 1) Execute("COMMIT");
  if (depth_ > 0) --depth_;
}

void Connection::Rollback() {
  if (std::exchange(depth_, 0) > 0) Execute("ROLLBACK");
}

void Recordset::Open(std::string_view statement, Connection& connection) {
  Close();
  connection_ = &connection;
  statement_ = statement;
  rows_ = connection.Prepare(statement);
  columns_.clear();
  for (int i = 0; i < sqlite3_column_count(rows_); ++i) {
    const char* declared = sqlite3_column_decltype(rows_, i);
    const auto [type, size] = DeclaredType(declared ? declared : "TEXT");
    columns_.push_back({sqlite3_column_name(rows_, i), type, size});
  }
  firstDue_ = true;
}

void Recordset::ReadRows(const std::vector<std::string>& columns, const RowReader& read) const {
  std::string list;
  for (const std::string& column : columns) {
    const int index = ColumnIndex(column);
    list += list.empty() ? "" : ",";
    list += index < 0 ? "NULL" : ColumnName(index);
  }
  Recordset narrow;
  narrow.Open("SELECT " + list + " FROM (" + statement_ + ") ORDER BY ID", *connection_);
  std::vector<std::string_view> texts(columns.size());
  for (narrow.Step(narrow.rows_); narrow.current_; narrow.Step(narrow.rows_)) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const auto column = static_cast<int>(i);
      const auto* bytes = sqlite3_column_text(narrow.rows_, column);
      texts[i] = bytes ? ViewOf(bytes, sqlite3_column_bytes(narrow.rows_, column)) : std::string_view();
    }
    read(texts);
  }
}

void Recordset::Close() {
  sqlite3_finalize(rows_);
  sqlite3_finalize(found_);
  rows_ = found_ = current_ = nullptr;
  firstDue_ = false;
}

bool Recordset::EndOfFile() const {
  if (firstDue_) {
    firstDue_ = false;
    Step(rows_);
  }
  return current_ == nullptr;
}

void Recordset::Step(sqlite3_stmt* statement) const {
  const int result = sqlite3_step(statement);
  current_ = result == SQLITE_ROW ? statement : nullptr;
  if (result == SQLITE_ROW) return;
  sqlite3_reset(statement);  // frees the read lock
  if (result != SQLITE_DONE) {
    throw RuntimeError(kDatabase, std::string(sqlite3_errmsg(connection_->database_)) + ": " + statement_);
  }
}

void Recordset::MoveFirst() {
  if (!rows_) throw RuntimeError(kDatabase, "The record set is not open");
  if (found_) sqlite3_reset(found_);
  sqlite3_reset(rows_);
  current_ = nullptr;
  firstDue_ = true;
}

void Recordset::MoveNext() {
  if (EndOfFile()) throw RuntimeError(kNoCurrentRecord, "There is no next record: " + statement_);
  if (current_ == found_) {
    current_ = nullptr;
  } else {
    Step(current_);
  }
}

void Recordset::Find(std::string_view criterion) {
  const auto equals = criterion.find('=');
  std::int64_t id = 0;
  const std::string_view number = equals == std::string_view::npos ? std::string_view() : criterion.substr(equals + 1);
  const auto end = std::from_chars(number.data(), number.data() + number.size(), id);
  if (!rows_ || end.ec != std::errc() || end.ptr != number.data() + number.size() || number.empty()) {
    throw RuntimeError(kDatabase, "Not a criterion of the form ID=number: " + std::string(criterion));
  }
  sqlite3_reset(rows_);
  firstDue_ = false;
  if (!found_) {
    const std::string column(Trim(criterion.substr(0, equals)));
    found_ = connection_->Prepare("SELECT * FROM (" + statement_ + ") WHERE " + column + "=?");
  }
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

int Recordset::ColumnIndex(std::string_view name) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (EqualNoCase(columns_[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

const Recordset::Column& Recordset::ColumnOf(std::string_view name) const {
  const int index = ColumnIndex(name);
  if (index < 0) throw RuntimeError(kItemNotFound, "No column " + std::string(name) + ": " + statement_);
  return columns_[static_cast<std::size_t>(index)];
}

ColumnType Recordset::TypeOf(std::string_view column) const {
  return ColumnOf(column).type;
}

int Recordset::DefinedSize(std::string_view column) const {
  return ColumnOf(column).size;
}

Value Recordset::Field(std::string_view column) const {
  return Field(static_cast<int>(&ColumnOf(column) - columns_.data()));
}

Value Recordset::Field(int column) const {
  if (EndOfFile()) throw RuntimeError(kNoCurrentRecord, "No current record: " + statement_);
  const auto index = static_cast<std::size_t>(column);
  return current_ == found_ ? foundRow_.at(index) : ColumnValue(current_, column, columns_.at(index).type);
}

}  // namespace tarvolinex
