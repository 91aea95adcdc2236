// The wire to a server of PostgreSQL's: statements go, results come, and when the server has gone it is found again.
#pragma once

#include <libpq-fe.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Engine.h"
#include "platform/data/PostgresCatalogue.h"

namespace tarvolinex {

// The server has gone; what was going on there is over, or nobody knows.
struct ConnectionLost {
  std::string why;
};

// A statement for the server, and as the program wrote it.
struct Sent {
  std::string text;
  std::string_view original = {};  // empty = the text
};

class PostgresSession {
 public:
  // Throws RuntimeError, saying in plain words why nothing can be opened.
  explicit PostgresSession(std::string_view connectionString);

  // Runs the statements in one round trip and gives their results; up to the first that fails, for which it throws
  // StatementFailure. Outside BEGIN and COMMIT they are stored together or not at all. Throws ConnectionLost.
  std::vector<PostgresResult> Run(const std::vector<Sent>& statements);
  // The columns of a SELECT that is not run; the same.
  PostgresResult Describe(const Sent& statement);

  // Connects once more, after what was going on before has ended on the server. Throws RuntimeError when whoever is
  // asked gives up, or the server refuses.
  void Reconnect(const std::string& why);
  // Counts what it was told: that another desk has stored something. Nothing is asked; it comes moments later. Throws
  // ConnectionLost.
  unsigned Told();
  void WhenLost(LostConnection lost) { lost_ = std::move(lost); }
  // What the new connection is told first; empty = nothing.
  void AfterReconnecting(std::string statement) { first_ = std::move(statement); }

 private:
  struct Closer {
    void operator()(PGconn* connection) const { PQfinish(connection); }
  };
  using Wire = std::unique_ptr<PGconn, Closer>;
  Wire Connect() const;
  void Adopt(Wire wire);
  void EndPredecessor(PGconn* wire) const;
  bool Again(int attempt, const std::string& why) const;
  PostgresResult TakeResult();
  std::vector<PostgresResult> TakeResults(std::size_t count);
  void Send(bool sent);

  std::string connectionString_;
  Wire wire_;
  unsigned told_ = 0;
  std::string self_;   // which process of the server it is, and since when
  std::string first_;  // what a new connection is told
  LostConnection lost_;
};

}  // namespace tarvolinex
