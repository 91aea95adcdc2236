#include "platform/data/PostgresEngine.h"

#include <charconv>
#include <random>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/PostgresDialect.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::string NewDesk() {
  std::random_device random;
  std::string desk;
  for (int i = 0; i < 4; ++i) desk += std::to_string(random()) + ".";
  return desk;
}

// Of what one desk at a time does, by its name.
std::string Lock(const char* function, std::string_view name) {
  return std::string("SELECT ") + function + "(hashtextextended('tarvolinex " + std::string(name) + "', 0))";
}

}  // namespace

std::string TextOf(const PGresult* result) {
  return PQntuples(result) > 0 && PQnfields(result) > 0 ? std::string(ValueAt(result, 0, 0)) : std::string();
}

int WholeNumber(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

PostgresEngine::PostgresEngine(std::string_view connectionString) : session_(connectionString), desk_(NewDesk()) {
  ReadCatalogue();
}

void PostgresEngine::ReadCatalogue() {
  catalogue_.Read(Rows(PostgresCatalogue::Statement(), "").get());
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

int PostgresEngine::LargestIdGiven(std::string_view table) {
  if (!catalogue_.GivesIds(table)) return 0;
  return WholeNumber(TextOf(Rows("SELECT CASE WHEN has_sequence_privilege(ids, 'SELECT, USAGE') THEN "
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
  return WholeNumber(TextOf(Rows(kReadSchemaVersion, "").get()));
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
