#include "platform/data/Database.h"

#include "platform/RuntimeError.h"
#include "platform/data/SqliteText.h"
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
  EXPECT_THROW(connection.Execute("UPDATE t SET Name='" + std::string(100'000, 'x') + "'"), RuntimeError);
  EXPECT_NE(connection.Errors().at(0).find(path), std::string::npos) << connection.Errors()[0];
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
