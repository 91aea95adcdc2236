#include "platform/data/PostgresEngine.h"

#include <algorithm>
#include <charconv>
#include <random>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/PostgresDialect.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// The lock that whoever stores something holds.
constexpr std::string_view kLock = "8427010557";

// Where the last save of each desk stands. By that alone is known whether one was stored whose end nobody has told: the
// server's own number of a transaction is given once more after a crash.
constexpr const char* kSaves = "tarvolinex_saves";

std::string NewDesk() {
  std::random_device random;
  std::string desk;
  for (int i = 0; i < 4; ++i) desk += std::to_string(random()) + ".";
  return desk;
}

std::string TextOf(const PGresult* result) {
  return PQntuples(result) > 0 && PQnfields(result) > 0 ? std::string(ValueAt(result, 0, 0)) : std::string();
}

// Of what one desk at a time does, by its name.
std::string Lock(const char* function, std::string_view name) {
  return std::string("SELECT ") + function + "(hashtextextended('tarvolinex " + std::string(name) + "', 0))";
}

int NumberIn(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// Everything that a result holds, to be compared.
std::string ContentOf(const PGresult* result) {
  std::string content;
  for (int row = 0; row < PQntuples(result); ++row) {
    for (int column = 0; column < PQnfields(result); ++column) {
      content += PQgetisnull(result, row, column) ? "\x01" : ValueAt(result, row, column);
      content += '\x02';
    }
  }
  return content;
}

}  // namespace

PostgresEngine::PostgresEngine(std::string_view connectionString) : session_(connectionString), desk_(NewDesk()) {
  ReadCatalogue();
}

void PostgresEngine::ReadCatalogue() {
  catalogue_.Read(Rows(PostgresCatalogue::Statement(), "").get());
}

void PostgresEngine::Forget() {
  inTransaction_ = reading_ = begun_ = open_ = false;
  done_.clear();
  waiting_.clear();
}

