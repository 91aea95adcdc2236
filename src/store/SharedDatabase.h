// A database on a server that several desks share.
#pragma once

#include <string>

#include "platform/data/Database.h"
#include "platform/network/KeyStore.h"

namespace tarvolinex {

// Opens it. A password that the string does not hold and the server asks for comes from the machine's own password file
// or the desktop's key store. Throws RuntimeError.
void OpenShared(const std::string& connectionString, Connection& connection);

// The database on a server that General.INI of the app folder names, without a password, and whether it is worked on.
struct RememberedDatabase {
  bool used = false;
  std::string text;  // the connection string; empty = none
};
// Settings that cannot be read name none.
RememberedDatabase RememberedSharedDatabase(const std::string& appFolder);
void RememberSharedDatabase(const std::string& appFolder, const RememberedDatabase& database);

// Where a desk keeps its copies of that database's pages and pictures, apart from those of every other database. Made
// when it is missing.
std::string DeskFolder(const std::string& appFolder, const std::string& connectionString);

// Under what the key store keeps its password.
Login LoginOf(const std::string& connectionString);

}  // namespace tarvolinex
