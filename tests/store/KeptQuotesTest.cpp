// Quotes that are kept, and what can happen to them afterwards.
#include "store/KeptQuotes.h"

#include "platform/RuntimeError.h"
#include "platform/text/Clock.h"
#include "store/Changes.h"
#include "store/DatabaseFile.h"
#include "support/Fixture.h"

namespace tarvolinex {

namespace {

using std::chrono::August;
using std::chrono::September;
using std::chrono::year;
const CalendarDay kToday = year(2026) / August / 31;

}  // namespace

class KeptQuotesTest : public ProgramTest {
 protected:
  KeptQuotesTest() {
    std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
    EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
    UseSampleRows();
    database.Open(DataFolder, run.SharedDatabase);
    ReadRecord(DELIVERED_FOLDER "/General.dat", CalculatorPreferences);
    CalculatorPreferences.OrgCompanyName = "Smith's <ID> \"Leasing\"";  // on paper as it is written
    quote.origin = OriginOf(ReadSupplier(database, 3), CalculatorPreferences);
    quote.date = kToday;
    quote.details.customer = "Zoë <ID>";
    quote.details.note = "two\nlines";
    quote.details.validUntil = kToday;
    quote.figures = Figures(1);
  }
  // Every field has a value of its own, the rates such as a double would change.
  static QuoteFigures Figures(int seed) {
    QuoteFigures figures;
    figures.mode = 2;
    figures.capitalCostLocked = true;
    int at = seed;
    const auto fill = [&](QuoteMember member) {
      ++at;
      if (auto** number = std::get_if<std::int16_t*>(&member)) **number = static_cast<std::int16_t>(at);
      if (auto** rate = std::get_if<float*>(&member)) **rate = static_cast<float>(at) / 0.7F;
      if (auto** amount = std::get_if<Currency*>(&member)) **amount = Currency::FromUnits(999'999'999'999'999 - at);
      if (auto** truth = std::get_if<bool*>(&member)) **truth = at % 2 == 0;
    };
    for (const QuoteField& field : QuoteFields()) {
      if (field.input) fill(field.member(figures.asked));
      fill(field.member(figures.priced));
    }
    return figures;
  }
  std::string Listed(CalendarDay today) {
    std::string all;
    ListQuotes(database, today, [&](const QuoteListRow& row) {
      all += std::to_string(row.number) + " " + std::string(row.customer) + " " + row.payment.ToText() + " " +
             std::string(row.state) + "\n";
    });
    return all;
  }
  Database database{run};
  KeptQuote quote;
};

TEST_F(KeptQuotesTest, AQuoteIsReadAsItWasKeptWhateverHappensToItsSupplier) {
  EXPECT_EQ(Listed(kToday), "");
  EXPECT_FALSE(ReadQuote(database, 1));
  quote.number = KeepQuote(database, quote);
  EXPECT_EQ(LastChange(database, Changed::Quote, quote.number), (Change{database.User(), IsoMoment(desktop.now)}));
  DeleteSupplier(database, 3);
  EXPECT_EQ(ReadQuote(database, quote.number), quote);
  const KeptQuote typed = quote;
  quote.details.customer = "O'Neill & Co";
  quote.details.state = QuoteState::Declined;
  quote.details.validUntil = std::nullopt;
  ASSERT_TRUE(UpdateQuote(database, 1, quote.details));
  quote.details.customer = "O`Neill & Co";
  EXPECT_EQ(ReadQuote(database, 1), quote);
  EXPECT_FALSE(UpdateQuote(database, 2, quote.details));
}

TEST_F(KeptQuotesTest, SeveralAreKeptTogetherOrNotAtAll) {
  EXPECT_EQ(KeepQuotes(database, quote, {Figures(1), Figures(2)}), (std::vector<int>{1, 2}));
  QuoteFigures large = Figures(3);
  large.priced.NetCapital = Currency::FromUnits(-1'000'000'000'000'000);
  EXPECT_THROW(KeepQuotes(database, quote, {Figures(3), large}), RuntimeError);
  quote.details.reference = std::string(51, 'x');
  EXPECT_THROW(KeepQuote(database, quote), RuntimeError);
  const auto listed = [](const std::string& state) {
    return "1 Zoë <ID> " + Figures(1).priced.Payment.ToText() + " " + state + "\n2 Zoë <ID> " +
           Figures(2).priced.Payment.ToText() + " " + state + "\n";
  };
  EXPECT_EQ(Listed(kToday), listed("open"));
  EXPECT_EQ(Listed(year(2026) / September / 1), listed("expired"));
}

TEST_F(KeptQuotesTest, ARemovedQuoteComesBackAndItsNumberIsNotGivenTwice) {
  quote.number = KeepQuote(database, quote);
  const RemovedRows removed = RemoveQuote(database, 1);
  EXPECT_EQ(Listed(kToday), "");
  EXPECT_TRUE(RemoveQuote(database, 1).statements.empty());
  EXPECT_EQ(KeepQuote(database, quote), 2);
  RestoreRows(database, removed);
  EXPECT_EQ(ReadQuote(database, 1), quote);
}

TEST_F(KeptQuotesTest, WhatAnotherProgramHasSpoiltIsNamed) {
  KeepQuote(database, quote);
  const auto failure = [this] {
    try {
      ReadQuote(database, 1);
    } catch (const RuntimeError& fault) {
      return fault.Description();
    }
    return std::string();
  };
  database.ExecuteStatement("UPDATE KeptQuotes SET Payment='much'");
  EXPECT_NE(failure().find("Payment holds \"much\""), std::string::npos) << failure();
  database.ExecuteStatement("UPDATE KeptQuotes SET Payment=1");
  database.ExecuteStatement("DELETE FROM KeptRecords");
  EXPECT_NE(failure().find("what priced it"), std::string::npos) << failure();
}

}  // namespace tarvolinex
