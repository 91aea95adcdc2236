// The transaction of a connection to a server, which outlives the connection: what was done in it is done once more on
// another one, and a save whose end nobody has told is looked for.
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/PostgresDialect.h"
#include "platform/data/PostgresEngine.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// Where the last save of each desk stands. By that alone is known whether one was stored whose end nobody has told: the
// server's own number of a transaction is given once more after a crash.
constexpr const char* kSaves = "tarvolinex_saves";

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

// What came of a step of the transaction.
void PostgresEngine::Note(const Step& step, const PGresult* result) {
  if (!step.writes || step.original.empty()) return;
  const std::string id = TextOf(result), changed = PQcmdTuples(const_cast<PGresult*>(result));
  if (PQresultStatus(result) == PGRES_TUPLES_OK && !id.empty()) lastId_ = WholeNumber(id);
  changedRows_ = WholeNumber(changed);
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
      throw StatementFailure("", done_.back().original);
    } catch (const ConnectionLost& lost) {
      why = lost.why;
    } catch (const StatementFailure& failure) {
      // Also where a crash has taken back the ID that was given, and another desk has it now.
      throw RuntimeError(kDatabaseGone,
                         Tr("the connection was lost and the database has changed meanwhile; nothing was stored") +
                             ": " + (failure.Why().empty() ? done_.back().original : failure.Why()));
    }
  }
}

void PostgresEngine::Queue(std::string text, std::string_view original, bool writes) {
  constexpr std::size_t kMostWaiting = 200;
  waiting_.push_back({std::move(text), std::string(original), writes});
  if (waiting_.size() >= kMostWaiting) RunWith({});
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
    unsure_ = true;
    throw RuntimeError(kDatabaseGone, failure.Description() + "\n\n" + Tr("It may have been stored or not."));
  }
}

bool PostgresEngine::UnsureWasStored() {
  const bool stored = unsure_ && WasStored();
  unsure_ = false;
  return stored;
}

void PostgresEngine::Commit() {
  ++save_;
  unsure_ = false;
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

}  // namespace tarvolinex
