// The database that a window or a command works on. Its owner hands it down; everything reaches the file through the
// three operations below it: open a record set, execute a statement, execute several together.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/Reports.h"
#include "platform/data/Database.h"
#include "store/Schema.h"

namespace tarvolinex {

class Database {
 public:
  // The reporter must outlive the database. It tells of a statement that failed, which ends the program, and that the
  // server has gone and is waited for, at growing intervals and, from time to time, when the user says so.
  explicit Database(Reporter& reporter);

  // Opens the folder's Tarvolinex.mdb, or the database on a server that the connection string names, closing what is
  // open. The tables of one on a server are brought to this version's, unless this user may only read. A password that
  // is missing comes from the desktop's key store. Throws RuntimeError when there is none, or it is no database of
  // ours, or a newer version's; none is open then.
  void Open(const std::string& folder, const std::string& shared = {});
  // Opens a file to look at it only. name: for people. Throws RuntimeError as above.
  void OpenToRead(const std::string& folder, const std::string& path, const std::string& name);
  void Close() { connection_.Close(); }
  bool IsOpen() const { return connection_.IsOpen(); }
  // Of the file that was opened last; of one on a server, where this desk keeps its pages and pictures.
  const std::string& Folder() const { return folder_; }
  // For people: the folder, or "NAME on HOST".
  const std::string& Name() const { return name_; }
  // Who works at this desk: the user of the server, or of a file the user of the machine.
  const std::string& User() const { return user_; }
  std::chrono::system_clock::time_point Now() const { return reporter_.Now(); }
  // The server lets this user store nothing.
  bool ReadOnly() const { return readOnly_; }
  // Throws RuntimeError then.
  void DemandWritable() const;
  // The server did not answer, and the user would not wait for it any more; until it is reached again.
  bool GivenUp() const { return givenUp_; }

  // For whoever has more to tell of a failure than that it came: what it throws is RuntimeError.
  Connection& Plain() { return connection_; }

  // Closes the record set and opens it on the statement. A failure is the fatal report "Database Error".
  // readFirst false: for whoever does not look at the rows one by one; a failure to read then shows itself later.
  void OpenRecordset(std::string_view statement, Recordset& recordSet, bool readFirst = true);

  // One action statement. A failure is a fatal report: "Database update failed." with the first error of the
  // connection.
  void ExecuteStatement(std::string_view statement);
  // The same of several steps on the connection.
  void Report(const std::function<void()>& action);

  // Makes the tables that are missing up to this step. A failure is as above.
  void BringTo(SchemaStep step);

  // Before the first write of a day: copies the database to "Backup" in its folder, named by the date, and keeps the
  // five newest. A copy that cannot be made is passed over; the work in hand goes on. Nothing inside a transaction, and
  // nothing of a server, which is copied by whoever keeps it.
  void KeepDailyCopy();

 private:
  friend class Transaction;
  friend class GoesOnWithout;
  void Copy(const std::string& today);
  bool WaitForServer(int attempt, const std::string& why);
  bool GiveUp();
  void Check(const std::string& name);
  Reporter& reporter_;
  Connection connection_;
  std::string folder_, name_, user_;
  bool readOnly_ = false;
  bool givenUp_ = false;
  bool lossEnds_ = true;  // that the server is gone ends the program
  std::string copied_;    // folder and day of the last daily copy
};

// While it lives, a server that nobody waits for any more is no fatal report: whoever met it gets the RuntimeError
// kDatabaseGone, and can go on later. Once the user has given up it is tried once each time, without waiting.
class GoesOnWithout {
 public:
  explicit GoesOnWithout(Database& database) : database_(database), before_(std::exchange(database.lossEnds_, false)) {}
  ~GoesOnWithout() { database_.lossEnds_ = before_; }
  GoesOnWithout(const GoesOnWithout&) = delete;
  GoesOnWithout& operator=(const GoesOnWithout&) = delete;

 private:
  Database& database_;
  const bool before_;
};

// What is executed while it lives is stored together in Commit, or not at all.
class Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit();
  // Nothing is stored.
  void Abandon();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace tarvolinex
