#include "store/Statements.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

TEST(Statements, PlaceholdersAreFilledInOnePass) {
  EXPECT_EQ(FillStatement(statements::kAllEmails, "<email>", std::string("a@b.c")),
            "UPDATE contacts SET email='a@b.c'");
  EXPECT_EQ(FillStatement(statements::kDeleteContact, "<id>", 12), "DELETE FROM contacts WHERE ID=12");
  EXPECT_EQ(FillStatement("x='<A>',y='<B>'", {{"<A>", std::string("<B>")}, {"<B>", std::string("<A>")}}),
            "x='<B>',y='<A>'");
  EXPECT_EQ(FillStatement("a <X> b < c", "<X>", Value(Null{})), "a  b < c");
  EXPECT_EQ(EscapeQuotes("O'Neill's"), "O`Neill`s");
  EXPECT_EQ(ValueText(NullToDefault(Null{}, std::string("none"))), "none");
}

using StatementsTest = ProgramTest;

TEST_F(StatementsTest, FailuresEndTheProgramWithTheirText) {
  Database database(run);
  EXPECT_THROW(database.ExecuteStatement("DELETE FROM none"), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text.substr(0, 23), "Database update failed");
  Recordset set;
  EXPECT_THROW(database.OpenRecordset("SELECT 1", set), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(1).text, "Database Error");
}

}  // namespace tarvolinex
