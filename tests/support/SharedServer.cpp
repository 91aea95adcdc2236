#include "support/SharedServer.h"

#include <libpq-fe.h>

#include <cstdlib>

#include "platform/data/ConnectionText.h"
#include "platform/files/ZipComponent.h"
#include "store/DatabaseCopy.h"

namespace tarvolinex {

bool OnServer() {
  return std::getenv("TARVOLINEX_TEST_SERVER") != nullptr;
}

SharedServer& SharedServer::The() {
  static SharedServer server;
  return server;
}

std::string SharedServer::Address(const std::string& user) const {
  return "driver={PostgreSQL};server=" + folder_.Path() + ";port=" + Port() + ";uid=" + user + ";database=";
}

std::string SharedServer::Made(const std::string& after) {
  const std::string name = "test" + std::to_string(++made_);
  Tell("CREATE DATABASE " + name + " TEMPLATE " + after + " STRATEGY file_copy");
  return "wait=1;" + Address() + name;
}

std::string SharedServer::NewSample() {
  if (sampleMade_) return Made("sample");
  sampleMade_ = true;
  Tell("CREATE DATABASE sample TEMPLATE template0");
  const TemporaryFolder unpacked;
  ZipComponent zip;
  zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
  zip.UnzipToFolder = unpacked.Path();
  zip.Unzip();
  CopyOffice("dbq=" + unpacked.Path() + "/Tarvolinex.mdb", Address() + "sample", [](int, const std::string&) {});
  return Made("sample");
}

void SharedServer::Remove(const std::string& connectionString) const {
  Tell("DROP DATABASE IF EXISTS " + ValueIn(connectionString, "database") + " WITH (FORCE)");
}

void SharedServer::Tell(const std::string& statement, const std::string& database) const {
  const std::string where = "host=" + folder_.Path() + " port=" + Port() + " user=tarvolinex dbname=" + database +
                            " options='-c client_min_messages=error'";
  PGconn* wire = PQconnectdb(where.c_str());
  PGresult* result = PQexec(wire, statement.c_str());
  EXPECT_EQ(PQresultStatus(result), PGRES_COMMAND_OK) << statement << PQresultErrorMessage(result);
  PQclear(result);
  PQfinish(wire);
}

}  // namespace tarvolinex
