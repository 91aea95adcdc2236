#include "store/SharedDatabase.h"

#include <optional>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"

namespace tarvolinex {

namespace {

// Nothing also when there is no key store to ask.
std::optional<std::string> KeptPassword(const std::string& connectionString) {
  try {
    return StoredPassword(LoginOf(connectionString));
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

Login LoginOf(const std::string& connectionString) {
  const std::string server = ValueIn(connectionString, "server");
  return {server.empty() ? "localhost" : server, ValueIn(connectionString, "uid")};
}

void OpenShared(const std::string& connectionString, Connection& connection) {
  try {
    return connection.Open(connectionString);
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDatabasePassword || !ValueIn(connectionString, "pwd").empty()) throw;
    const auto password = KeptPassword(connectionString);
    if (!password) throw;
    connection.Open(connectionString + ";" + KeyAndValue("pwd", *password));
  }
}

}  // namespace tarvolinex
