// The quote sheet of the quote that is shown: written, opened, mailed.
#include "support/Fixture.h"
#include "ui/quotes/FrmKeepQuote.h"
#include "ui/quotes/FrmQuotes.h"
#include "ui/quotes/FrmSheet.h"

namespace tarvolinex {

class SheetWindowTest : public SampleTest {
 protected:
  SheetWindowTest() {
    desktop.now = std::chrono::system_clock::from_time_t(1800000000);  // 2027-01-15
    folder.File("Mail.INI", "[MAIL]\nDefault=o\n[o]\nTransport=outbox\n");
    Type(Box(kBoxCapitalCost), "12500");
    Type(Box(kBoxPayments), "36");
  }
  void InSheet(const std::function<void(FrmSheet&)>& play) {
    desktop.modal = [&](Window& window) { play(dynamic_cast<FrmSheet&>(window)); };
    form->quote.CmdSheet.Press();
  }
  std::string TextOf(const std::string& pdf) {
    EXPECT_EQ(std::system(("pdftotext -layout '" + pdf + "' " + folder.Path() + "/text").c_str()), 0);
    return ReadFile(folder.Path() + "/text");
  }
  void ExpectShown(const std::string& pdf, const std::vector<std::string>& words) {
    const std::string text = TextOf(pdf);
    for (const std::string& word : words) EXPECT_NE(text.find(word), std::string::npos) << word << "\n" << text;
  }
};

TEST_F(SheetWindowTest, WhatIsTypedIsOnTheSheetAndStillThereTheNextTime) {
  const std::string payment = "£" + form->quote.LblResult(kResultPayment).Caption();
  InSheet([&](FrmSheet& sheet) {
    Type(sheet.TxtSheet(kSheetCustomer), "Harbour Works");
    Type(sheet.TxtSheet(kSheetReference), "Q-1");
    sheet.TxtSheet(kSheetStart).Type("2027-02-30");
    sheet.CmdPreview.Press();
    EXPECT_TRUE(desktop.launched.empty());
    Type(sheet.TxtSheet(kSheetStart), "2027-01-31");
    sheet.TxtSheet(kSheetTerms).Type("36, x");
    EXPECT_FALSE(sheet.TxtSheet(kSheetTerms).Fault().empty());
    sheet.TxtSheet(kSheetTerms).Type("36");
    sheet.ChkSchedule.SetValue(true);
    sheet.CmdPreview.Press();
  });
  ASSERT_EQ(desktop.launched.size(), 1U);
  ExpectShown(AppFolder + "/QuoteSheet.pdf", {"Harbour Works", "Q-1", payment, "28 February 2027", "14 February 2027"});
  EXPECT_EQ(TextOf(AppFolder + "/QuoteSheet.pdf").find("Yield"), std::string::npos);
  InSheet([&](FrmSheet& sheet) {
    EXPECT_EQ(sheet.TxtSheet(kSheetCustomer).Text(), "Harbour Works");
    sheet.TxtSheet(kSheetTerms).Type("24, 36 48");
    sheet.ChkInternal.SetValue(true);
    desktop.files = {folder.Path() + "/saved.pdf"};
    sheet.CmdSavePdf.Press();
  });
  ExpectShown(folder.Path() + "/saved.pdf", {"Option 3", payment, "Yield", "Commission"});
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(SheetWindowTest, WhatIsTypedBelongsToItsQuoteAndWhatIsProposedToNone) {
  const auto keep = [&](const std::string& customer) {
    desktop.modal = [&](Window& window) {
      auto& dialog = dynamic_cast<FrmKeepQuote&>(window);
      EXPECT_EQ(dialog.TxtKeep(kKeepCustomer).Text(), customer);
      dialog.CmdKeep.Press();
    };
    form->quote.CmdKeepQuote.Press();
  };
  const auto sheet = [&](const std::function<void(FrmSheet&)>& play) {
    std::string held;
    InSheet([&](FrmSheet& window) {
      for (const int box : {kSheetCustomer, kSheetReference, kSheetStart, kSheetValidUntil}) {
        held += window.TxtSheet(box).Text() + "|";
      }
      if (play) play(window);
    });
    return held;
  };
  sheet([&](FrmSheet& window) {
    Type(window.TxtSheet(kSheetCustomer), "Ash");
    Type(window.TxtSheet(kSheetStart), "2027-02-01");
    window.TxtSheet(kSheetValidUntil).Type("");
  });
  desktop.now += std::chrono::hours(24);
  EXPECT_EQ(sheet({}), "Ash||2027-02-01||");
  keep("Ash");
  EXPECT_EQ(sheet([&](FrmSheet& window) { Type(window.TxtSheet(kSheetEquipment), "Press"); }), "Ash|1|2027-02-01||");
  EXPECT_EQ(Ask("SELECT Customer || Equipment || Reference FROM KeptQuotes"), "AshPress");
  EXPECT_EQ(form->quote.Kept()->details.equipment, "Press");
  Type(Box(kBoxCapitalCost), "9000");
  EXPECT_EQ(sheet({}), "||2027-01-16|2027-02-15|") << "another customer's";
  desktop.now += std::chrono::hours(24);
  EXPECT_EQ(sheet({}), "||2027-01-17|2027-02-16|");
  desktop.modal = [](Window& window) { dynamic_cast<FrmQuotes&>(window).Toolbar1.Press("COPY"); };
  form->menus.MnuQuotes.Choose();
  EXPECT_EQ(sheet({}), "Ash||2027-01-17|2027-02-16|");
  keep("Ash");
  EXPECT_EQ(AskAll("SELECT Equipment, StartDate FROM KeptQuotes WHERE ID = 2"), "Press NULL");
}

TEST_F(SheetWindowTest, AMailGoesToTheCustomerAndInternalFiguresOnlyAfterAQuestion) {
  const auto mails = [&] { return ListFiles(AppFolder + "\\Outbox\\*.eml"); };
  InSheet([&](FrmSheet& sheet) {
    sheet.CmdMail.Press();
    EXPECT_EQ(desktop.boxes.back().text, "Please enter the customer's e-mail address.");
    Type(sheet.TxtSheet(kSheetEmail), "buyer@example.com");
    sheet.ChkInternal.SetValue(true);
    sheet.CmdMail.Press();
    EXPECT_TRUE(mails().empty());
    sheet.ChkInternal.SetValue(false);
    EXPECT_NE(sheet.TxtMessage.Text().find("14 February 2027"), std::string::npos) << sheet.TxtMessage.Text();
    Type(sheet.TxtMessage, "As agreed.");
    Type(sheet.TxtSheet(kSheetReference), "Q-7");
    EXPECT_EQ(sheet.TxtMessage.Text(), "As agreed.");
    sheet.CmdMail.Press();
  });
  ASSERT_EQ(mails().size(), 1U);
  const std::string mail = ReadFile(AppFolder + "\\Outbox\\" + mails().front());
  for (const char* part : {"buyer@example.com", "Subject: Lease quotation Q-7", "As agreed.", "Quote Q-7.pdf"}) {
    EXPECT_NE(mail.find(part), std::string::npos) << part << "\n" << mail.substr(0, 2000);
  }
  EXPECT_NE(desktop.boxes.back().text.find("went to"), std::string::npos);
}

}  // namespace tarvolinex
