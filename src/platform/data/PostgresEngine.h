// The database on a server of PostgreSQL's, which several desks share.
//
// One desk at a time stores something: a transaction, and a statement outside one, first takes a lock that all desks
// take, as the file's is taken. So nothing is retried and no two wait for each other; what is read inside a transaction
// is as it will be when it is stored. The statements of a transaction travel together, as late as their results allow:
// a save is a round trip and the one that makes it final.
//
// Every change is counted by its table's trigger and told on the channel "tarvolinex" as "PROCESS TABLE".
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/data/Engine.h"
#include "platform/data/PostgresCatalogue.h"
#include "platform/data/PostgresSession.h"

namespace tarvolinex {

// A value of a result.
inline std::string_view ValueAt(const PGresult* result, int row, int column) {
  return {PQgetvalue(result, row, column), static_cast<std::size_t>(PQgetlength(result, row, column))};
}

// The first column of the first row; empty = there is none.
std::string TextOf(const PGresult* result);
// The number that such a text begins with; 0 = none.
int WholeNumber(const std::string& text);

class PostgresEngine final : public Engine {
 public:
  explicit PostgresEngine(std::string_view connectionString);

  std::unique_ptr<RowSource> Select(std::string_view statement, bool rowsLater) override;
  PostgresResult Rows(const std::string& statement, std::string_view original);
  std::vector<Column> ColumnsOf(const PGresult* result);
  const PostgresCatalogue& Catalogue() const { return catalogue_; }

  void Foresee(const std::vector<std::string>& statements) override;
  void Execute(std::string_view statement) override;
  void InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                  const RowValue& valueOf) override;
  void Begin() override {
    Forget();
    foreseen_.clear();
    inTransaction_ = true;
  }
  void BeginReading() override {
    Begin();
    reading_ = true;
  }
  void Flush() override {
    if (inTransaction_ && (!begun_ || !waiting_.empty())) RunWith({});
  }
  void Commit() override;
  void Rollback() override;

  int LastInsertedId() override {
    SendWaiting();
    if (inTransaction_) KeepLastId();
    return lastId_;
  }
  int ChangedRows() override {
    SendWaiting();
    return changedRows_;
  }
  int LargestIdGiven(std::string_view table) override;
  void KeepIdsAbove(std::string_view table, int id) override;
  int SchemaVersion() override;
  void SetSchemaVersion(int version) override;
  std::string Version() override;
  std::string Told() override;
  bool UnsureWasStored() override;
  bool HasTable(std::string_view name) override;
  void MakeTable(const TableDesign& design) override;
  bool IsFile() const override { return false; }
  bool MayWrite() override;
  void CopyTo(std::string_view path, const std::function<void()>& pause) override;
  bool Hold(std::string_view name) override;
  void LetGo(std::string_view name) override;
  void WhenLost(const LostConnection& lost) override { session_.WhenLost(lost); }

 private:
  // The lock that whoever stores something holds.
  static constexpr const char* kLock = "8427010557";
  // A statement of the transaction that is under way, with what came of it.
  struct Step {
    std::string text, original;
    bool writes = false;
    std::string result = {};  // what it gave, an ID or rows
  };
  void ReadCatalogue();
  void SendWaiting() {
    if (!waiting_.empty()) RunWith({});
  }
  void Queue(std::string text, std::string_view original, bool writes);
  PostgresResult RunWith(std::optional<Step> last);
  std::vector<Sent> Opening() const;
  PostgresResult RunOutside(const Sent& statement);
  PostgresResult Foreseen(const std::string& statement);
  void Note(const Step& step, const PGresult* result);
  void KeepLastId();
  void Replay(const std::string& why);
  std::vector<Sent> Mark() const;
  bool WasStored();
  bool WasStoredBefore(const ConnectionLost& loss);
  void Forget();

  PostgresSession session_;
  PostgresCatalogue catalogue_;
  bool inTransaction_ = false, reading_ = false;
  std::map<std::string, PostgresResult> foreseen_;  // by the text for the server
  std::chrono::steady_clock::time_point foreseenAt_;
  std::vector<Step> done_;     // of the transaction, on the server
  std::vector<Step> waiting_;  // and still here
  bool begun_ = false;         // the server may have begun it
  bool open_ = false;          // and has
  bool tablesChanged_ = false;
  int lastId_ = 0, changedRows_ = 0;
  std::string desk_;     // under which its saves are marked
  int save_ = 0;         // the number of the last one
  bool marked_ = false;  // one has been
  bool unsure_ = false;  // nobody has told whether the last one was stored
};

}  // namespace tarvolinex
