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
  EXPECT_THROW(ExecuteStatement("DELETE FROM none"), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text.substr(0, 23), "Database update failed");
  Recordset set;
  EXPECT_THROW(OpenRecordset("SELECT 1", set), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(1).text, "Database Error");
}

using SampleStatementsTest = SampleTest;

TEST_F(SampleStatementsTest, EveryTemplateIsUnderstood) {
  const std::string_view templates[] = {statements::kSuppliers,
                                        statements::kDefaultSupplier,
                                        statements::kDeleteSupplier,
                                        statements::kFormLinks,
                                        statements::kDeleteFormLinks,
                                        statements::kInsertFormLink,
                                        statements::kDeleteUnavailableLinks,
                                        statements::kAvailableForms,
                                        statements::kForms,
                                        statements::kNewestForm,
                                        statements::kInsertForm,
                                        statements::kUpdateForm,
                                        statements::kLinkedForms,
                                        statements::kContacts,
                                        statements::kUpdateContact,
                                        statements::kInsertContact,
                                        statements::kDeleteContact,
                                        statements::kDeleteContacts,
                                        statements::kDateSent,
                                        statements::kAllEmails,
                                        statements::kFindContacts,
                                        statements::kDeleteDefaultSupplier};
  for (const std::string_view text : templates) {
    std::string statement(text);
    for (const char* token : {"<ID>", "<SUPPLIERID>", "<formid>", "<AVAILABLE>", "<DESCRIPTION>", "<LINKNAME>",
                              "<FIRSTNAME>", "<SURNAME>", "<JOBTITLE>", "<tel>", "<fax>", "<EMAIL>", "<DATESENT>"}) {
      statement = FillStatement(statement, token, 99);
    }
    if (statement.rfind("SELECT", 0) == 0) {
      Recordset set;
      EXPECT_NO_THROW(OpenRecordset(statement, set)) << statement;
    } else {
      EXPECT_NO_THROW(ExecuteStatement(statement)) << statement;
    }
  }
  TheStore->connection.Begin();
  const std::string update =
      FillStatement(statements::kUpdateSupplier,
                    {{"<VALUES>", std::string("CompanyName = 'Acme' ,tel = '123' ")}, {"<ID>", std::int64_t{1}}});
  EXPECT_NO_THROW(ExecuteStatement(update));
  TheStore->connection.Rollback();
}

TEST_F(SampleStatementsTest, AFailureInATransactionLeavesTheDatabaseAsItWas) {
  EXPECT_THROW(
      {
        Transaction transaction;
        ExecuteStatement("DELETE FROM contacts WHERE ID=1");
        ExecuteStatement("DELETE FROM none");
        transaction.Commit();
      },
      ProgramEnded);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts"), "30");
}

}  // namespace tarvolinex
