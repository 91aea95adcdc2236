#include "calc/Schedule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

Currency Pence(std::int64_t pence) {
  return Currency::FromUnits(pence * 100);
}

CalendarDay Day(const char* text) {
  return DayFromText(text).value();
}

// What the flows are worth at the yield, at the start, less what is financed: 0 but for rounding.
double WorthBesideOpening(const Schedule& schedule, const QuoteRecord& quote, double rate) {
  double worth = 0;
  for (const ScheduleLine& line : schedule.lines) {
    if (line.number == 0) continue;
    const double maintenance = line.kind == LineKind::Payment ? quote.Maintenance.ToDouble() : 0;
    worth += (line.amount.ToDouble() - maintenance) * std::pow(1 + rate, -line.number);
  }
  return worth - schedule.opening.ToDouble();
}

class Requests {
 public:
  Requests() {
    for (std::size_t i = 0; i < 5; ++i) {
      card.RangeEquipFROM[i] = Pence(static_cast<std::int64_t>(4 - i) * 1000000);
      card.Yield[i] = 8.25F + static_cast<float>(i);
      card.Com[i] = 1.5F * static_cast<float>(i);
    }
    card.AdditionalPremiumYield = 1.25F;
  }
  QuoteRecord Any() {
    QuoteRecord quote;
    quote.CapitalCost = Pence(50000 + Below(8000000));
    quote.NumberOfPayments = static_cast<std::int16_t>(6 + Below(90));
    quote.DepositMode = static_cast<std::int16_t>(Below(3));
    if (quote.DepositMode == 0) quote.DepositValue = Pence(Below(20000));
    if (quote.DepositMode == 1) quote.DepositPercent = static_cast<float>(Below(30));
    if (quote.DepositMode == 2) quote.AdvancedPayments = static_cast<std::int16_t>(Below(5));
    quote.Quarterly = Below(3) == 0;
    quote.ResidualPercent = static_cast<float>(Below(2) * Below(25));
    quote.Maintenance = Pence(Below(2) * Below(5000));
    quote.ApplyPremium = Below(2) == 1;
    quote.Yield = static_cast<float>(Below(5) * Below(400)) / 100;
    quote.CommissionPercent = static_cast<float>(Below(500)) / 100;
    quote.CommissionValue = Pence(Below(20000));
    quote.Payment = Pence(5000 + Below(60000));
    return quote;
  }
  int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
  RateCard card;

 private:
  std::mt19937 engine_{15};
};

}  // namespace

TEST(Schedule, HoldsItsIdentitiesInEveryMode) {
  Requests requests;
  int priced = 0;
  for (int i = 0; i < 7000; ++i) {
    const int mode = i % 7;
    const QuoteTerms terms{requests.card, i % 2 ? 20.0F : 0.0F};
    const auto quote = Priced(mode, requests.Any(), terms);
    if (!quote) continue;
    ++priced;
    const Schedule schedule = ScheduleOf(*quote, Day("2024-01-31"));
    SCOPED_TRACE(testing::Message() << "request " << i << " in mode " << mode);
    ScheduleTotals sums;
    Currency principals;
    int payments = 0;
    for (const ScheduleLine& line : schedule.lines) {
      sums.amount = sums.amount.Plus(line.amount).value();
      sums.amountIncTax = sums.amountIncTax.Plus(line.amountIncTax).value();
      sums.interest = sums.interest.Plus(line.interest).value();
      principals = principals.Plus(line.principal).value();
      if (line.kind != LineKind::Payment) continue;
      EXPECT_EQ(line.number, ++payments);
      EXPECT_EQ(line.amount, Shown(quote->Payment));
      EXPECT_EQ(line.amountIncTax, Shown(quote->PaymentIncTax));
    }
    EXPECT_EQ(payments, quote->NumberOfPayments - quote->AdvancedPayments);
    EXPECT_EQ(principals, schedule.opening);
    EXPECT_EQ(schedule.lines.back().balance, Currency());
    EXPECT_EQ(sums.amount, schedule.totals.amount);
    EXPECT_EQ(sums.amountIncTax, schedule.totals.amountIncTax);
    EXPECT_EQ(sums.interest, schedule.totals.interest);
    // Half a penny a payment, its growth with it, and half a penny of each interest. A commission below 0 is not
    // financed, so there the last payment's interest takes it.
    if (quote->CommissionValue < Currency() || schedule.opening == Currency()) continue;
    const double rate = static_cast<double>(quote->Yield) / 100 / (quote->Quarterly ? 4 : 12);
    EXPECT_NEAR(WorthBesideOpening(schedule, *quote, rate), 0, 0.01 * (payments + 2));
  }
  EXPECT_GT(priced, 5000);
}

