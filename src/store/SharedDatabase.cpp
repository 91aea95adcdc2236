#include "store/SharedDatabase.h"

#include <optional>

#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr const char* kSection = "DATABASE";
constexpr const char* kKeys[] = {"server", "port", "database", "uid", "sslmode", "sslrootcert"};

// Nothing also when there is no key store to ask.
std::optional<std::string> KeptPassword(const std::string& connectionString) {
  try {
    return StoredPassword(LoginOf(connectionString));
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

std::string DeskFolder(const std::string& appFolder, const std::string& connectionString) {
  std::string name;
  for (const char* key : {"server", "port", "database"}) {
    for (const char c : ValueIn(connectionString, key)) {
      const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-';
      name += plain ? c : '_';
    }
    name += ' ';
  }
  std::string folder = appFolder + "\\Shared";
  if (!FolderExists(folder)) MakeFolder(folder);
  folder += "\\" + std::string(Trim(name));
  if (!FolderExists(folder)) MakeFolder(folder);
  return folder;
}

Login LoginOf(const std::string& connectionString) {
  const std::string server = ValueIn(connectionString, "server");
  return {server.empty() ? "localhost" : server, ValueIn(connectionString, "uid")};
}

RememberedDatabase RememberedSharedDatabase(const std::string& appFolder) {
  RememberedDatabase database;
  try {
    const auto read = [&](const char* key) { return ReadIni(appFolder, "General", kSection, key, ""); };
    database.used = read("Shared") == "1";
    for (const char* key : kKeys) {
      const std::string value = read(key);
      if (!value.empty()) database.text += KeyAndValue(key, value);
    }
  } catch (const RuntimeError&) {
    return {};  // reported where the window reads its settings
  }
  if (!database.text.empty()) database.text = KeyAndValue("driver", "PostgreSQL") + database.text;
  return database;
}

void RememberSharedDatabase(const std::string& appFolder, const RememberedDatabase& database) {
  WriteIni(appFolder, "General", kSection, "Shared", database.used ? "1" : "0");
  for (const char* key : kKeys) WriteIni(appFolder, "General", kSection, key, ValueIn(database.text, key));
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
