// A real server of PostgreSQL for the tests that run on that engine; one for all tests of a program.
#pragma once

#include <string>

#include "support/Process.h"
#include "support/TemporaryFolder.h"

namespace tarvolinex {

// Whether the tests that stand on a database have one on a server.
bool OnServer();

class SharedServer {
 public:
  // mode: as postgres.sh takes it.
  explicit SharedServer(const std::string& mode = "")
      : process_("exec " SUPPORT_FOLDER "/postgres.sh " + folder_.Path() + " " + mode) {}
  static SharedServer& The();
  const std::string& Folder() const { return folder_.Path(); }
  const std::string& Port() const { return process_.FirstLine(); }
  // By its socket, without a database.
  std::string Address(const std::string& user = "tarvolinex") const;
  // The connection string of a new database: an empty one, or one with the sample's rows.
  std::string NewDatabase() { return Made("template0"); }
  std::string NewSample();
  void Remove(const std::string& connectionString) const;
  // A statement of the server's own.
  void Tell(const std::string& statement, const std::string& database = "postgres") const;

 private:
  std::string Made(const std::string& after);
  TemporaryFolder folder_;
  Process process_;
  bool sampleMade_ = false;
  int made_ = 0;
};

}  // namespace tarvolinex
