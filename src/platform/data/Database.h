// The database as the program expects it: a connection that executes statements, and read-only record sets. The file
// behind it is one that other programs open too while ours is closed: Yes/No columns hold 0 and 1, Currency columns
// decimals.
//
// Statements are read as the program writes them: YES, NO, TRUE and FALSE outside quotes are values, names of tables
// and columns are case-blind, and so are ORDER BY and LIKE.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/text/Currency.h"

struct sqlite3;
struct sqlite3_stmt;

namespace tarvolinex {

enum class ColumnType { WholeNumber, Currency, Single, Double, YesNo, Text, Date };

struct Null {
  bool operator==(const Null&) const = default;
};
// Text and dates arrive as texts, and so does a text that another program has stored in a column of numbers.
using Value = std::variant<Null, std::int64_t, Currency, float, double, bool, std::string>;

inline bool IsNull(const Value& value) {
  return std::holds_alternative<Null>(value);
}
// As text for a person or a statement: Null is empty, Currency and numbers are plain decimals, Yes/No "True"/"False".
std::string ValueText(const Value& value);
// As a number: Null, and text that is none, are 0; Yes/No -1 or 0.
double ValueNumber(const Value& value);
bool ValueTruth(const Value& value);

class Connection {
 public:
  Connection() = default;
  ~Connection() { Close(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // connectionString: "driver={...};dbq=PATH", the path to the end. The file must exist and be a database; otherwise
  // RuntimeError.
  void Open(std::string_view connectionString);
  void Close();
  bool IsOpen() const { return database_ != nullptr; }
  bool HasTable(std::string_view name);  // case-blind

  // One action statement, whole or not at all. Throws RuntimeError when it fails; Errors then describes why.
  void Execute(std::string_view statement);
  const std::vector<std::string>& Errors() const { return errors_; }
  // Adds rows to a table, each with a value for every one of the columns, as Execute would add them one by one but with
  // no statement a row. The values live until it returns. Throws RuntimeError, with the table and the row's number from
  // 1, when one fails; those before it are then in the transaction. REQUIRES: InTransaction.
  using RowValue = std::function<const Value&(std::size_t row, std::size_t column)>;
  void InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                  const RowValue& valueOf);
  // The ID that the last INSERT of this connection was given; 0 before the first one.
  int LastInsertedId() const;

  // Copies the database, as it is between two statements, to a new file, whole or not at all. `pause` is called now and
  // then meanwhile and may not use the connection. Throws RuntimeError.
  void CopyTo(std::string_view path, const std::function<void()>& pause);

  // Statements between Begin and Commit are stored together or not at all. They do not nest: the innermost pair of
  // nested ones does nothing.
  void Begin();
  void Commit();
  void Rollback();
  bool InTransaction() const { return depth_ > 0; }

 private:
  friend class Recordset;
  sqlite3_stmt* Prepare(std::string_view statement);
  sqlite3* database_ = nullptr;
  int depth_ = 0;
  std::vector<std::string> errors_;
};

// The rows of one SELECT, read one by one: values are those of the moment at which the row is moved to.
class Recordset {
 public:
  Recordset() = default;
  ~Recordset() { Close(); }
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Stands on the first row, which is read when it is first asked for. Throws RuntimeError. The connection must stay
  // open until Close.
  void Open(std::string_view statement, Connection& connection);
  void Close();
  bool IsOpen() const { return rows_ != nullptr; }

  // The row is read when it is first asked for: a Find that follows costs nothing but itself.
  void MoveFirst();
  void MoveNext();
  bool EndOfFile() const;
  // criterion: "ID=" and a whole number. Stands on the row with that ID, of the whole set, or at the end when there
  // is none. After a row was found, MoveNext goes to the end.
  void Find(std::string_view criterion);

  // Gives the named columns of every row as texts, ordered by ID: for a long set much faster than moving through it,
  // because only these columns are read and nothing is sorted. A column that the set lacks, and Null, are empty. The
  // texts live until the reader returns. Where the set stands does not change.
  using RowReader = std::function<void(const std::vector<std::string_view>& texts)>;
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
  struct Column {
    std::string name;
    ColumnType type;
    int size;
  };
  const Column& ColumnOf(std::string_view name) const;
  void Step(sqlite3_stmt* statement) const;
  Connection* connection_ = nullptr;
  std::string statement_;
  std::vector<Column> columns_;
  sqlite3_stmt* rows_ = nullptr;
  sqlite3_stmt* found_ = nullptr;
  mutable sqlite3_stmt* current_ = nullptr;  // the one of the two that stands on a row
  std::vector<Value> foundRow_;              // its values, when Find stands on it
  mutable bool firstDue_ = false;            // MoveFirst has still to read its row
};

}  // namespace tarvolinex
