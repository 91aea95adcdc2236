// The database as the program expects it: a connection that executes statements, and read-only record sets. Behind it
// stands a file (SQLite), which other programs open too while ours is closed: Yes/No columns hold 0 and 1, Currency
// columns decimals; or a server (PostgreSQL), which several desks share.
//
// Statements are read as the program writes them: YES, NO, TRUE and FALSE outside quotes are values, names of tables
// and columns are case-blind, and so are ORDER BY and LIKE.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Engine.h"
#include "platform/data/Values.h"

namespace tarvolinex {

class Connection {
 public:
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // connectionString: "driver={...};dbq=PATH", the path to the end; the file must exist and be a database. Or
  // "driver={PostgreSQL};server=HOST;port=N;database=NAME;uid=USER;sslmode=MODE", of which only the first and the
  // database are needed, perhaps with "wait=SECONDS" for another desk that is storing something (10); the password is
  // the machine's own matter (.pgpass) or stands behind as "pwd=PASSWORD". To another machine the connection is
  // encrypted and its certificate proved, or there is none. Otherwise RuntimeError; kDatabasePassword when it is a
  // password that was missing or wrong.
  void Open(std::string_view connectionString);
  void Close();
  bool IsOpen() const { return engine_ != nullptr; }
  bool IsFile() const { return !engine_ || engine_->IsFile(); }
  // Whether the server lets this user store anything; of a file it shows when it is tried.
  bool MayWrite();

  bool HasTable(std::string_view name);  // case-blind
  // Nothing when there is a table of that name.
  void MakeTable(const TableDesign& design);

  // The SELECTs that are opened next, within a second and without anything else between them: a server is asked for all
  // of them at once. One that fails does so when it is opened.
  void Foresee(const std::vector<std::string>& statements);

  // One action statement, whole or not at all. Throws RuntimeError when it fails; Errors then describes why. Inside a
  // transaction a server may be told later, at the latest by Flush or Commit, which then throws. After Flush it keeps
  // the other desks from storing anything.
  void Execute(std::string_view statement);
  void Flush();
  const std::vector<std::string>& Errors() const { return errors_; }
  // Adds rows to a table, each with a value for every one of the columns, as Execute would add them one by one but with
  // no statement a row. The values live until it returns. Throws RuntimeError, with the table and the row's number from
  // 1 or those among which it is, when one fails; those before it are then in the transaction. REQUIRES: InTransaction.
  using RowValue = tarvolinex::RowValue;
  void InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                  const RowValue& valueOf);
  // The ID that the last INSERT of this connection was given; 0 before the first one.
  int LastInsertedId();
  // How many rows the last action statement has changed.
  int ChangedRows();
  // The largest ID that the table has ever given; 0 where nobody remembers, or this user may not know.
  int LargestIdGiven(std::string_view table);
  // It gives none up to this one from now on.
  void KeepIdsAbove(std::string_view table, int id);
  // Another text once another program has stored something, perhaps already while it does.
  std::string Version();
  // The same once it can be read, without asking a server: that tells by itself, moments later. Who stores something on
  // the strength of what he has read asks for Version. REQUIRES: not InTransaction.
  std::string Told();
  // Whether the last Commit, when it ended in kDatabaseGone, was stored all the same. REQUIRES: not InTransaction.
  // Throws RuntimeError when nobody can tell yet.
  bool UnsureWasStored();

  // Something at the database, by its name, that one program at a time does: false when another one holds it. Of a file
  // always true: it is locked by a file beside it. After a lost connection it is taken again, when nobody has it.
  bool Hold(std::string_view name);
  void LetGo(std::string_view name);

  // A number that the database remembers; 0 in a new one.
  int SchemaVersion();
  void SetSchemaVersion(int version);

  // Copies the database, as it is between two statements, to a new file, whole or not at all. `pause` is called now and
  // then meanwhile and may not use the connection. Throws RuntimeError, of a server always.
  void CopyTo(std::string_view path, const std::function<void()>& pause);

  // What is read from here to Rollback is of one moment; others go on storing. REQUIRES: not InTransaction.
  void BeginReading();

  // Statements between Begin and Commit are stored together or not at all. They do not nest: the innermost pair of
  // nested ones does nothing. One program at a time stores something; the others wait for it, some seconds at most.
  void Begin();
  void Commit();
  void Rollback();  // never fails
  bool InTransaction() const { return depth_ > 0; }

  // What is done when the server has gone. Without it, it is looked for during some seconds. Once it is back, what was
  // going on goes on: a transaction is stored once or, with a RuntimeError, not at all.
  void WhenLost(LostConnection lost);

 private:
  friend class Recordset;
  template <typename Action>
  auto Do(Action action);
  std::unique_ptr<Engine> engine_;
  LostConnection lost_;
  int depth_ = 0;
  std::vector<std::string> errors_;
};

// The rows of one SELECT, read one by one: values are those of the moment at which the row is moved to; from a server,
// of the moment at which the set was opened.
class Recordset {
 public:
  // Of whoever calls nothing but ReadRows: no row is read before.
  enum class Rows { Now, Later };

  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Stands on the first row, which is read when it is first asked for. Throws RuntimeError. The connection must stay
  // open until Close.
  void Open(std::string_view statement, Connection& connection, Rows rows = Rows::Now);
  void Close() { source_.reset(); }
  bool IsOpen() const { return source_ != nullptr; }

  // The row is read when it is first asked for: a Find that follows costs nothing but itself.
  void MoveFirst();
  void MoveNext();
  bool EndOfFile() const { return !source_ || source_->AtEnd(); }
  // criterion: "ID=" and a whole number. Stands on the row with that ID, of the whole set, or at the end when there
  // is none. After a row was found, MoveNext goes to the end.
  void Find(std::string_view criterion);

  // Gives the named columns of every row as texts, ordered by ID: for a long set much faster than moving through it,
  // because only these columns are read and nothing is sorted. A column that the set lacks, and Null, are empty. The
  // texts live until the reader returns. Where the set stands does not change.
  using RowReader = tarvolinex::RowReader;
  void ReadRows(const std::vector<std::string>& columns, const RowReader& read) const;

  int ColumnCount() const { return static_cast<int>(columns_.size()); }
  const std::string& ColumnName(int column) const { return columns_.at(static_cast<std::size_t>(column)).name; }
  ColumnType TypeOf(int column) const { return columns_.at(static_cast<std::size_t>(column)).type; }
  int DefinedSize(int column) const { return columns_.at(static_cast<std::size_t>(column)).size; }
  // -1 when there is no such column. Names are case-blind.
  int ColumnIndex(std::string_view name) const;
  // Throw RuntimeError 3265 for a column that the set lacks.
  ColumnType TypeOf(std::string_view column) const;
  int DefinedSize(std::string_view column) const;  // characters of a text column, bytes of the others
  // Throws 3265 as above, 3021 when the set stands at its end.
  Value Field(std::string_view column) const;
  Value Field(int column) const;

 private:
  const Column& ColumnOf(std::string_view name) const;
  std::string statement_;
  std::vector<Column> columns_;
  std::unique_ptr<RowSource> source_;
};

}  // namespace tarvolinex
