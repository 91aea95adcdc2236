#include "distribute/Standing.h"

#include "store/Forms.h"
#include "support/Fixture.h"

namespace tarvolinex {

class StandingTest : public SampleTest {
 protected:
  // "state|as|changes" of supplier 1.
  std::string Told() {
    std::string told;
    ForEachStanding(form->database, OwnBranding(), [&](const Standing& each) {
      if (each.supplierId == 1) told = std::string(NameOf(each.state)) + "|" + each.sentAs + "|" + each.changes;
    });
    return told;
  }
  Publication One() {
    return {OwnBranding(), ReadSupplier(form->database, 1).settings, LinkedForms(form->database, 1)};
  }
  void Send(const std::string& result) {
    NoteDelivery(form->database, One(),
                 {{"2026-11-25 09:00:00", 1, "Aldermoor Print Finishing Ltd", 1, "Helen O'Hara", "h@x.example", "zip",
                   result, "Subject", "It's here"}},
                 run);
  }
  void Execute(const std::string& statement) { form->database.ExecuteStatement(statement); }
};

TEST_F(StandingTest, WhatHasChangedSinceTheLastMessageIsToldInWords) {
  EXPECT_EQ(Told(), "never||");
  CalculatorPreferences.AliasVat = "VAT";
  CalculatorPreferences.TaxRate = 20;
  CalculatorPreferences.OrgTown = "Leeds";
  Send("refused: no such box");
  NoteMade(form->database, 1, One(), "exe", run);
  EXPECT_EQ(Told(), "never||") << "only mail that was taken counts";
  Send("sent");
  EXPECT_EQ(Told(), "current|zip|");
  CalculatorPreferences.TaxRate = 21;
  CalculatorPreferences.OrgTown = "";
  CalculatorPreferences.CaptionColour ^= 0xFF;
  Execute("UPDATE suppliers SET Yield1=9, RangeEquipFROM1=74000.5, Com0=1.625 WHERE ID=1");
  const FormRow first = LinkedForms(form->database, 1).front();
  Execute("DELETE FROM SupplierFormLink WHERE supplierid=1 AND formid=" + std::to_string(first.id));
  const FormRow second = LinkedForms(form->database, 1).front();
  WriteFile(FormPagePath(DataFolder, second.id), "<html>another page</html>");
  const std::string changes = Told();
  for (const std::string& part :
       {std::string("stale|zip|"), std::string("VAT from 20 to 21"), std::string("Org town from Leeds to nothing"),
        std::string("Caption colour from #"), std::string("yield of band 2 from 7.50 to 9.00"),
        std::string("threshold of band 2 from 75000.00 to 74000.50"),
        std::string("commission of band 1 from 1.50 to 1.625"), "form " + first.linkName + " removed",
        "; form " + second.linkName + ";"}) {
    EXPECT_NE((changes + ";").find(part), std::string::npos) << part << " in " << changes;
  }
  Send("sent");
  EXPECT_EQ(Told(), "current|zip|");
  Execute("UPDATE suppliers SET Yield1='NaN' WHERE ID=1");
  EXPECT_NE(Told().find("the column Yield1 holds"), std::string::npos) << Told();
}

TEST_F(StandingTest, DeliveriesKeepWhomAndWhatAndOnlyWholeOnesAreNoted) {
  Send("sent");
  EXPECT_EQ(Ask("SELECT Contact||'|'||Email||'|'||SentAs||'|'||SupplierId FROM Deliveries"),
            "Helen O'Hara|h@x.example|zip|1");
  EXPECT_EQ(MessageOfDelivery(form->database, 1), "Subject\n\nIt's here");
  EXPECT_EQ(MessageOfDelivery(form->database, 2), "");
  Send("sent");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM DeliveredContents"), "3") << "what is the same is stored once";
  Execute("DROP TABLE DeliveredContents");
  Send("sent");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM Deliveries"), "2");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM Changes WHERE What='delivery'"), "2");
  EXPECT_NE(desktop.boxes.back().text.find("could not be noted"), std::string::npos);
}

}  // namespace tarvolinex
