#include "store/Database.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"
#include "platform/text/Translation.h"
#include "store/SharedDatabase.h"

namespace tarvolinex {

Database::Database(Reporter& reporter) : reporter_(reporter) {
  connection_.WhenLost([this](int attempt, const std::string& why) { return WaitForServer(attempt, why); });
}

bool Database::WaitForServer(int attempt, const std::string& why) {
  using std::chrono::milliseconds;
  static constexpr std::array kPauses = {0, 200, 500, 1000, 2000, 4000, 8000, 15000};
  if (attempt == 0) {
    givenUp_ = false;
    reporter_.SetStatus(false, "", -1);
    return true;
  }
  if (givenUp_ && !lossEnds_) return attempt == 1;
  const std::size_t turn = static_cast<std::size_t>(attempt - 1) % kPauses.size();
  if (turn == 0 && attempt > 1) {
    const std::string question =
        Tr("The database server does not answer :-\n\n%1\n\nWhat you have typed is kept. "
           "Go on trying?",
           {why});
    if (reporter_.MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Question) !=
        Answer::Yes) {
      return GiveUp();
    }
  }
  const bool stoppedBefore = reporter_.Stopped();  // that was meant for other work
  const auto stopped = [&] { return reporter_.Stopped() && !stoppedBefore; };
  reporter_.SetStatus(false, "The database server does not answer. It is being tried again", 50);
  const auto end = std::chrono::steady_clock::now() + milliseconds(kPauses[turn]);
  while (std::chrono::steady_clock::now() < end && !stopped()) {
    reporter_.Repaint();
    std::this_thread::sleep_for(milliseconds(50));
  }
  return !stopped() || GiveUp();
}

bool Database::GiveUp() {
  givenUp_ = true;
  reporter_.SetStatus(false, "", -1);
  return false;
}

void Database::Open(const std::string& folder, const std::string& shared) {
  folder_ = folder;
  readOnly_ = givenUp_ = false;
  name_ = shared.empty() ? folder : DatabaseName(shared);
  const std::string path = folder + "\\Tarvolinex.mdb";
  if (shared.empty()) {
    connection_.Open("driver={Microsoft Access Driver (*.mdb)};dbq=" + path);
  } else {
    OpenShared(shared, connection_);
  }
  try {
    Check(shared.empty() ? path : name_);
  } catch (const RuntimeError&) {
    connection_.Close();
    throw;
  }
}

void Database::OpenToRead(const std::string& folder, const std::string& path, const std::string& name) {
  connection_.Open("driver={Microsoft Access Driver (*.mdb)};dbq=" + path);
  folder_ = folder;
  name_ = name;
  readOnly_ = true;
}

// Whether it is a database that this version works on.
void Database::Check(const std::string& name) {
  RefuseNewer(connection_, name);
  for (const char* table : {"suppliers", "DefaultSupplier", "SupplierFormLink", "Forms", "contacts"}) {
    if (connection_.HasTable(table)) continue;
    throw RuntimeError(kDatabase, Tr("The database %1 cannot be opened: it has no table %2", {name, table}));
  }
  user_ = LoginName();
  if (connection_.IsFile()) return;
  Recordset user;
  user.Open("SELECT session_user AS name", connection_);
  user_ = ValueText(user.Field(0));
  user.Close();
  readOnly_ = !connection_.MayWrite();
  if (!readOnly_) tarvolinex::BringTo(connection_, kNewestStep);
}

void Database::Report(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& failure) {
    if (!lossEnds_ && failure.Number() == kDatabaseGone) throw;
    const auto& errors = connection_.Errors();
    reporter_.ShowError(
        errors.empty() ? Tr("Database update failed") : Tr("Database update failed.\n\n%1", {errors.front()}), true);
  }
}

void Database::DemandWritable() const {
  if (readOnly_) throw RuntimeError(kDatabase, Tr("Nothing can be stored: this database can only be read"));
}

void Database::OpenRecordset(std::string_view statement, Recordset& recordSet, bool readFirst) {
  try {
    recordSet.Open(statement, connection_, readFirst ? Recordset::Rows::Now : Recordset::Rows::Later);
    if (readFirst) static_cast<void>(recordSet.EndOfFile());
  } catch (const RuntimeError& failure) {
    if (!lossEnds_ && failure.Number() == kDatabaseGone) throw;
    reporter_.ShowError("Database Error", true);
  }
}

void Database::ExecuteStatement(std::string_view statement) {
  KeepDailyCopy();
  Report([&] { connection_.Execute(statement); });
}

void Database::BringTo(SchemaStep step) {
  if (!connection_.IsFile()) return;  // it has been when it was opened
  Report([&] { tarvolinex::BringTo(connection_, step); });
}

void Database::KeepDailyCopy() {
  if (connection_.InTransaction() || !connection_.IsFile()) return;
  const std::string today = IsoDate(reporter_.Now());
  if (copied_ == folder_ + " " + today) return;
  copied_ = folder_ + " " + today;
  try {
    Copy(today);
  } catch (const RuntimeError&) {
    // A full disk or a folder without rights must not keep the user from saving.
  }
}

void Database::Copy(const std::string& today) {
  constexpr std::size_t kCopiesKept = 5;
  const std::string folder = folder_ + "\\Backup";
  const std::string copy = folder + "\\Tarvolinex " + today + ".mdb";
  if (!FolderExists(folder)) MakeFolder(folder);
  // Of copies that were killed, on whatever day; older versions gave them these names.
  RemoveUnfinished(folder);
  for (const std::string& name : ListFiles(folder + "\\Tarvolinex *.mdb.*tmp*")) DeleteFile(folder + "\\" + name);
  if (FileExists(copy)) return;
  connection_.CopyTo(copy, [this] { reporter_.Repaint(); });
  // Dates sort by themselves; the oldest come first. What is dated after today was made while the clock was wrong, or
  // is right while it is wrong now: either way it is older than what is made today.
  auto copies = ListFiles(folder + "\\Tarvolinex *.mdb");
  const std::string latest = FileNameOf(copy);
  std::stable_partition(copies.begin(), copies.end(), [&](const std::string& name) { return name > latest; });
  for (std::size_t i = 0; i + kCopiesKept < copies.size(); ++i) DeleteFile(folder + "\\" + copies[i]);
}

Transaction::Transaction(Database& database) : database_(database) {
  database_.KeepDailyCopy();
  database_.Report([&] { database_.connection_.Begin(); });
}

Transaction::~Transaction() {
  Abandon();
}

void Transaction::Abandon() {
  if (!std::exchange(open_, false)) return;
  database_.connection_.Rollback();
}

void Transaction::Commit() {
  database_.Report([&] { database_.connection_.Commit(); });
  open_ = false;
}

}  // namespace tarvolinex