// What begins the transaction.
std::vector<Sent> PostgresEngine::Opening() const {
  if (reading_) return {{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"}};
  return {{"BEGIN"}, {"SELECT pg_advisory_xact_lock(" + std::string(kLock) + ")"}};
}

// A statement outside a transaction, which changes nothing and can be run again.
PostgresResult PostgresEngine::RunOutside(const Sent& statement) {
  for (;;) {
    try {
      return std::move(session_.Run({statement}).front());
    } catch (const ConnectionLost& lost) {
      session_.Reconnect(lost.why);
    }
  }
}

// A result that was asked for before, and has not grown old; nullptr when there is none.
PostgresResult PostgresEngine::Foreseen(const std::string& statement) {
  const auto found = foreseen_.find(statement);
  if (found == foreseen_.end() || std::chrono::steady_clock::now() - foreseenAt_ > std::chrono::seconds(1)) {
    foreseen_.clear();
    return {};
  }
  PostgresResult result = std::move(found->second);
  foreseen_.erase(found);
  return result;
}

void PostgresEngine::Foresee(const std::vector<std::string>& statements) {
  foreseen_.clear();
  if (inTransaction_) return;
  std::vector<Sent> sent;
  for (const std::string& each : statements) {
    sent.push_back({PostgresStatement(each, catalogue_) + OwnOrder(each, catalogue_)});
  }
  try {
    std::vector<PostgresResult> results = session_.Run(sent);
    for (std::size_t i = 0; i < sent.size(); ++i) foreseen_[sent[i].text] = std::move(results[i]);
    foreseenAt_ = std::chrono::steady_clock::now();
  } catch (const StatementFailure&) {
    // It fails once more when it is opened.
  } catch (const ConnectionLost& lost) {
    session_.Reconnect(lost.why);
  }
}

PostgresResult PostgresEngine::Rows(const std::string& statement, std::string_view original) {
  if (!inTransaction_) {
    PostgresResult foreseen = Foreseen(statement);
    return foreseen ? std::move(foreseen) : RunOutside({statement, original});
  }
  return RunWith(Step{statement, std::string(original), false});
}

// What came of a step of the transaction.
void PostgresEngine::Note(const Step& step, const PGresult* result) {
  if (!step.writes || step.original.empty()) return;
  const std::string id = TextOf(result), changed = PQcmdTuples(const_cast<PGresult*>(result));
  if (PQresultStatus(result) == PGRES_TUPLES_OK && !id.empty()) lastId_ = NumberIn(id);
  changedRows_ = NumberIn(changed);
}

// Runs the steps that wait, and one more if there is one, whose result it gives.
PostgresResult PostgresEngine::RunWith(std::optional<Step> last) {
  std::vector<Step> steps = std::exchange(waiting_, {});
  if (last) steps.push_back(std::move(*last));
  std::vector<PostgresResult> results;
  for (;;) {
    try {
      std::vector<Sent> sent = open_ ? std::vector<Sent>() : Opening();
      const auto first = static_cast<std::ptrdiff_t>(sent.size());
      begun_ = true;
      for (const Step& step : steps) sent.push_back({step.text, step.original});
      results = session_.Run(sent);
      open_ = true;
      results.erase(results.begin(), results.begin() + first);
      break;
    } catch (const ConnectionLost& lost) {
      Replay(lost.why);
    }
  }
  for (std::size_t i = 0; i < steps.size(); ++i) {
    Note(steps[i], results[i].get());
    steps[i].result = ContentOf(results[i].get());
    done_.push_back(std::move(steps[i]));
  }
  return results.empty() ? PostgresResult() : std::move(results.back());
}

// Somebody goes on with the ID that was given last: should its row have to be added once more, it gets the same.
void PostgresEngine::KeepLastId() {
  for (auto step = done_.end(); step != done_.begin();) {
    --step;
    const std::string again = WithId(step->text, lastId_);
    if (again.empty()) continue;
    if (!TableOfGivenIds(step->text, catalogue_).empty()) return;
    step->text = again;
    done_.insert(step + 1, {FollowLargestId(TableOfGivenIds(again, catalogue_)), "", true});
    return;
  }
}

// After a loss: brings a new connection to where the transaction stood. What the program has read in it must still be
// so; otherwise nothing is stored.
void PostgresEngine::Replay(const std::string& lostBy) {
  std::string why = lostBy;
  for (;;) {
    session_.Reconnect(why);
    begun_ = open_ = false;
    if (done_.empty()) return;
    try {
      std::vector<Sent> sent = Opening();
      const std::size_t first = sent.size();
      begun_ = true;
      for (const Step& step : done_) sent.push_back({step.text, step.original});
      const auto results = session_.Run(sent);
      open_ = true;
      bool same = true;
      for (std::size_t i = 0; i < done_.size(); ++i) {
        const PGresult* result = results[first + i].get();
        Note(done_[i], result);
        same = same && (done_[i].writes || done_[i].result == ContentOf(result));
      }
      if (same) return;
      throw RuntimeError(kDatabaseGone,
                         Tr("the connection was lost and the database has changed meanwhile; nothing was stored") +
                             ": " + done_.back().original);
    } catch (const ConnectionLost& lost) {
      why = lost.why;
    }
  }
}

void PostgresEngine::Queue(std::string text, std::string_view original, bool writes) {
  constexpr std::size_t kMostWaiting = 200;
  waiting_.push_back({std::move(text), std::string(original), writes});
  if (waiting_.size() >= kMostWaiting) RunWith({});
}

void PostgresEngine::Execute(std::string_view statement) {
  const bool alone = !inTransaction_;
  if (alone) Begin();
  try {
    Queue(PostgresStatement(statement, catalogue_), statement, true);
    const std::string table = TableOfGivenIds(statement, catalogue_);
    if (!table.empty()) Queue(FollowLargestId(table), "", true);
    if (alone) Commit();
  } catch (const RuntimeError&) {
    if (alone) Rollback();
    throw;
  }
  if (!ChangesTables(statement)) return;
  tablesChanged_ = inTransaction_;
  ReadCatalogue();
}

void PostgresEngine::InsertRows(std::string_view table, const std::vector<std::string>& columns, std::size_t rows,
                                const RowValue& valueOf) {
  constexpr std::size_t kAtOnce = 500;
  for (std::size_t first = 0; first < rows; first += kAtOnce) {
    const std::size_t end = std::min(first + kAtOnce, rows);
    waiting_.push_back({PostgresInsertion(table, columns, first, end, valueOf, catalogue_),
                        std::string(table) + ", rows " + std::to_string(first + 1) + " to " + std::to_string(end),
                        true});
    RunWith({});
  }
  if (catalogue_.GivesIds(table)) Queue(FollowLargestId(table), "", true);
}

// What notes this save, and makes the table of them where there is none; those of desks that are long gone are removed.
std::vector<Sent> PostgresEngine::Mark() const {
  std::vector<Sent> sent;
  const std::string table = kSaves;
  if (!marked_ && !catalogue_.HasTable(table)) {
    sent.push_back({"CREATE TABLE IF NOT EXISTS " + table +
                    " (desk text PRIMARY KEY, save integer NOT NULL, at timestamptz NOT NULL)"});
  }
  if (!marked_) sent.push_back({"DELETE FROM " + table + " WHERE at < now() - interval '30 days'"});
  sent.push_back({"INSERT INTO " + table + " VALUES('" + desk_ + "', " + std::to_string(save_) +
                  ", now()) ON CONFLICT (desk) DO UPDATE SET save = excluded.save, at = excluded.at"});
  return sent;
}

// Whether the save whose end nobody told was stored. Its process has been ended, may take its time, and holds the lock
// for as long.
bool PostgresEngine::WasStored() {
  if (!HasTable(kSaves)) return false;
  for (;;) {
    try {
      const auto results = session_.Run({{"BEGIN"},
                                         {"SET LOCAL lock_timeout = 0"},
                                         Opening().back(),
                                         {"SELECT count(*) FROM " + std::string(kSaves) + " WHERE desk = '" + desk_ +
                                          "' AND save = " + std::to_string(save_)},
                                         {"COMMIT"}});
      return TextOf(results[3].get()) == "1";
    } catch (const ConnectionLost& lost) {
      session_.Reconnect(lost.why);
    }
  }
}

// The same, once the server is found again.
bool PostgresEngine::WasStoredBefore(const ConnectionLost& loss) {
  try {
    session_.Reconnect(loss.why);
    return WasStored();
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDatabaseGone) throw;
    throw RuntimeError(kDatabaseGone, failure.Description() + "\n\n" + Tr("It may have been stored or not."));
  }
}

void PostgresEngine::Commit() {
  ++save_;
  while (open_ || !waiting_.empty()) {
    try {
      std::vector<Sent> sent = open_ ? std::vector<Sent>() : Opening();
      const std::size_t first = sent.size();
      for (const Step& step : waiting_) sent.push_back({step.text, step.original});
      const bool marks = std::ranges::any_of(done_, &Step::writes) || std::ranges::any_of(waiting_, &Step::writes);
      if (marks) std::ranges::move(Mark(), std::back_inserter(sent));
      sent.push_back({"COMMIT"});
      begun_ = true;
      const auto results = session_.Run(sent);
      for (std::size_t i = 0; i < waiting_.size(); ++i) Note(waiting_[i], results[first + i].get());
      marked_ = marked_ || marks;
      if (std::string_view(PQcmdStatus(results.back().get())) == "COMMIT") break;
      throw StatementFailure(Tr("a statement before it has failed; nothing was stored"), "COMMIT");
    } catch (const ConnectionLost& lost) {
      inTransaction_ = begun_ = false;
      if (WasStoredBefore(lost)) break;
      inTransaction_ = true;
      Replay(lost.why);
    }
  }
  Forget();
}

void PostgresEngine::Rollback() {
  const bool begun = begun_;
  Forget();
  if (!begun) return;
  try {
    session_.Run({{"ROLLBACK"}});
  } catch (const ConnectionLost&) {
    // It has rolled back by itself; the next statement looks for the server.
    tablesChanged_ = false;
  }
  if (std::exchange(tablesChanged_, false)) ReadCatalogue();
}

int PostgresEngine::LargestIdGiven(std::string_view table) {
  if (!catalogue_.GivesIds(table)) return 0;
  return NumberIn(TextOf(Rows("SELECT CASE WHEN has_sequence_privilege(ids, 'SELECT, USAGE') THEN "
                              "pg_sequence_last_value(ids) END FROM (SELECT pg_get_serial_sequence('" +
                                  FoldCase(ReplaceAll(table, "'", "")) + "', 'id')::regclass AS ids) a",
                              "")
                             .get()));
}

void PostgresEngine::KeepIdsAbove(std::string_view table, int id) {
  if (LargestIdGiven(table) < id) Queue(SetNextId(table, id), "", true);
}

// The count, and who else is storing something: what he has counted by then can be read only after his end. So the
// count is read first. Nothing for a user who may read the tables and not the sequence: this view tells him none, and
// is no failure.
std::string PostgresEngine::Version() {
  return TextOf(Rows("SELECT last_value || COALESCE((SELECT ' ' || max(virtualtransaction) FROM pg_locks WHERE "
                     "last_value > 0 AND locktype = 'advisory' AND granted AND pid <> pg_backend_pid() AND "
                     "classid::bigint = " +
                         std::string(kLock) + " >> 32 AND objid::bigint = " + std::string(kLock) +
                         " & 4294967295 AND database = (SELECT oid FROM pg_database WHERE datname = "
                         "current_database())), '') FROM pg_sequences WHERE schemaname = current_schema() AND "
                         "sequencename = 'tarvolinex_changes'",
                     "")
                    .get());
}

std::string PostgresEngine::Told() {
  for (;;) {
    try {
      return std::to_string(session_.Told());
    } catch (const ConnectionLost& lost) {
      session_.Reconnect(lost.why);
    }
  }
}

bool PostgresEngine::MayWrite() {
  return TextOf(Rows("SELECT bool_and(has_table_privilege(oid, 'INSERT') AND has_table_privilege(oid, 'UPDATE') AND "
                     "has_table_privilege(oid, 'DELETE')) FROM pg_class WHERE relkind = 'r' AND relnamespace = "
                     "current_schema()::regnamespace",
                     "")
                    .get()) != "f";
}

bool PostgresEngine::Hold(std::string_view name) {
  const std::string take = Lock("pg_try_advisory_lock", name);
  if (TextOf(RunOutside({take}).get()) != "t") return false;
  session_.AfterReconnecting(take);
  return true;
}

void PostgresEngine::LetGo(std::string_view name) {
  session_.AfterReconnecting({});
  RunOutside({Lock("pg_advisory_unlock", name)});
}

void PostgresEngine::CopyTo(std::string_view, const std::function<void()>&) {
  throw RuntimeError(kDatabase, Tr("A database on a server is copied by the server's own means"));
}

int PostgresEngine::SchemaVersion() {
  return static_cast<int>(LeadingNumber(TextOf(Rows(kReadSchemaVersion, "").get())));
}

void PostgresEngine::SetSchemaVersion(int version) {
  Execute("COMMENT ON SEQUENCE tarvolinex_changes IS '" + std::to_string(version) + "'");
}

bool PostgresEngine::HasTable(std::string_view name) {
  // Another desk may have made it meanwhile.
  if (!catalogue_.HasTable(name)) ReadCatalogue();
  return catalogue_.HasTable(name);
}

void PostgresEngine::MakeTable(const TableDesign& design) {
  if (HasTable(design.name)) return;
  const bool alone = !inTransaction_;
  if (alone) Begin();
  try {
    for (const std::string& statement : PostgresTable(design)) Queue(statement, "", true);
    if (alone) Commit();
  } catch (const RuntimeError&) {
    if (alone) Rollback();
    throw;
  }
  tablesChanged_ = inTransaction_;
  ReadCatalogue();
}

std::vector<Column> PostgresEngine::ColumnsOf(const PGresult* result) {
  if (!catalogue_.Knows(result)) ReadCatalogue();
  return catalogue_.ColumnsOf(result);
}

std::unique_ptr<Engine> OpenPostgres(std::string_view connectionString) {
  try {
    return std::make_unique<PostgresEngine>(connectionString);
  } catch (const ConnectionLost& lost) {
    throw RuntimeError(kDatabase, lost.why);
  }
}

}  // namespace tarvolinex
