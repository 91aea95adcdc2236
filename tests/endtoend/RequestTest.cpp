// One request from its beginning: the first start, a supplier, a quote, and the calculator sent to two contacts in each
// of the three ways. What arrived, and the quote, are left in the folder OUT for the programs that receive it.
#include "app/StartUp.h"
#include "qt/Player.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

class Request : public Player {
 protected:
  Request() : Player(form) {
    options.appFolder = folder.Path();
    DeliverInto(folder.Path());
  }
  // Ticks the contacts with the keyboard.
  void Tick(int contacts) {
    auto& list = Find<QAbstractItemView>("lvSendContacts");
    list.setFocus();
    for (int row = 0; row < contacts; ++row) {
      list.setCurrentIndex(list.model()->index(row, 0));
      Press(list, Qt::Key_Space);
    }
  }
  FrmMain form{run};
  ProgramOptions options;
};

TEST_F(Request, FromTheFirstStartToThreeMessages) {
  const char* given = std::getenv("OUT");
  const std::string out = given ? given : folder.Path() + "/out";
  std::filesystem::create_directories(out);
  WhenWaiting<QDialog>([](QDialog& details) {
    Keys(In(details, "TxtLeaseOrg_0"), "Northgate Leasing");
    Keys(In(details, "TxtLeaseOrg_10"), "leases@northgate.example");
    Click(In<QPushButton>(details, "cmdaction_0"));
  });
  StartWindow(options, form, {[] {}, [] {}});
  WaitFor(form);

  List().setFocus();
  Keys(List(), "sax");
  Settle();
  ClickTab(kTabDetails);
  Type("TxtSupplier_3", "King's Lynn");
  ClickTab(kTabSettings);
  Type("TxtRangeYield_3", "9.4");
  ClickTab(kTabQuote);
  EXPECT_EQ(Town(3), "King`s Lynn");
  Type("TxtProCalc_1", "36");
  Type("TxtProCalc_0", "12500");
  const std::string payment = Find<QLabel>("LblResult_0").text().toStdString();
  EXPECT_GT(std::stod(payment), 300);
  WriteFile(out + "/quote.json", R"({"cost": "12500", "term": "36", "payment": ")" + payment + R"(", "title": ")" +
                                     CalculatorPreferences.AliasCalcName.Trimmed() + "\"}");

  ClickTab(kTabSend);
  Type("TxtEmail_0", "Your calculator");
  Keys(Find<QPlainTextEdit>("TxtEmail_1"), "Hello");
  Tick(2);
  const LoopbackServer web("http", out, {"SUCCESS"});
  WebServer = web.Host();
  const char* attachments[] = {"CalcInstall.exe", "CalcInstall.zip", ""};
  for (int way = 0; way < 3; ++way) {
    const LoopbackServer mail("smtp", out);
    folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=w\n[w]\nTransport=smtp\nSecurity=none\nServer=" + mail.Host());
    Send(way);
    ASSERT_EQ(said.size(), static_cast<std::size_t>(way) + 1);
    EXPECT_NE(said.back().find("has been sent successfully by Tarvolinex."), std::string::npos) << said.back();
    const std::string message = ReadFile(out + "/message.json");
    for (const std::string& part : std::initializer_list<std::string>{
             R"("subject": "Your calculator")", R"("recipients": "leases@northgate.example,)",
             R"("attachment": ")" + std::string(attachments[way]) + "\"", R"("text": "Hello)"}) {
      EXPECT_NE(message.find(part), std::string::npos) << part << message;
    }
    std::filesystem::rename(out + "/attachment", out + "/attachment" + std::to_string(way));
    Tick(2);  // the list is new
  }
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid=3 AND DateLastSent>''"), "2");
  EXPECT_TRUE(ListFiles(AppFolder + "\\CalcInstall_*").empty());
}

}  // namespace tarvolinex
