#include "platform/data/Database.h"

#include <charconv>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/text/Text.h"

namespace tarvolinex {

// Something of the engine's; why it failed is remembered.
template <typename Action>
auto Connection::Do(Action action) {
  errors_.clear();
  if (!engine_) throw RuntimeError(kDatabase, "No database is open");
  try {
    return action(*engine_);
  } catch (const StatementFailure& failure) {
    errors_.push_back(failure.Why());
    throw;
  } catch (const RuntimeError& failure) {
    errors_.push_back(failure.Description());
    throw;
  }
}

void Connection::Open(std::string_view connectionString) {
  Close();
  engine_ = IsPostgres(connectionString) ? OpenPostgres(connectionString) : OpenSqlite(connectionString);
  engine_->WhenLost(lost_);
}

void Connection::Close() {
  engine_.reset();
  depth_ = 0;
}

bool Connection::MayWrite() {
  return Do([](Engine& engine) { return engine.MayWrite(); });
}

bool Connection::HasTable(std::string_view name) {
  return Do([&](Engine& engine) { return engine.HasTable(name); });
}

void Connection::MakeTable(const TableDesign& design) {
  Do([&](Engine& engine) { engine.MakeTable(design); });
}

void Connection::Foresee(const std::vector<std::string>& statements) {
  Do([&](Engine& engine) { engine.Foresee(statements); });
}

void Connection::Execute(std::string_view statement) {
  Do([&](Engine& engine) { engine.Execute(statement); });
}

void Connection::InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                            const RowValue& valueOf) {
  Do([&](Engine& engine) { engine.InsertRows(table, columns, rows, valueOf); });
}

void Connection::Flush() {
  Do([](Engine& engine) { engine.Flush(); });
}

int Connection::LastInsertedId() {
  return engine_ ? Do([](Engine& engine) { return engine.LastInsertedId(); }) : 0;
}

int Connection::ChangedRows() {
  return Do([](Engine& engine) { return engine.ChangedRows(); });
}

int Connection::LargestIdGiven(std::string_view table) {
  return Do([&](Engine& engine) { return engine.LargestIdGiven(table); });
}

std::string Connection::Version() {
  return Do([](Engine& engine) { return engine.Version(); });
}

std::string Connection::Told() {
  return Do([](Engine& engine) { return engine.Told(); });
}

bool Connection::UnsureWasStored() {
  return Do([](Engine& engine) { return engine.UnsureWasStored(); });
}

bool Connection::Hold(std::string_view name) {
  return Do([&](Engine& engine) { return engine.Hold(name); });
}

void Connection::LetGo(std::string_view name) {
  Do([&](Engine& engine) { engine.LetGo(name); });
}

void Connection::KeepIdsAbove(std::string_view table, int id) {
  Do([&](Engine& engine) { engine.KeepIdsAbove(table, id); });
}

int Connection::SchemaVersion() {
  return Do([](Engine& engine) { return engine.SchemaVersion(); });
}

void Connection::SetSchemaVersion(int version) {
  Do([&](Engine& engine) { engine.SetSchemaVersion(version); });
}

void Connection::CopyTo(std::string_view path, const std::function<void()>& pause) {
  Do([&](Engine& engine) { engine.CopyTo(path, pause); });
}

void Connection::BeginReading() {
  Do([](Engine& engine) { engine.BeginReading(); });
  depth_ = 1;
}

void Connection::Begin() {
  if (depth_ == 0) Do([](Engine& engine) { engine.Begin(); });
  ++depth_;
}

void Connection::Commit() {
  if (depth_ == 1) Do([](Engine& engine) { engine.Commit(); });
  if (depth_ > 0) --depth_;
}

void Connection::Rollback() {
  if (std::exchange(depth_, 0) == 0 || !engine_) return;
  try {
    engine_->Rollback();
  } catch (const RuntimeError&) {
    // What failed before it has rolled back by itself.
  }
}

void Connection::WhenLost(LostConnection lost) {
  lost_ = std::move(lost);
  if (engine_) engine_->WhenLost(lost_);
}

void Recordset::Open(std::string_view statement, Connection& connection, Rows rows) {
  Close();
  statement_ = statement;
  source_ = connection.Do([&](Engine& engine) { return engine.Select(statement, rows == Rows::Later); });
  columns_ = source_->Columns();
}

void Recordset::ReadRows(const std::vector<std::string>& columns, const RowReader& read) const {
  std::string list;
  for (const std::string& column : columns) {
    const int index = ColumnIndex(column);
    list += list.empty() ? "" : ",";
    list += index < 0 ? "NULL" : ColumnName(index);
  }
  source_->ReadRows(list, columns.size(), read);
}

void Recordset::MoveFirst() {
  if (!source_) throw RuntimeError(kDatabase, "The record set is not open");
  source_->MoveFirst();
}

void Recordset::MoveNext() {
  if (EndOfFile()) throw RuntimeError(kNoCurrentRecord, "There is no next record: " + statement_);
  source_->MoveNext();
}

void Recordset::Find(std::string_view criterion) {
  const auto equals = criterion.find('=');
  std::int64_t id = 0;
  const std::string_view number = equals == std::string_view::npos ? std::string_view() : criterion.substr(equals + 1);
  const auto end = std::from_chars(number.data(), number.data() + number.size(), id);
  if (!source_ || end.ec != std::errc() || end.ptr != number.data() + number.size() || number.empty()) {
    throw RuntimeError(kDatabase, "Not a criterion of the form ID=number: " + std::string(criterion));
  }
  source_->Find(std::string(Trim(criterion.substr(0, equals))), id);
}

int Recordset::ColumnIndex(std::string_view name) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (EqualNoCase(columns_[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

const Column& Recordset::ColumnOf(std::string_view name) const {
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
  return source_->Field(column);
}

}  // namespace tarvolinex
