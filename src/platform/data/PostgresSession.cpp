#include "platform/data/PostgresSession.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <tuple>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// Where the server of this machine listens when no address is given.
constexpr const char* kSocketFolder = "/var/run/postgresql";
// On it each table tells who listens that something was written into it.
constexpr const char* kChannel = "tarvolinex";
constexpr const char* kAnswerSeconds = "10";
// How the server is to speak and how long it waits: for another desk that stores something, for one that fell silent
// while it did, and for one that has gone without a word and holds something.
constexpr const char* kManners =
    "-c datestyle=ISO -c extra_float_digits=1 -c standard_conforming_strings=on -c client_min_messages=warning "
    "-c tcp_keepalives_idle=10 -c tcp_keepalives_interval=5 -c tcp_keepalives_count=3 "
    "-c idle_in_transaction_session_timeout=60s -c lock_timeout=";
constexpr int kWaitSeconds = 10;

bool IsThisMachine(const std::string& host) {
  return host.empty() || host.front() == '/' || EqualNoCase(host, "localhost") || host == "::1" ||
         (host.starts_with("127.") && host.find_first_not_of("0123456789.") == std::string::npos);
}

struct Parameters {
  std::string host, port, name, user, password, encryption, certificates, manners;
};

// Throws RuntimeError when it would go to another machine in the clear.
Parameters ParametersIn(std::string_view text) {
  Parameters in = {
      ValueIn(text, "server"), ValueIn(text, "port"),    ValueIn(text, "database"),    ValueIn(text, "uid"),
      ValueIn(text, "pwd"),    ValueIn(text, "sslmode"), ValueIn(text, "sslrootcert"), ""};
  const std::string wait = ValueIn(text, "wait");
  in.manners = kManners + std::to_string(wait.empty() ? kWaitSeconds : static_cast<int>(LeadingNumber(wait))) + "s";
  const bool near = IsThisMachine(in.host);
  if (in.host.empty()) in.host = kSocketFolder;
  if (in.encryption.empty()) in.encryption = near ? "prefer" : "verify-full";
  if (near || in.encryption == "verify-full") return in;
  throw RuntimeError(kDatabase, Tr("The database %1 cannot be opened: to another machine the connection must be "
                                   "encrypted and its certificate proved (sslmode=verify-full), not sslmode=%2",
                                   {DatabaseName(text), in.encryption}));
}

// The server's words on one line.
std::string WordsOf(std::string_view message) {
  std::string words;
  const std::string text = ReplaceAll(message, "\t", " ");
  for (const std::string_view line : Split(text, '\n')) {
    if (Trim(line).empty()) continue;
    words += (words.empty() ? "" : "; ") + std::string(Trim(line));
  }
  return words.empty() ? Tr("the server does not answer") : words;
}

// Why it refused the server says in its own language; what is asked once more is answered with a code.
bool WantsPassword(PGconn* wire) {
  constexpr const char* kWrongPassword = "28P01";
  if (PQconnectionNeedsPassword(wire) != 0) return true;
  if (PQconnectionUsedPassword(wire) == 0) return false;
  PQsetErrorVerbosity(wire, PQERRORS_SQLSTATE);
  PQreset(wire);
  return std::string_view(PQerrorMessage(wire)).find(kWrongPassword) != std::string_view::npos;
}

// Whether the server ended the connection, or has none to spare.
bool MeansLost(const PGresult* result) {
  const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
  const std::string_view code = state ? state : "";
  return code.starts_with("57P0") || code.starts_with("08") || code == "25P03";
}

std::string WhyRefused(const PGresult* result) {
  const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
  if (state && std::string_view(state) == "55P03") return Tr("another desk is storing something; try again");
  const char* words = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
  return WordsOf(words ? words : PQresultErrorMessage(result));
}

bool IsFailure(const PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  return status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK;
}

}  // namespace

PostgresSession::PostgresSession(std::string_view connectionString) : connectionString_(connectionString) {
  Adopt(Connect());
}

PostgresSession::Wire PostgresSession::Connect() const {
  const Parameters in = ParametersIn(connectionString_);
  const std::array<std::pair<const char*, const char*>, 15> pairs = {{{"host", in.host.c_str()},
                                                                      {"port", in.port.c_str()},
                                                                      {"dbname", in.name.c_str()},
                                                                      {"user", in.user.c_str()},
                                                                      {"password", in.password.c_str()},
                                                                      {"sslmode", in.encryption.c_str()},
                                                                      {"sslrootcert", in.certificates.c_str()},
                                                                      {"client_encoding", "UTF8"},
                                                                      {"application_name", "Tarvolinex"},
                                                                      {"connect_timeout", kAnswerSeconds},
                                                                      {"keepalives_idle", kAnswerSeconds},
                                                                      {"keepalives_interval", "5"},
                                                                      {"keepalives_count", "3"},
                                                                      {"tcp_user_timeout", "20000"},
                                                                      {"options", in.manners.c_str()}}};
  std::array<const char*, pairs.size() + 1> keys = {}, values = {};
  for (std::size_t i = 0; i < pairs.size(); ++i) std::tie(keys[i], values[i]) = pairs[i];
  Wire wire(PQconnectdbParams(keys.data(), values.data(), 0));
  if (PQstatus(wire.get()) == CONNECTION_OK) return wire;
  const std::string words = WordsOf(PQerrorMessage(wire.get()));
  throw RuntimeError(WantsPassword(wire.get()) ? kDatabasePassword : kDatabase,
                     Tr("The database %1 cannot be opened: %2", {DatabaseName(connectionString_), words}));
}

