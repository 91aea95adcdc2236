#include "platform/data/Database.h"

#include "platform/RuntimeError.h"
#include "platform/data/SqliteText.h"
#include "platform/text/Text.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"

namespace tarvolinex {

class DatabaseTest : public ProgramTest {
 protected:
  DatabaseTest() {
    if (OnServer()) {
      run.SharedDatabase = SharedServer::The().NewDatabase();
    } else {
      WriteFile(path, "");
    }
    connection.Open(OnServer() ? run.SharedDatabase : "driver={Microsoft Access Driver (*.mdb)};dbq=" + path);
    connection.MakeTable({"t",
                          {{"ID", ColumnKind::Id},
                           {"Name", ColumnKind::Text, 20},
                           {"Limit1", ColumnKind::Currency},
                           {"Rate", ColumnKind::Single},
                           {"Flag", ColumnKind::YesNo},
                           {"Made", ColumnKind::Moment}}});
    connection.Execute(
        "INSERT INTO t VALUES(1,'beta',12345.6789,9.125,NO,NULL),(2,'Alpha',100,7,YES,'5 March 2003 14:07:09'),"
        "(3,'Ärger',NULL,NULL,YES,NULL),(4,'ärger b','250.5',0,True,NULL)");
  }
  std::string Column(const std::string& statement) {
    Recordset set;
    set.Open(statement, connection);
    std::string texts;
    for (; !set.EndOfFile(); set.MoveNext()) texts += ValueText(set.Field(0)) + ";";
    return texts;
  }
  std::string path = folder.Path() + "/one;dbq=two;Tarvolinex.mdb";
  Connection connection;
};

TEST(SqliteText, BareWordsAndOrderAreTranslatedOutsideQuotesOnly) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT * FROM Forms WHERE AVAILABLE=yes ORDER BY description",
       "SELECT * FROM Forms WHERE AVAILABLE=1 ORDER BY description COLLATE CASEBLIND"},
      {"UPDATE t SET a = 'No, yes' ,b =NO,c =True ", "UPDATE t SET a = 'No, yes' ,b =0,c =1 "},
      {"SELECT yes2, [no] FROM t ORDER BY Surname, firstname DESC",
       "SELECT yes2, [no] FROM t ORDER BY Surname COLLATE CASEBLIND, firstname COLLATE CASEBLIND DESC"},
      {"SELECT a FROM (SELECT a FROM t ORDER BY a) WHERE b=fALSE",
       "SELECT a FROM (SELECT a FROM t ORDER BY a COLLATE CASEBLIND) WHERE b=0"},
      {"INSERT INTO t VALUES('ORDER BY yes','it`s no')", "INSERT INTO t VALUES('ORDER BY yes','it`s no')"},
  };
  for (const auto& [given, expected] : cases) EXPECT_EQ(SqliteText(given), expected);
}

TEST_F(DatabaseTest, OrderLikeAndNamesAreCaseBlind) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT name FROM T ORDER BY NAME", "Alpha;beta;Ärger;ärger b;"},
      {"SELECT Name FROM t WHERE name LIKE 'äRG%'", "Ärger;ärger b;"},
      {"SELECT Name FROM t WHERE name LIKE '%'", "beta;Alpha;Ärger;ärger b;"},
      {"SELECT Name FROM t WHERE flag=YES", "Alpha;Ärger;ärger b;"}};
  for (const auto& [statement, rows] : cases) EXPECT_EQ(Column(statement), rows);
}

TEST_F(DatabaseTest, ColumnsHaveTheirTypesSizesAndValues) {
  Recordset set;
  set.Open("SELECT * FROM t ORDER BY ID", connection);
  for (const auto& [column, type] : {std::pair{"id", ColumnType::WholeNumber},
                                     {"LIMIT1", ColumnType::Currency},
                                     {"Rate", ColumnType::Single},
                                     {"Flag", ColumnType::YesNo},
                                     {"Made", ColumnType::Date}}) {
    EXPECT_EQ(set.TypeOf(column), type) << column;
  }
  EXPECT_EQ(set.DefinedSize("Name"), 20);
  EXPECT_EQ(std::get<Currency>(set.Field("Limit1")).Units(), 123456789);
  EXPECT_EQ(std::get<float>(set.Field("Rate")), 9.125F);
  EXPECT_EQ(ValueText(set.Field("Flag")), "False");
  EXPECT_EQ(Column("SELECT Limit1 FROM t"), "12345.6789;100;;250.5;");
  EXPECT_EQ(Column("SELECT Flag FROM t"), "False;True;True;True;");
  EXPECT_THROW(set.Field("none"), RuntimeError);
}