TEST(Schedule, TheLastInterestTakesTheRoundingAndTheResidualSettles) {
  QuoteRecord asked;
  asked.CapitalCost = Pence(100000);
  asked.NumberOfPayments = 3;
  asked.ResidualPercent = 10;
  asked.Maintenance = Pence(500);
  asked.Yield = 12;
  const RateCard none;
  const Schedule schedule = ScheduleOf(*Priced(kModeYield, asked, {none, 20}), Day("2025-11-30"));
  // 1,000.00 at 1 % a month with 100.00 due at the end: (1000 - 100 x 1.01^-3) / 2.940985 = 307.0199, worked by hand.
  std::string text;
  for (const ScheduleLine& line : schedule.lines) {
    text += std::to_string(line.number) + " " + DayText(line.date) + " " + std::string(KindName(line.kind));
    for (const Currency amount :
         {line.amount, line.tax, line.amountIncTax, line.interest, line.principal, line.balance}) {
      text += " " + std::to_string(amount.Hundredths());
    }
    text += "\n";
  }
  EXPECT_EQ(text,
            "1 2025-12-30 payment 31202 6240 37442 1000 29702 70298\n"
            "2 2026-01-30 payment 31202 6240 37442 703 29999 40299\n"
            "3 2026-02-28 payment 31202 6240 37442 403 30299 10000\n"
            "3 2026-02-28 residual 10000 2000 12000 0 10000 0\n");
  EXPECT_EQ(schedule.totals.firstPayment, Day("2025-12-30"));
  EXPECT_EQ(schedule.totals.lastPayment, Day("2026-02-28"));
}

TEST(Schedule, DaysAreKeptOrCutToTheMonthsLast) {
  const struct {
    const char* start;
    int months;
    const char* later;
  } kDays[] = {{"2023-01-31", 1, "2023-02-28"},  {"2024-01-31", 1, "2024-02-29"},  {"2023-01-31", 2, "2023-03-31"},
               {"2024-02-29", 12, "2025-02-28"}, {"2024-02-29", 48, "2028-02-29"}, {"2026-10-31", 1, "2026-11-30"},
               {"2099-11-30", 3, "2100-02-28"},  {"2026-12-15", 1, "2027-01-15"},  {"9999-11-30", 1, "9999-12-30"}};
  for (const auto& day : kDays) EXPECT_EQ(DayText(LaterBy(Day(day.start), day.months)), day.later) << day.start;
  for (const char* none :
       {"", "2026-02-29", "2026-13-01", "2026-1-01", "26-01-01", "2026-01-0x", "0000-01-01", "2026-01-011"}) {
    EXPECT_FALSE(DayFromText(none)) << none;
  }
}

TEST(Schedule, WhatCannotBePricedHasNone) {
  Requests requests;
  const QuoteTerms terms{requests.card, 20};
  QuoteRecord quote;
  quote.CapitalCost = Pence(1000000);
  quote.NumberOfPayments = 36;
  EXPECT_TRUE(Priced(kModeForward, quote, terms));
  QuoteRecord noRun = quote, noCost = quote, nothingAsked = quote;
  noRun.AdvancedPayments = 36;
  noCost.CapitalCost = {};
  EXPECT_FALSE(Priced(kModeForward, noRun, terms));
  EXPECT_FALSE(Priced(kModeForward, noCost, terms));
  EXPECT_FALSE(Priced(kModeCapitalCost, nothingAsked, terms));
  EXPECT_FALSE(Priced(kModePayment, nothingAsked, terms));
  QuoteRecord paidAtOnce = quote;
  paidAtOnce.DepositValue = Pence(2000000);
  EXPECT_FALSE(Priced(kModeForward, paidAtOnce, terms)) << "a deposit above the cost finances nothing";
  // The dearer band begins where the cheaper one ends: no cost gives a payment between the two.
  requests.card.Yield = {15, 14, 13, 12, 1};
  QuoteRecord between = quote;
  between.Payment = Pence(30000);
  EXPECT_FALSE(Priced(kModeCapitalCost, between, terms));
  between.Payment = Pence(20000);
  EXPECT_TRUE(Priced(kModeCapitalCost, between, terms));
  // Too much to be added.
  QuoteRecord huge = *Priced(kModeForward, quote, terms);
  huge.Payment = huge.PaymentIncTax = Currency::FromUnits(std::int64_t{1} << 62);
  EXPECT_THROW(ScheduleOf(huge, Day("2026-01-01")), RuntimeError);
  EXPECT_THROW(ScheduleOf(*Priced(kModeForward, quote, terms), Day("9998-01-01")), RuntimeError);
}

TEST(Schedule, TermsAreMeasuredAgainstTheShortest) {
  Requests requests;
  QuoteRecord quote;
  quote.CapitalCost = Pence(1250000);
  quote.DepositMode = 2;
  quote.AdvancedPayments = 12;
  const auto variants = CompareTerms(kModeForward, quote, {requests.card, 20}, {36, 12, 24});
  ASSERT_EQ(variants.size(), 3U);
  EXPECT_FALSE(variants[1]) << "twelve in advance leave nothing of twelve";
  EXPECT_EQ(variants[2]->difference, Currency());
  EXPECT_EQ(variants[0]->difference, variants[0]->totalIncTax.Minus(variants[2]->totalIncTax));
  EXPECT_EQ(variants[0]->quote.NumberOfPayments, 36);
}

}  // namespace tarvolinex