// Only as himself, not as his group, may a user know when his process has begun, and end it.
void PostgresSession::Adopt(Wire wire) {
  wire_ = std::move(wire);
  ++told_;  // nobody has told it what was stored before
  const auto results =
      Run({{std::string("LISTEN ") + kChannel},
           {"SET ROLE NONE"},
           {"SELECT format('pid = %s AND backend_start = %L', pid, backend_start) FROM pg_stat_activity "
            "WHERE pid = pg_backend_pid()"},
           {"RESET ROLE"}});
  self_ = PQgetvalue(results[2].get(), 0, 0);
}

unsigned PostgresSession::Told() {
  struct Freer {
    void operator()(PGnotify* told) const { PQfreemem(told); }
  };
  Send(PQconsumeInput(wire_.get()) == 1);
  while (const std::unique_ptr<PGnotify, Freer> told{PQnotifies(wire_.get())}) {
    if (told->be_pid != PQbackendPID(wire_.get())) ++told_;
  }
  return told_;
}

// Sends something; throws when the wire does not take it.
void PostgresSession::Send(bool sent) {
  if (!sent) throw ConnectionLost{WordsOf(PQerrorMessage(wire_.get()))};
}

PostgresResult PostgresSession::TakeResult() {
  PostgresResult result(PQgetResult(wire_.get()));
  if (!result && PQstatus(wire_.get()) == CONNECTION_BAD) throw ConnectionLost{WordsOf(PQerrorMessage(wire_.get()))};
  if (!result) return result;
  const ExecStatusType status = PQresultStatus(result.get());
  const bool failed = status == PGRES_FATAL_ERROR;
  if (failed && (PQstatus(wire_.get()) == CONNECTION_BAD || MeansLost(result.get()))) {
    throw ConnectionLost{WordsOf(PQresultErrorMessage(result.get()))};
  }
  return result;
}

// The results of that many statements and of what ends them.
std::vector<PostgresResult> PostgresSession::TakeResults(std::size_t count) {
  std::vector<PostgresResult> results;
  while (results.size() < count) {
    PostgresResult result = TakeResult();
    if (!result) continue;  // the end of one statement's
    results.push_back(std::move(result));
  }
  PostgresResult end = TakeResult();
  while (!end || PQresultStatus(end.get()) != PGRES_PIPELINE_SYNC) end = TakeResult();
  return results;
}

std::vector<PostgresResult> PostgresSession::Run(const std::vector<Sent>& statements) {
  PGconn* wire = wire_.get();
  if (PQpipelineStatus(wire) == PQ_PIPELINE_OFF) Send(PQenterPipelineMode(wire) == 1);
  for (const Sent& each : statements) {
    Send(PQsendQueryParams(wire, each.text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0) == 1);
  }
  Send(PQpipelineSync(wire) == 1);
  std::vector<PostgresResult> results = TakeResults(statements.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (!IsFailure(results[i].get())) continue;
    const bool empty = PQresultStatus(results[i].get()) == PGRES_EMPTY_QUERY;
    throw StatementFailure(empty ? "not one statement" : WhyRefused(results[i].get()),
                           statements[i].original.empty() ? statements[i].text : statements[i].original);
  }
  return results;
}

PostgresResult PostgresSession::Describe(const Sent& statement) {
  PGconn* wire = wire_.get();
  if (PQpipelineStatus(wire) == PQ_PIPELINE_OFF) Send(PQenterPipelineMode(wire) == 1);
  Send(PQsendPrepare(wire, "", statement.text.c_str(), 0, nullptr) == 1);
  Send(PQsendDescribePrepared(wire, "") == 1);
  Send(PQpipelineSync(wire) == 1);
  std::vector<PostgresResult> results = TakeResults(2);
  for (const PostgresResult& result : results) {
    if (IsFailure(result.get())) throw StatementFailure(WhyRefused(result.get()), statement.original);
  }
  return std::move(results.back());
}

// Whether to try again. Without anybody to ask, for some seconds.
bool PostgresSession::Again(int attempt, const std::string& why) const {
  if (lost_) return lost_(attempt, why);
  constexpr int kAttempts = 8;
  if (attempt > kAttempts) return false;
  std::this_thread::sleep_for(std::chrono::milliseconds(25) * (1 << std::min(attempt, 7)));
  return true;
}

// The server may not have noticed that this desk has gone, and still hold what it held.
void PostgresSession::EndPredecessor(PGconn* wire) const {
  const std::string statement =
      "SET ROLE NONE; SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE " + self_ + "; RESET ROLE";
  const PostgresResult ended(PQexec(wire, statement.c_str()));
}

void PostgresSession::Reconnect(const std::string& lostBy) {
  wire_.reset();
  std::string why = lostBy;
  for (int attempt = 1; Again(attempt, why); ++attempt) {
    try {
      Wire wire = Connect();
      EndPredecessor(wire.get());
      Adopt(std::move(wire));
      if (!first_.empty()) Run({{first_}});
      if (lost_) lost_(0, "");
      return;
    } catch (const ConnectionLost& lost) {
      why = lost.why;
    } catch (const RuntimeError& failure) {
      if (failure.Number() == kDatabasePassword) throw;
      why = failure.Description();
    }
  }
  throw RuntimeError(kDatabaseGone,
                     Tr("The connection to the database %1 was lost: %2", {DatabaseName(connectionString_), why}));
}

}  // namespace tarvolinex
