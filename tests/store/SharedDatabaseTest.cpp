// What a database on a server is alone in: several desks, a connection that goes, rights, and copies there and back.
#include "store/SharedDatabase.h"

#include <atomic>
#include <set>
#include <thread>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "store/DatabaseCheck.h"
#include "store/DatabaseCopy.h"
#include "store/DatabaseFile.h"
#include "store/SharedFiles.h"
#include "store/Tables.h"
#include "support/DroppingProxy.h"
#include "support/Failure.h"
#include "support/Fixture.h"
#include "support/KeyRing.h"
#include "ui/main/FrmSharedDatabase.h"

namespace tarvolinex {

class SharedDatabaseTest : public ProgramTest {
 protected:
  ~SharedDatabaseTest() override {
    for (const std::string& each : made) server.Remove(each);
  }
  std::string Made(std::string connectionString) { return made.emplace_back(std::move(connectionString)); }
  static std::string Ask(Connection& connection, const std::string& statement) {
    Recordset rows;
    rows.Open(statement, connection);
    return rows.EndOfFile() ? "(none)" : ValueText(rows.Field(0));
  }
  // Every value of every table, a line a row.
  static std::multiset<std::string> Everything(const std::string& where) {
    Connection connection;
    connection.Open(where);
    std::multiset<std::string> all;
    for (const TableDesign& table : AllTables()) {
      if (!connection.HasTable(table.name)) continue;
      Recordset rows;
      for (rows.Open("SELECT * FROM " + table.name, connection); !rows.EndOfFile(); rows.MoveNext()) {
        std::string row = table.name;
        for (int i = 0; i < rows.ColumnCount(); ++i) row += "|" + rows.ColumnName(i) + "=" + ValueText(rows.Field(i));
        all.insert(row);
      }
      all.insert(table.name + std::to_string(connection.LargestIdGiven(table.name)));
    }
    return all;
  }
  SharedServer& server = SharedServer::The();
  std::vector<std::string> made;
};

TEST_F(SharedDatabaseTest, ATransactionIsStoredOnceWheneverTheConnectionGoes) {
  DroppingProxy proxy(server.Port());
  const std::string where = Made(server.NewSample());
  Connection desk, judge;
  judge.Open(where);
  desk.Open("driver={PostgreSQL};server=127.0.0.1;uid=tarvolinex;sslmode=disable;port=" + proxy.Port() +
            ";database=" + ValueIn(where, "database"));
  int lost = 0;
  desk.WhenLost([&](int attempt, const std::string&) {
    lost += attempt == 1;
    return attempt < 20;
  });
  constexpr int kSaves = 500;
  for (int i = 0; i < kSaves; ++i) {
    proxy.DropAt(1 + i % 4, i % 2 == 0);
    const std::string text = std::to_string(i);
    desk.Begin();
    if (i % 7 == 0) desk.Flush();
    desk.Execute("INSERT INTO contacts(surname) VALUES('s" + text + "')");
    if (i % 5 == 0) {
      EXPECT_EQ(Ask(desk, "SELECT COUNT(*) FROM contacts WHERE surname='s" + text + "'"), "1");
    }
    if (i % 3 == 0) {
      desk.Execute("UPDATE contacts SET tel='own' WHERE ID=" + std::to_string(desk.LastInsertedId()) +
                   " AND surname='s" + text + "'");
    }
    desk.Execute("UPDATE suppliers SET Town='" + text + "' WHERE ID=3");
    desk.Commit();
    EXPECT_EQ(Ask(judge, "SELECT Town FROM suppliers WHERE ID=3"), text);
  }
  EXPECT_EQ(Ask(judge, "SELECT COUNT(*)||' '||COUNT(DISTINCT surname) FROM contacts WHERE firstname IS NULL"),
            std::to_string(kSaves) + " " + std::to_string(kSaves));
  EXPECT_EQ(Ask(judge, "SELECT COUNT(*) FROM contacts WHERE tel='own'"), std::to_string((kSaves + 2) / 3));
  EXPECT_GT(lost, kSaves / 3);
}

TEST_F(SharedDatabaseTest, WhoWorksAsHisGroupKeepsHisNameAndFollowsHisDeadConnection) {
  const std::string where = Made(server.NewSample()), name = ValueIn(where, "database"), anna = "anna" + name,
                    group = "group" + name;
  for (const std::string& each : {"CREATE ROLE " + group, "CREATE ROLE " + anna + " LOGIN IN ROLE " + group,
                                  "ALTER ROLE " + anna + " SET role = '" + group + "'"}) {
    server.Tell(each);
  }
  server.Tell("GRANT ALL ON ALL TABLES IN SCHEMA public TO " + group, name);
  DroppingProxy proxy(server.Port());
  Database database(run);
  database.Open(DataFolder, "driver={PostgreSQL};server=127.0.0.1;wait=1;sslmode=disable;uid=" + anna +
                                ";port=" + proxy.Port() + ";database=" + name);
  EXPECT_EQ(database.User(), anna);
  Connection& desk = database.Plain();
  desk.Begin();
  desk.Execute("UPDATE suppliers SET Town='Once' WHERE ID=3");
  desk.Flush();
  proxy.Unplug();
  proxy.DropAt(1, false);
  const auto begin = std::chrono::steady_clock::now();
  desk.Commit();
  EXPECT_LT(std::chrono::steady_clock::now() - begin,
            std::chrono::seconds(20));  // the server itself waits for a minute
  EXPECT_EQ(Ask(desk, "SELECT Town FROM suppliers WHERE ID=3"), "Once");
  database.Close();
  for (const std::string& each : {anna, group}) {
    server.Tell("DROP OWNED BY " + each, name);
    server.Tell("DROP ROLE " + each);
  }
}

TEST_F(SharedDatabaseTest, WhatWasReadInATransactionMustStillBeSoAfterALoss) {
  DroppingProxy proxy(server.Port());
  const std::string where = Made(server.NewSample());
  Connection desk, other;
  other.Open(where);
  desk.Open("driver={PostgreSQL};server=127.0.0.1;uid=tarvolinex;port=" + proxy.Port() +
            ";database=" + ValueIn(where, "database"));
  desk.Begin();
  EXPECT_EQ(Ask(desk, "SELECT Town FROM suppliers WHERE ID=3"), "Reading");
  desk.WhenLost([&](int attempt, const std::string&) {
    if (attempt == 1) {
      other.Execute("UPDATE suppliers SET Town='Theirs' WHERE ID=3");
    }
    return attempt < 5;
  });
  proxy.DropAt(1, false);
  desk.Execute("UPDATE suppliers SET Town='Mine' WHERE ID=3");
  const RuntimeError failure = FailureOf([&] { desk.Commit(); });
  EXPECT_NE(failure.Description().find("nothing was stored"), std::string::npos) << failure.Description();
  desk.Rollback();
  EXPECT_EQ(Ask(other, "SELECT Town FROM suppliers WHERE ID=3"), "Theirs");
}

TEST_F(SharedDatabaseTest, FiveDesksLoseNoUpdate) {
  const std::string where = Made(server.NewSample());
  constexpr int kDesks = 5, kSaves = 60;
  std::vector<std::thread> desks;
  for (int desk = 0; desk < kDesks; ++desk) {
    desks.emplace_back([&where] {
      Connection connection;
      connection.Open(where + ";wait=60");
      for (int i = 0; i < kSaves; ++i) {
        connection.Begin();
        connection.Flush();
        const int before = std::stoi(Ask(connection, "SELECT RangeEquipFROM4 FROM suppliers WHERE ID=3"));
        connection.Execute("UPDATE suppliers SET RangeEquipFROM4=" + std::to_string(before + 1) + " WHERE ID=3");
        connection.Commit();
      }
    });
  }
  for (std::thread& desk : desks) desk.join();
  Connection judge;
  judge.Open(where);
  EXPECT_EQ(Ask(judge, "SELECT RangeEquipFROM4 FROM suppliers WHERE ID=3"), std::to_string(kDesks * kSaves));
}

TEST_F(SharedDatabaseTest, WhatIsStoredIsToldOnceItCanBeRead) {
  const std::string where = Made(server.NewSample());
  Connection desk, other;
  desk.Open(where);
  other.Open(where);
  desk.Execute("UPDATE suppliers SET Town='Mine' WHERE ID=2");
  const std::string before = desk.Version(), told = desk.Told();
  other.Begin();
  other.Execute("UPDATE suppliers SET Town='Late' WHERE ID=3");
  other.Flush();
  const std::string during = desk.Version();
  EXPECT_EQ(desk.Told(), told);
  other.Commit();
  EXPECT_NE(desk.Version(), during) << "a table read meanwhile was the old one";
  EXPECT_NE(desk.Version(), before);
  EXPECT_NE(desk.Told(), told);
}

TEST_F(SharedDatabaseTest, TablesAreMadeOnceAndThoseOfANewerVersionAreLeftAlone) {
  const std::string where = Made(server.NewDatabase());
  std::vector<std::thread> desks;
  std::atomic<int> failed = 0;
  for (int desk = 0; desk < 4; ++desk) {
    desks.emplace_back([&] {
      Connection connection;
      connection.Open(where);
      failed += FailureOf([&] { BringTo(connection, kNewestStep); }).Number() != 0;
    });
  }
  for (std::thread& desk : desks) desk.join();
  EXPECT_EQ(failed, 0);
  Connection newer;
  newer.Open(where);
  EXPECT_EQ(newer.SchemaVersion(), static_cast<int>(kNewestStep));
  newer.SetSchemaVersion(99);
  Database database(run);
  const RuntimeError failure = FailureOf([&] { database.Open(DataFolder, where); });
  EXPECT_NE(failure.Description().find("belongs to a newer version"), std::string::npos) << failure.Description();
  EXPECT_FALSE(database.IsOpen());
}

TEST_F(SharedDatabaseTest, WhoMayOnlyReadIsTold) {
  const std::string where = Made(server.NewSample()), name = ValueIn(where, "database");
  server.Tell("CREATE ROLE reader" + name + " LOGIN");
  server.Tell("GRANT SELECT ON ALL TABLES IN SCHEMA public TO reader" + name, name);
  Database database(run);
  database.Open(DataFolder, server.Address("reader" + name) + name);
  EXPECT_TRUE(database.ReadOnly());
  EXPECT_EQ(ReadSupplier(database, 3).row.Text("Town"), "Reading");
  CopyDatabaseToFile(database.Plain(), folder.Path() + "/home.mdb", [](int, const std::string&) {});
  EXPECT_THROW(database.ExecuteStatement("UPDATE suppliers SET Town='Never'"), ProgramEnded);
  database.Close();
  server.Tell("DROP OWNED BY reader" + name, name);
  server.Tell("DROP ROLE reader" + name);
}

TEST_F(SharedDatabaseTest, WhatKeepsItShutIsSaidWithoutThePassword) {
  const std::string where = server.Address() + "none;pwd={secret;}}x}";
  const auto said = [](const std::string& text) {
    Connection connection;
    const RuntimeError failure = FailureOf([&] { connection.Open(text); });
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_EQ(failure.Description().find("secret"), std::string::npos);
    return failure.Description();
  };
  EXPECT_NE(said(where).find("database \"none\" does not exist"), std::string::npos) << said(where);
  const std::string far = "driver={PostgreSQL};server=db.example;database=x;pwd=secret";
  EXPECT_NE(said(far + ";sslmode=require").find("must be encrypted and its certificate proved"), std::string::npos);
  EXPECT_NE(said("driver={PostgreSQL};server=127.0.0.1;port=1;database=x;pwd=secret").find("refused"),
            std::string::npos);
  EXPECT_EQ(ValueIn(where, "pwd"), "secret;}x");
}

TEST_F(SharedDatabaseTest, ACopyIsWholeThereAndBackOrNothing) {
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
  EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  const std::string file = "dbq=" + DataFolder + "\\Tarvolinex.mdb", shared = Made(server.NewDatabase());
  {
    Connection from;
    from.Open(file);
    from.Execute("UPDATE contacts SET tel='it''s', DateLastSent='05 March 2003 14:07:09' WHERE ID=1");
    from.Execute("DELETE FROM suppliers WHERE ID=12");
    BringTo(from, kNewestStep);
  }
  const auto copy = [](const std::string& here, const std::string& there) {
    Connection from, to;
    from.Open(here);
    to.Open(there);
    CopyDatabase(from, to, [](int, const std::string&) {});
  };
  Connection edit;
  edit.Open(file);
  edit.Execute("UPDATE contacts SET surname='" + std::string(31, 'x') + "' WHERE ID=30");
  const RuntimeError tooLong = FailureOf([&] { copy(file, shared); });
  EXPECT_NE(tooLong.Description().find("contacts, ID 30: the column surname holds"), std::string::npos)
      << tooLong.Description();
  Connection target;
  target.Open(shared);
  EXPECT_FALSE(target.HasTable("suppliers"));
  edit.Execute("UPDATE contacts SET surname='Fits' WHERE ID=30");
  const auto before = Everything(file);
  copy(file, shared);
  EXPECT_EQ(Everything(shared), before);
  EXPECT_EQ(Everything(file), before);
  EXPECT_NE(FailureOf([&] { copy(file, shared); }).Description().find("already has suppliers"), std::string::npos);
  Connection from;
  from.Open(shared);
  CopyDatabaseToFile(from, folder.Path() + "/home.mdb", [](int, const std::string&) {});
  EXPECT_EQ(Everything("dbq=" + folder.Path() + "/home.mdb"), before);
}

TEST_F(SharedDatabaseTest, ACopyIsOfOneMoment) {
  const std::string where = Made(server.NewSample()), home = folder.Path() + "/home.mdb";
  Connection from, other, copy;
  from.Open(where);
  other.Open(where);
  bool stored = false;
  CopyDatabaseToFile(from, home, [&](int, const std::string&) {
    if (std::exchange(stored, true)) return;
    other.Execute("INSERT INTO suppliers(ID,CompanyName) VALUES(900,'Late')");
    other.Execute("INSERT INTO contacts(surname,Supplierid) VALUES('Late',900)");
  });
  copy.Open("dbq=" + home);
  EXPECT_EQ(Ask(copy, "SELECT COUNT(*) FROM contacts WHERE Supplierid=900"), "0");
}

TEST_F(SharedDatabaseTest, TheFilesOfAnOfficeGoAlongAndReplaceNone) {
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
  EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  const std::string shared = Made(server.NewDatabase()), home = DataFolder + "/home";
  const auto copy = [](const std::string& from, const std::string& to) {
    CopyOffice(from, to, [](int, const std::string&) {});
  };
  copy("dbq=" + DataFolder + "/Tarvolinex.mdb", shared);
  std::filesystem::create_directories(home + "/Forms");
  WriteFile(home + "/Forms/1.HTML", "mine");
  EXPECT_NE(FailureOf([&] { copy(shared, "dbq=" + home + "/a.mdb"); }).Description().find("Forms/1.HTML"),
            std::string::npos);
  EXPECT_FALSE(FileExists(home + "/a.mdb"));
  EXPECT_EQ(ListFiles(home + "/Forms/*.*").size(), 1u);
  DeleteFile(home + "/Forms/1.HTML");
  copy(shared, "dbq=" + home + "/a.mdb");
  for (const std::string& name : ListFiles(DataFolder + "/Forms/*.*")) {
    EXPECT_EQ(ReadFile(home + "/Forms/" + name), ReadFile(DataFolder + "/Forms/" + name));
  }
}

TEST_F(SharedDatabaseTest, TheWindowSaysWhatIsWrongMovesTheFileAndRemembersNoPassword) {
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
  EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  const std::string where = Made(server.NewDatabase()), own = DataFolder;
  int opened = 0;
  FrmSharedDatabase window(run, [&] { return ++opened > 0; });
  window.ChkShared.SetValue(true);
  window.TxtServer.SetText("127.0.0.1");
  window.TxtPort.SetText(server.Port());
  window.TxtDatabase.SetText("none");
  window.TxtUser.SetText("tarvolinex");
  const auto said = [&](CommandButton& button) {
    button.Press();
    return window.LblSaid.Caption();
  };
  EXPECT_EQ(said(window.CmdTest), "The server at 127.0.0.1 offers no encrypted connection.");
  window.CboSecurity.SetListIndex(1);
  EXPECT_EQ(said(window.CmdTest), "The server has no database none.");
  window.TxtDatabase.SetText(ValueIn(where, "database"));
  EXPECT_EQ(said(window.cmdaction(0)), "The database on the server is empty. Move this one there first.");
  EXPECT_EQ(said(window.CmdMove).substr(0, 31), "All of it is on the server now.");
  EXPECT_EQ(said(window.CmdTest), "The server answers. Its database holds 12 suppliers.");
  EXPECT_EQ(opened, 0);
  window.cmdaction(0).Press();
  EXPECT_EQ(opened, 1);
  const RememberedDatabase remembered = RememberedSharedDatabase(AppFolder);
  EXPECT_TRUE(remembered.used);
  EXPECT_EQ(remembered.text.find("pwd"), std::string::npos);
  // What lies beside the file stays the file's.
  EXPECT_NE(run.DataFolder, own);
  Database database(run);
  database.Open(run.DataFolder, remembered.text);
  EXPECT_EQ(BringFilesTogether(database).setAside, std::vector<std::string>());
  EXPECT_EQ(ListFiles(run.DataFolder + "/Forms/*.*"), ListFiles(own + "/Forms/*.*"));
}

// 0.0.0.0 and 2130706433 lead to this machine and are none of the names by which it is known as this one.
TEST_F(SharedDatabaseTest, AnotherMachineMustProveWhoItIsAndThePasswordComesFromTheFileOrTheKeyStore) {
  const SharedServer far("tls");
  far.Tell("CREATE ROLE anna LOGIN PASSWORD 'right;one'");
  const auto said = [](const std::string& where) {
    Connection connection;
    return FailureOf([&] { OpenShared(where, connection); });
  };
  const auto says = [&](const std::string& where, const char* words) {
    const std::string all = said(where).Description();
    EXPECT_NE(all.find(words), std::string::npos) << all;
  };
  const auto at = [](const char* host, const SharedServer& which) {
    return "driver={PostgreSQL};database=postgres;uid=anna;server=" + std::string(host) + ";port=" + which.Port();
  };
  const std::string with = ";pwd={right;one}", ca = ";sslrootcert=" + far.Folder() + "/ca.crt";
  const std::string where = at("0.0.0.0", far) + ca;
  EXPECT_EQ(said(where + with).Description(), "");
  setenv("PGSSLROOTCERT", (far.Folder() + "/ca.crt").c_str(), 1);
  EXPECT_EQ(said(at("0.0.0.0", far) + with).Description(), "");
  unsetenv("PGSSLROOTCERT");
  says(at("0.0.0.0", far) + with + ";sslrootcert=" + far.Folder() + "/other.crt", "certificate verify failed");
  says(at("2130706433", far) + with + ca, "does not match host name");
  says(at("0.0.0.0", server) + ca, "does not support SSL");
  server.Tell("CREATE ROLE anna LOGIN");
  EXPECT_EQ(said(at("127.0.0.1", server)).Description(), "");
  server.Tell("DROP ROLE anna");

  const auto refused = [&] { return said(where).Number() == kDatabasePassword; };
  const std::string file = folder.Path() + "/passwords";
  setenv("PGPASSFILE", file.c_str(), 1);
  EXPECT_TRUE(refused());
  const RuntimeError wrong = said(where + ";pwd=wrong");
  EXPECT_EQ(wrong.Number(), kDatabasePassword);
  const std::string& words = wrong.Description();
  EXPECT_TRUE(words.find("Passwort-Authentifizierung für Benutzer »anna« fehlgeschlagen") != std::string::npos ||
              words.find("password authentication failed for user \"anna\"") != std::string::npos)
      << "German, where it is installed: " << words;
  EXPECT_EQ(said(ReplaceAll(where, "=postgres", "=nowhere") + with).Number(), kDatabase);
  const auto keep = [&](const std::string& password) {
    folder.File("passwords", "0.0.0.0:" + far.Port() + ":postgres:anna:" + password + "\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  };
  keep("right;one");
  EXPECT_FALSE(refused());
  std::filesystem::remove(file);
  keep("wrong");
  EXPECT_TRUE(refused());
  // The key store is asked for what the file does not know, or no longer knows.
  const TemporaryFolder ring;
  const KeyRing keys(ring.Path());
  StorePassword(LoginOf(where), "right;one");
  EXPECT_EQ(said(where).Description(), "");
  std::filesystem::remove(file);
  EXPECT_EQ(said(where).Description(), "");
  StorePassword(LoginOf(where), "wrong");
  EXPECT_TRUE(refused());
  unsetenv("PGPASSFILE");
}

TEST_F(SharedDatabaseTest, ACheckNamesWhatIsWrong) {
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
  EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  const std::string shared = Made(server.NewSample());
  for (const std::string& where : {std::string(), shared}) {
    Database database(run);
    database.Open(DataFolder, where);
    BringFilesTogether(database);
    database.Open(where.empty() ? DataFolder : DataFolder + "/elsewhere", where);
    EXPECT_TRUE(CheckDatabase(database).empty());
    database.Plain().Execute("DELETE FROM suppliers WHERE ID=12");
    database.Plain().Execute("UPDATE suppliers SET Com1='NaN' WHERE ID=3");
    database.Plain().Execute("INSERT INTO Forms(Description,LinkName,Available) VALUES('Lost','Lost',YES)");
    std::string all;
    for (const std::string& line : CheckDatabase(database)) all += line + "\n";
    for (const char* part : {": its supplier does not exist\n", "supplier 3: ", "the column Com1",
                             "its page is missing", "form link of supplier 12: there is no such supplier"}) {
      EXPECT_NE(all.find(part), std::string::npos) << part << " in " << all;
    }
  }
}

}  // namespace tarvolinex