TEST_F(DatabaseTest, OddTextsComeBackAndDoNothingElse) {
  for (const std::string& odd :
       {std::string("R'); DROP TABLE t;--"), std::string("back\\slash\\"), std::string("YES ORDER BY 1"),
        std::string("$1 ? %s \"x\" [y] `z`"), std::string("\n\t\x7F"), std::string("\u00A0\U0001F600\uFEFF"),
        std::string("%_"), std::string("")}) {
    connection.Execute("UPDATE t SET Name='" + ReplaceAll(odd, "'", "''") + "' WHERE ID=1");
    EXPECT_EQ(Column("SELECT Name FROM t WHERE ID=1"), odd + ";");
    const std::string pattern = ReplaceAll(odd.substr(0, 6), "'", "''");
    EXPECT_NE(Column("SELECT ID FROM t WHERE Name LIKE '" + pattern + "%'").find("1;"), std::string::npos) << odd;
    const std::vector<Value> row = {odd, Null{}};
    connection.Begin();
    connection.InsertRows("t", {"Name", "Made"}, 1,
                          [&](std::size_t, std::size_t column) -> const Value& { return row[column]; });
    connection.Commit();
    EXPECT_EQ(Column("SELECT Name FROM t WHERE ID=(SELECT MAX(ID) FROM t)"), odd + ";");
  }
  connection.Execute("UPDATE t SET Rate='', Made='' WHERE ID=1");  // nothing there
  EXPECT_EQ(Column("SELECT Rate FROM t WHERE ID=1") + Column("SELECT Made FROM t WHERE ID=1"), ";;");
}

TEST_F(DatabaseTest, IdsAreGivenOnceAlsoBehindThoseThatWereSaid) {
  const auto add = [&](const std::string& id) {
    connection.Execute(std::string("INSERT INTO t(") + (id.empty() ? "" : "ID,") + std::string("Name) VALUES(") +
                       (id.empty() ? "" : id + ",") + "'x')");
    return connection.LastInsertedId();
  };
  EXPECT_EQ(add(""), 5);
  EXPECT_EQ(add("9"), 9);
  EXPECT_EQ(add("7"), 7);
  EXPECT_EQ(add(""), 10);
  EXPECT_EQ(add("5000"), 5000);
  connection.Execute("DELETE FROM t WHERE ID>=10");
  EXPECT_EQ(add(""), 5001);
  EXPECT_EQ(connection.LargestIdGiven("T"), 5001);
}

TEST_F(DatabaseTest, FindReadsTheRowAsItIsNow) {
  Recordset set;
  set.Open("SELECT * FROM t ORDER BY Name", connection);
  connection.Execute("UPDATE t SET Name = 'changed' WHERE ID = 2");
  set.Find("ID=2");
  EXPECT_EQ(ValueText(set.Field("Name")), "changed");
  set.Find("ID=99");
  EXPECT_TRUE(set.EndOfFile());
  EXPECT_THROW(set.Field("Name"), RuntimeError);
  EXPECT_THROW(set.Find("Name='x'"), RuntimeError);
  set.MoveFirst();
  EXPECT_EQ(ValueText(set.Field("Name")), "beta");
}

TEST_F(DatabaseTest, AFailedStatementChangesNothingAndIsDescribed) {
  EXPECT_THROW(connection.Execute("UPDATE t SET none = 1"), RuntimeError);
  ASSERT_FALSE(connection.Errors().empty());
  EXPECT_NE(connection.Errors().front().find("none"), std::string::npos);
  EXPECT_THROW(connection.Execute("DELETE FROM t; DELETE FROM t"), RuntimeError);
  connection.Begin();
  connection.Execute("DELETE FROM t WHERE ID=1");
  connection.Rollback();
  EXPECT_EQ(Column("SELECT COUNT(*) FROM t"), "4;");
}

TEST_F(DatabaseTest, AFullDiskIsNamedWithTheDatabase) {
  const FullDisk full(8192);
  connection.Begin();
  EXPECT_THROW(connection.Execute("UPDATE t SET Name='" + std::string(100'000, 'x') + "'"), RuntimeError);
  EXPECT_NE(connection.Errors().at(0).find(path), std::string::npos) << connection.Errors()[0];
  EXPECT_NO_THROW(connection.Rollback()) << "what failed has rolled back by itself";
}

TEST_F(DatabaseTest, OnlyAnExistingDatabaseIsOpened) {
  const std::string text = folder.File("text.mdb", "this is a letter, not a database, and long enough to look at");
  for (const std::string& none : {folder.Path() + "/none.mdb", text}) {
    EXPECT_THROW(connection.Open("dbq=" + none), RuntimeError);
    EXPECT_FALSE(connection.IsOpen());
  }
  EXPECT_THROW(connection.Execute("DELETE FROM t"), RuntimeError);
}

}  // namespace tarvolinex
