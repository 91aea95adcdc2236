#include "distribute/SendLetters.h"

#include <algorithm>
#include <map>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

class SendLettersTest : public SampleTest {
 protected:
  SendLettersTest() {
    SaveCalculatorPreferences(OwnBranding(), run);
    CalculatorPreferences.AliasCalcName = "Lease Tool";
    Address(1, "a@x.example");
    Address(2, "no.body@x.example");
    Address(3, "later.on@x.example");
    Address(4, "gone.by@x.example");
    order.sendType = kSendZip;
    order.subject = "For <FIRSTNAME>";
    order.message = "Your <CALCNAME>, <SUPPLIERNAME>";
  }
  void Address(int supplier, const std::string& email) {
    form->database.ExecuteStatement("UPDATE contacts SET email='" + email +
                                    "' WHERE supplierid=" + std::to_string(supplier));
  }
  void UseServer(const std::string& host) {
    folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=s\n[s]\nTransport=smtp\nSecurity=none\nServer=" + host + "\n");
  }
  PostRoom Room() {
    using std::chrono::milliseconds;
    return {form->database, {OwnBranding(), {}, 0, {milliseconds(1), milliseconds(1)}}, run};
  }
  void Begin(int suppliers, bool toLast = false) {
    const auto jobs =
        BatchJobs(form->database, OwnBranding(), [&](const Standing& each) { return each.supplierId <= suppliers; });
    order.toLast = toLast;
    Room().Begin(LettersFor(form->database, jobs, order));
  }
  void Send() { Room().Send(); }
  LetterOrder order;
  // "1 sent, 2 refused: ..." by supplier.
  std::string Fates() {
    std::map<int, std::string> fates;
    for (const Letter& each : Letters(form->database)) fates[each.supplierId] = NameOf(each.state);
    std::string all;
    for (const auto& [supplier, fate] : fates) all += std::to_string(supplier) + " " + fate + ", ";
    return all;
  }
};

TEST_F(SendLettersTest, EachReaderHasAFateAndNobodyGetsTwo) {
  const LoopbackServer server("smtp", folder.Path(), {"people"});
  UseServer(server.Host());
  form->database.ExecuteStatement("UPDATE suppliers SET Yield0='NaN' WHERE ID=5");
  Begin(5);
  Send();
  EXPECT_EQ(Fates(), "1 sent, 2 refused, 3 sent, 4 doubtful, 5 refused, ");
  const std::string taken = ReadFile(folder.Path() + "/taken");
  EXPECT_EQ(taken.find("no.body"), std::string::npos);
  const std::string report = LetterReport(Letters(form->database));
  EXPECT_NE(report.find("550 no such user"), std::string::npos) << report;
  EXPECT_NE(report.find("the column Yield0 holds"), std::string::npos) << report;
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE DateLastSent IS NOT NULL AND supplierid IN (1,3)"), "2");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE DateLastSent IS NOT NULL AND supplierid IN (2,4,5)"), "0");
  EXPECT_EQ(
      Ask("SELECT MIN(Result)||COUNT(DISTINCT substr(Result,1,7)) FROM Deliveries WHERE SupplierId=1 OR SupplierId=3"),
      "sent1");
  Send();  // everything has its fate
  EXPECT_EQ(ReadFile(folder.Path() + "/taken"), taken);
  Begin(5, true);
  EXPECT_EQ(Fates(), "1 waiting, 3 waiting, ") << "who was sent one before";
  form->database.ExecuteStatement("UPDATE contacts SET DateLastSent='1 May 2026' WHERE supplierid=5");
  form->database.ExecuteStatement("UPDATE Deliveries SET SentAs='exe' WHERE SupplierId=3");
  order.wayOfLast = true;
  order.contacts.emplace();
  for (const int supplier : {2, 3, 5}) {
    order.contacts->insert(ContactsOf(form->database, supplier).front().id);
  }
  Begin(5, true);
  std::string ways;
  for (const Letter& each : Letters(form->database)) {
    ways += std::to_string(each.supplierId) + " " + WayName(each.sendType) + ", ";
  }
  EXPECT_EQ(ways, "3 exe, 5 zip, ") << "also who has a date from before there was a list";
}

