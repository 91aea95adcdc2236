// Quotes that are kept from the quote tab, and the window that shows them.
#include "ui/quotes/FrmQuotes.h"

#include "platform/text/Text.h"
#include "support/Fixture.h"
#include "ui/quotes/FrmKeepQuote.h"
#include "ui/quotes/FrmSchedule.h"
#include "ui/quotes/FrmTerms.h"

namespace tarvolinex {

class QuotesWindowTest : public SampleTest {
 protected:
  QuotesWindowTest() { desktop.now = std::chrono::system_clock::from_time_t(1800000000); }  // 2027-01-15
  void Keep(const std::string& customer, const std::string& cost, const std::string& validUntil = "2027-02-28") {
    Type(Box(kBoxCapitalCost), cost);
    desktop.modal = [=](Window& window) {
      auto& dialog = dynamic_cast<FrmKeepQuote&>(window);
      dialog.TxtKeep(kKeepCustomer).SetFocus();
      dialog.TxtKeep(kKeepCustomer).Type(customer);
      dialog.TxtKeep(kKeepValidUntil).Type("2027-02-30");
      dialog.CmdKeep.Press();
      EXPECT_FALSE(dialog.Confirmed);
      dialog.TxtKeep(kKeepValidUntil).Type(validUntil);
      dialog.CmdKeep.Press();
    };
    form->quote.CmdKeepQuote.Press();
  }
  void InQuotes(const std::function<void(FrmQuotes&)>& play) {
    desktop.modal = [&](Window& window) { play(dynamic_cast<FrmQuotes&>(window)); };
    form->menus.MnuQuotes.Choose();
  }
  static std::string Seen(const FrmQuotes& quotes) {
    std::string numbers;
    for (const ListView::Row& row : quotes.LvwQuotes.Rows()) numbers += row.hidden ? "" : row.text + " ";
    return numbers;
  }
  std::string Payment() { return form->quote.LblResult(kResultPayment).Caption(); }
  std::string Kept() { return form->quote.LblKept.Visible() ? form->quote.LblKept.Caption() : ""; }
};

TEST_F(QuotesWindowTest, AKeptQuoteStaysAsItWasWhileRatesChangeUntilSomethingIsTyped) {
  form->Arrange(15000, 13000);
  EXPECT_TRUE(form->quote.FraBands.Visible());
  Keep("O'Neill", "12500");
  const std::string quoted = Payment();
  EXPECT_NE(quoted, "0.00");
  EXPECT_FALSE(form->quote.FraBands.Visible()) << "beside the words of the kept quote";
  EXPECT_EQ(Ask("SELECT Customer FROM KeptQuotes"), "O`Neill");
  EXPECT_EQ(Kept(),
            "Quote 1 of 2027-01-15 for O`Neill, valid until 2027-02-28: open\nToday's rate card gives the same.");
  for (int band = 0; band < 5; ++band) Type(form->rateCard.TxtRangeYield(band), "25");
  form->Toolbar1.Press("SAVE");
  form->TabMain.SelectTab(kTabSettings);
  EXPECT_EQ(Payment(), quoted);
  const std::string today = Kept();
  EXPECT_NE(today.find("Today's rate card gives £"), std::string::npos) << today;
  Type(Box(kBoxCapitalCost), "12500.");
  EXPECT_EQ(Kept(), "");
  EXPECT_TRUE(form->quote.FraBands.Visible());
  EXPECT_NE(Payment(), quoted);
  EXPECT_NE(today.find("£" + WithThousands(Payment()) + ","), std::string::npos) << today;
  Choose("Saxonholt Dental Systems Ltd");
  InQuotes([](FrmQuotes& quotes) { quotes.LvwQuotes.DoubleClickRow(0); });
  EXPECT_EQ(form->shown.CurrentSupplierId, 1);
  EXPECT_EQ(Payment(), quoted);
  EXPECT_EQ(Kept(), today);
  InQuotes([](FrmQuotes& quotes) { quotes.Toolbar1.Press("COPY"); });
  EXPECT_EQ(Kept(), "");
  EXPECT_NE(Payment(), quoted);
}

TEST_F(QuotesWindowTest, OtherTermsOfAKeptQuoteAreTodaysAndItsScheduleBeginsAsItWasKept) {
  Keep("Ash", "12500");
  const std::string quoted = Payment();
  for (int band = 0; band < 5; ++band) Type(form->rateCard.TxtRangeYield(band), "25");
  form->Toolbar1.Press("SAVE");
  desktop.now += std::chrono::hours(24 * 30);
  InQuotes([](FrmQuotes& quotes) { quotes.LvwQuotes.DoubleClickRow(0); });
  EXPECT_NE(form->quote.LblTotal.Caption().find("from 2027-02-15"), std::string::npos);
  desktop.modal = [](Window& window) { EXPECT_EQ(dynamic_cast<FrmSchedule&>(window).TxtStart.Text(), "2027-01-15"); };
  form->quote.CmdSchedule.Press();
  desktop.modal = [&](Window& window) {
    auto& terms = dynamic_cast<FrmTerms&>(window);
    EXPECT_TRUE(terms.LblHint.Caption().starts_with("At today's rates."));
    for (const ListView::Row& row : terms.LvwTerms.Rows()) EXPECT_EQ(row.cells[5], "");
    terms.LvwTerms.ClickRow(0);
    EXPECT_EQ(terms.LvwTerms.At(0).cells[5], "this quote");
    EXPECT_EQ(terms.LvwTerms.At(0).cells[1], WithThousands(Payment()));
  };
  form->quote.CmdTerms.Press();
  EXPECT_EQ(Kept(), "");
  EXPECT_NE(Payment(), quoted);
}

TEST_F(QuotesWindowTest, AQuoteOfARemovedSupplierIsShownAndPrintedButNothingPricesItAnew) {
  const QuotePanel& quote = form->quote;
  Keep("Ash", "12500");
  const std::string quoted = Payment();
  desktop.answers = {Answer::Yes};
  form->Toolbar1.Press("REMSUPP");
  ASSERT_NE(form->shown.CurrentSupplierId, 1);
  EXPECT_TRUE(quote.FraQuote.Enabled());
  InQuotes([](FrmQuotes& quotes) { quotes.Toolbar1.Press("REOPEN"); });
  EXPECT_EQ(Payment(), quoted);
  EXPECT_FALSE(quote.FraQuote.Enabled() || quote.FraRate.Enabled() || quote.CmdTerms.Enabled());
  bool sheet = false;
  desktop.modal = [&](Window& window) { sheet = window.Name() == "FrmSheet"; };
  form->quote.CmdSheet.Press();
  EXPECT_TRUE(sheet);
  InQuotes([](FrmQuotes& quotes) { quotes.Toolbar1.Press("COPY"); });
  EXPECT_EQ(desktop.boxes.back().text, "The Dealer has been removed since");
  EXPECT_EQ(Payment(), quoted);
  InQuotes([](FrmQuotes& quotes) { quotes.Toolbar1.Press("REMOVE"); });
  EXPECT_EQ(quote.LblPriced.Caption(), "Nothing is priced yet");
  EXPECT_TRUE(quote.FraQuote.Enabled());
}

TEST_F(QuotesWindowTest, QuotesAreFoundSortedMarkedRemovedAndSaved) {
  Keep("Ash", "9000");
  Keep("Birch", "12500", "2027-01-14");
  Choose("Saxonholt Dental Systems Ltd");
  Keep("Ash and Birch", "800");
  InQuotes([](FrmQuotes& quotes) {
    EXPECT_EQ(Seen(quotes), "3 2 1 ");
    quotes.LvwQuotes.ClickColumn(6);
    EXPECT_EQ(Seen(quotes), "3 1 2 ");
    quotes.TxtSearch.Type("ASH saxon");
    EXPECT_EQ(Seen(quotes), "3 ");
    quotes.TxtSearch.Type("");
    quotes.CboState.Choose(4);
    EXPECT_EQ(Seen(quotes), "2 ");
    quotes.Toolbar1.Press("ACCEPT");
    EXPECT_EQ(Seen(quotes), "");
    quotes.CboState.Choose(2);
    EXPECT_EQ(Seen(quotes), "2 ");
    quotes.CboState.Choose(0);
    quotes.CboSupplier.Choose(2);
    EXPECT_EQ(Seen(quotes), "3 ");
    quotes.CboSupplier.Choose(0);
    quotes.LvwQuotes.ClickRow(1);
    for (int i = 0; i < 2; ++i) quotes.LvwQuotes.KeyUp(Key::Delete);
    EXPECT_EQ(Seen(quotes), "3 ");
  });
  // What was removed can be put back as long as the database is open.
  InQuotes([this](FrmQuotes& quotes) {
    for (int i = 0; i < 2; ++i) quotes.Toolbar1.Press("UNDO");
    EXPECT_FALSE(quotes.Toolbar1.Buttons()[6].enabled);
    EXPECT_EQ(quotes.SelectedNumber(), 1);
    form->database.ExecuteStatement("UPDATE Changes SET ChangedBy='carol' WHERE What='quote' AND RowId=2");
    quotes.Load();
    EXPECT_EQ(quotes.LvwQuotes.Columns().size(), OnServer() ? 13U : 12U);
    quotes.TxtSearch.Type(OnServer() ? "birch carol" : "birch");
    desktop.files = {folder.Path() + "/quotes.csv"};
    quotes.Toolbar1.Press("EXPORT");
  });
  const std::string saved = ReadFile(folder.Path() + "/quotes.csv");
  EXPECT_NE(saved.find("\n2,2027-01-15,1,Aldermoor Print Finishing Ltd,Birch,,12500.00,"), std::string::npos) << saved;
  EXPECT_TRUE(OnServer() ? saved.ends_with(",accepted,carol\r\n") : saved.find(",accepted\r\n3,") < saved.size())
      << saved;
}

}  // namespace tarvolinex
