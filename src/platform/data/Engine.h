// One kind of database, as Connection and Recordset use it. A body for each stands in a source of its own, and says in
// one place what that database must be told in other words.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/data/Values.h"

namespace tarvolinex {

// A statement that the database refused; the description names both.
class StatementFailure : public RuntimeError {
 public:
  StatementFailure(std::string why, std::string_view statement)
      : RuntimeError(kDatabase, why + ": " + std::string(statement)), why_(std::move(why)) {}
  const std::string& Why() const { return why_; }

 private:
  std::string why_;
};

// Takes the texts of a row; they live until it returns.
using RowReader = std::function<void(const std::vector<std::string_view>& texts)>;

// The rows of one SELECT. Its functions are those of Recordset; each throws RuntimeError.
class RowSource {
 public:
  virtual ~RowSource() = default;
  virtual const std::vector<Column>& Columns() = 0;
  virtual bool AtEnd() = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;  // REQUIRES: not AtEnd
  virtual void Find(const std::string& column, std::int64_t id) = 0;
  virtual Value Field(int column) = 0;  // REQUIRES: not AtEnd
  virtual void ReadRows(const std::string& list, std::size_t columns, const RowReader& read) = 0;
};

// The value of one column of one of several rows.
using RowValue = std::function<const Value&(std::size_t row, std::size_t column)>;

// Asked before a database that has gone is looked for again: which attempt it is, from 1, and why the last one failed.
// Waits as long as it sees fit; false gives up. Told with 0 when the database is back.
using LostConnection = std::function<bool(int attempt, const std::string& why)>;

// Its functions are those of Connection; each throws StatementFailure, or RuntimeError where no statement is at fault.
class Engine {
 public:
  virtual ~Engine() = default;
  virtual std::unique_ptr<RowSource> Select(std::string_view statement, bool rowsLater) = 0;
  virtual void Foresee(const std::vector<std::string>&) {}
  virtual void Execute(std::string_view statement) = 0;
  virtual void InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                          const RowValue& valueOf) = 0;
  virtual void Begin() = 0;
  virtual void BeginReading() = 0;
  virtual void Flush() = 0;
  virtual void Commit() = 0;
  virtual void Rollback() = 0;
  virtual int LastInsertedId() = 0;
  virtual int ChangedRows() = 0;
  virtual int LargestIdGiven(std::string_view table) = 0;
  virtual void KeepIdsAbove(std::string_view table, int id) = 0;
  virtual std::string Version() = 0;
  virtual std::string Told() = 0;
  virtual bool UnsureWasStored() = 0;
  virtual int SchemaVersion() = 0;
  virtual void SetSchemaVersion(int version) = 0;
  virtual bool HasTable(std::string_view name) = 0;
  virtual void MakeTable(const TableDesign& design) = 0;
  virtual bool IsFile() const = 0;
  virtual bool MayWrite() = 0;
  virtual void CopyTo(std::string_view path, const std::function<void()>& pause) = 0;
  virtual bool Hold(std::string_view /*name*/) { return true; }
  virtual void LetGo(std::string_view /*name*/) {}
  virtual void WhenLost(const LostConnection& /*lost*/) {}
};

// REQUIRES: a connection string of that engine.
std::unique_ptr<Engine> OpenSqlite(std::string_view connectionString);
std::unique_ptr<Engine> OpenPostgres(std::string_view connectionString);

}  // namespace tarvolinex