TEST_F(SendLettersTest, ARunThatIsCutOffIsTakenUpWhereItWas) {
  UseServer("127.0.0.1:1");
  Begin(4);
  Send();
  EXPECT_EQ(Fates(), "1 waiting, 2 waiting, 3 waiting, 4 waiting, ");
  EXPECT_EQ(LettersLeft(form->database), 4);
  const LoopbackServer server("smtp", folder.Path(), {"people"});
  UseServer(server.Host());
  const int first = Letters(form->database).front().id;
  SetLetterState(form->database, first, LetterState::Sending, "");
  run.StopRequested = true;
  Send();
  EXPECT_EQ(LettersLeft(form->database), 3);
  run.StopRequested = false;
  // Meanwhile one has gone and another's address is put right.
  form->database.ExecuteStatement("DELETE FROM contacts WHERE supplierid=2");
  Address(3, "new@x.example");
  form->database.ExecuteStatement("UPDATE contacts SET firstname='Newly' WHERE supplierid=4");
  Send();
  EXPECT_EQ(LettersLeft(form->database), 0);
  const std::string report = LetterReport(Letters(form->database)), taken = ReadFile(folder.Path() + "/taken");
  EXPECT_NE(report.find("refused,The contact has been removed"), std::string::npos) << report;
  EXPECT_NE(report.find(",new@x.example,sent"), std::string::npos) << report;
  EXPECT_NE(report.find(",Newly "), std::string::npos) << report;
  EXPECT_TRUE(taken.find("new@x.example") != std::string::npos && taken.find("later.on") == std::string::npos);
  EXPECT_EQ(Letters(form->database).front().state, LetterState::Doubtful);
  EXPECT_EQ(ReadFile(folder.Path() + "/taken").find(Letters(form->database).front().email), std::string::npos);
}

TEST_F(SendLettersTest, OneProgramHasTheLettersAndForgetsNoneThatWasLeaving) {
  Begin(2);
  const int first = Letters(form->database).front().id;
  {
    PostRoom room = Room();
    EXPECT_THROW(Room(), RuntimeError);
    EXPECT_TRUE(ClaimLetter(form->database, first));
    EXPECT_FALSE(ClaimLetter(form->database, first)) << "it does not wait any more";
  }
  if (OnServer()) {
    Connection otherDesk;
    otherDesk.Open(Where());
    ASSERT_TRUE(otherDesk.Hold("letters"));
    EXPECT_THROW(Room(), RuntimeError) << "in a data folder of its own";
    otherDesk.LetGo("letters");
  }
  Room().Forget();
  EXPECT_EQ(Ask("SELECT Result||SupplierId FROM Deliveries"), "doubtful1");
  EXPECT_TRUE(Letters(form->database).empty());
}

TEST_F(SendLettersTest, WhatIsInEverybodysWayEndsTheRunAtOnceAndIsTold) {
  const LoopbackServer server("smtp", folder.Path(), {"refuse"});
  UseServer(server.Host());
  Begin(2);
  Send();
  EXPECT_EQ(Fates(), "1 waiting, 2 waiting, ") << "the server does not like the sender";
  EXPECT_EQ(Letters(form->database).back().detail, "") << "it was not asked twice";
  EXPECT_NE(desktop.boxes.back().text.find("550 no mail today"), std::string::npos);
  CalculatorPreferences.OrgEmail = "";
  EXPECT_THROW(Begin(1), RuntimeError);
  EXPECT_EQ(LettersLeft(form->database), 2) << "the last run is kept";
}

TEST_F(SendLettersTest, ApostrophesArriveAsTheyAre) {
  const LoopbackServer server("smtp", folder.Path(), {"people"});
  UseServer(server.Host());
  form->database.ExecuteStatement(
      "UPDATE contacts SET email='o''neil@x.example', FirstName='D''Arcy', Surname='' WHERE supplierid=1");
  Begin(1);
  Send();
  EXPECT_EQ(ReadFile(folder.Path() + "/taken"), "o'neil@x.example\n");
  EXPECT_EQ(Ask("SELECT Contact||' '||Email FROM Deliveries"), "D'Arcy o'neil@x.example");
  EXPECT_EQ(MessageOfDelivery(form->database, 1).substr(0, 10), "For D'Arcy");
}

TEST_F(SendLettersTest, WhatIsSaidIsMadeForItsReader) {
  Begin(1);
  const Letter letter = Letters(form->database).front();
  const WrittenLetter written =
      Written(letter, OwnBranding(), ReadSupplier(form->database, 1).settings, "", "", {"www.x.example", "1"});
  EXPECT_EQ(written.subject + "|" + written.text + "|" + written.attachment,
            "For " + letter.firstName + "|Your Lease Tool, Aldermoor Print Finishing Ltd|CalcInstall.zip");
  form->database.ExecuteStatement(
      "INSERT INTO contacts (Supplierid, FirstName, Email) VALUES (1, 'Twin', 'A@X.example')");
  Begin(1);
  EXPECT_EQ(Letters(form->database).size(), 1U) << "one address, one letter";
}

}  // namespace tarvolinex
