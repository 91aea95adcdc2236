// What the store keeps of suppliers, without a window.
#include "store/Suppliers.h"

#include "platform/RuntimeError.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "support/Fixture.h"

namespace tarvolinex {

class StoreTest : public ProgramTest {
 protected:
  StoreTest() {
    PutFreshDatabase();
    UseSampleRows();
    database.Open(DataFolder, run.SharedDatabase);
  }
  void PutFreshDatabase() {
    std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
    EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  }
  std::string TownIn(const std::string& copy) {
    Connection kept;
    kept.Open("dbq=" + DataFolder + "\\Backup\\" + copy);
    return Ask("SELECT Town FROM suppliers WHERE ID=3", kept);
  }
  static std::string Ask(const std::string& statement, Connection& connection) {
    Recordset answer;
    answer.Open(statement, connection);
    return answer.EndOfFile() ? "(none)" : ValueText(answer.Field(0));
  }
  std::string Ask(const std::string& statement) { return Ask(statement, database.Plain()); }
  Database database{run};
};

TEST_F(StoreTest, ARemovedSupplierComesBackWithItsContactsAndLinks) {
  const auto rows = [this] {
    std::string all;
    for (const char* table :
         {"suppliers WHERE ID=3", "contacts WHERE Supplierid=3", "SupplierFormLink WHERE SupplierId=3"}) {
      Recordset set;
      for (set.Open(std::string("SELECT * FROM ") + table, database.Plain()); !set.EndOfFile(); set.MoveNext()) {
        const Row row(set);
        for (const Row::Field& field : row.Fields()) all += ValueText(field.value) + "|";
      }
    }
    return all;
  };
  const std::string before = rows();
  EXPECT_NE(before.find("Saxonholt Dental Systems Ltd"), std::string::npos);
  const RemovedRows removed = DeleteSupplier(database, 3);
  EXPECT_EQ(rows(), "");
  RestoreRows(database, removed);
  EXPECT_EQ(rows(), before);
}

TEST_F(StoreTest, ADailyCopyIsMadeBeforeTheFirstWriteAndFiveAreKept) {
  const std::string pattern = DataFolder + "\\Backup\\*.mdb";
  for (const char* killed : {".tmp", ".77.tmp", ".77.tmp-journal"}) {
    folder.File("Backup/Tarvolinex 2020-01-01.mdb" + std::string(killed), "half");
  }
  const auto write = [this](const std::string& town) {
    database.ExecuteStatement("UPDATE suppliers SET Town='" + town + "' WHERE ID=3");
  };
  using std::chrono::hours;
  desktop.now = std::chrono::system_clock::from_time_t(1800000000);
  for (int day = 0; day < 7; ++day) {
    desktop.now += hours(24);
    for (const char* time : {" early", " late"}) write(std::to_string(day) + time);
  }
  EXPECT_EQ(ListFiles(pattern).size(), 5U);
  EXPECT_EQ(ListFiles(DataFolder + "\\Backup\\*.*").size(), 5U);
  EXPECT_EQ(TownIn(ListFiles(pattern).back()), "5 late");
  Database again(run);  // the program is started once more on the same day
  again.Open(DataFolder);
  again.ExecuteStatement("UPDATE suppliers SET Town='6 again' WHERE ID=3");
  EXPECT_EQ(TownIn(ListFiles(pattern).back()), "5 late");
  desktop.now -= hours(24 * 400);  // it was wrong
  write("7");
  EXPECT_EQ(TownIn(ListFiles(pattern).front()), "6 again");
  EXPECT_EQ(ListFiles(pattern).size(), 5U);
}

TEST_F(StoreTest, AReplacedDatabaseIsKept) {
  database.ExecuteStatement("UPDATE suppliers SET Town='Own' WHERE ID=3");
  database.Close();
  for (int n = 0; n < 2; ++n) PutFreshDatabase();
  std::set<std::string> towns;
  for (const std::string& copy : ListFiles(DataFolder + "\\Backup\\Replaced *.mdb")) towns.insert(TownIn(copy));
  EXPECT_EQ(towns, (std::set<std::string>{"Own", "Reading"}));  // the second one is the first's fresh database
}

TEST_F(StoreTest, PlaceholdersAreFilledInOnePassAndAnApostropheEndsNoText) {
  EXPECT_EQ(FillStatement(statements::kAllEmails, "<email>", std::string("a@b.c")),
            "UPDATE contacts SET email='a@b.c'");
  EXPECT_EQ(FillStatement(statements::kDeleteContact, "<id>", 12), "DELETE FROM contacts WHERE ID=12");
  EXPECT_EQ(FillStatement("x='<A>',y='<B>'", {{"<A>", std::string("<B>")}, {"<B>", std::string("<A>")}}),
            "x='<B>',y='<A>'");
  EXPECT_EQ(FillStatement("a <X> b < c", "<X>", Value(Null{})), "a  b < c");
  EXPECT_EQ(EscapeQuotes("O'Neill's"), "O`Neill`s");
  EXPECT_EQ(ValueText(NullToDefault(Null{}, std::string("none"))), "none");
}

TEST_F(StoreTest, FailuresEndTheProgramWithTheirText) {
  EXPECT_THROW(database.ExecuteStatement("DELETE FROM none"), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text, std::string("Database update failed.\n\n") +
                                          (OnServer() ? "relation \"none\" does not exist" : "no such table: none"));
  Recordset set;
  EXPECT_THROW(database.OpenRecordset("SELECT none", set), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(1).text, "Database Error");
}

TEST_F(StoreTest, ContactsAreInSurnameOrderAndFoundByHowTheirNamesBegin) {
  database.ExecuteStatement("DELETE FROM contacts");
  const int ann = AddContact(database, 3, {"Ann", "Young", "", "", "", "ann@x.example"}),
            bob = AddContact(database, 3, {"Bob", "Adams", "Buyer"}),
            anna = AddContact(database, 10, {"Anna", "O'Young"});
  const auto contacts = ContactsOf(database, 3);
  ASSERT_EQ(contacts.size(), 2U);
  EXPECT_EQ(contacts[0].name + contacts[1].name + contacts[1].email, "Bob AdamsAnn Youngann@x.example");
  EXPECT_EQ(ReadContact(database, bob, 3).Text("jobtitle"), "Buyer");
  EXPECT_FALSE(ReadContact(database, bob, 10).Found());
  EXPECT_EQ(FindContacts(database, "ann", "young").at(0).contact, ann);
  EXPECT_EQ(FindContacts(database, "", "O'Y").at(0).contact, anna);
  EXPECT_EQ(SuppliersOfContacts(database, "an"), (std::set<int>{3, 10}));
  EXPECT_EQ(SuppliersOfContacts(database, "ann y"), std::set<int>{3});
  SetDatesLastSent(database, {{ann, "05 March 2003 14:07:09"}}, false);
  EXPECT_EQ(ContactsOf(database, 3)[1].dateLastSent, "");
  SetDatesLastSent(database, {{ann, "05 March 2003 14:07:09"}}, true);
  EXPECT_EQ(ContactsOf(database, 3)[1].dateLastSent, "05 March 2003 14:07:09");
}

}  // namespace tarvolinex
