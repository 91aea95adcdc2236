#include "calc/Payment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace tarvolinex {

namespace {

Currency Money(const char* text) {
  return *Currency::FromText(text);
}

RateCard ACard() {
  RateCard card;
  card.RangeEquipFROM = {Money("100000"), Money("50000"), Money("20000"), Money("5000"), Currency()};
  card.Yield = {7, 8, 9, 10, 12};
  card.Com = {1, 1.5F, 2, 2.5F, 3};
  card.AdditionalPremiumYield = 1.25F;
  card.AdditionalPremiumMin = Money("3000");
  return card;
}

RateCard FlatCard(float yield, float commission) {
  RateCard card;
  card.Yield.fill(yield);
  card.Com.fill(commission);
  return card;
}

struct Builder {
  QuoteRecord quote;
  Builder& Cost(const char* amount) { return quote.CapitalCost = Money(amount), *this; }
  Builder& Payments(int n) { return quote.NumberOfPayments = static_cast<std::int16_t>(n), *this; }
  Builder& Quarterly() { return quote.Quarterly = true, *this; }
  Builder& Yield(float percent) { return quote.Yield = percent, *this; }
  Builder& Deposit(const char* amount) { return quote.DepositValue = Money(amount), *this; }
  Builder& DepositPercent(float percent) { return quote.DepositMode = 1, quote.DepositPercent = percent, *this; }
  Builder& Advance(int n) {
    return quote.DepositMode = 2, quote.AdvancedPayments = static_cast<std::int16_t>(n), *this;
  }
  Builder& Residual(const char* amount) { return quote.ResidualValue = Money(amount), *this; }
  Builder& ResidualPercent(float percent) { return quote.ResidualPercent = percent, *this; }
  Builder& Maintenance(const char* amount) { return quote.Maintenance = Money(amount), *this; }
  Builder& Payment(const char* amount) { return quote.Payment = Money(amount), *this; }
  Builder& Commission(const char* amount) { return quote.CommissionValue = Money(amount), *this; }
  Builder& Premium() { return quote.ApplyPremium = true, *this; }
  QuoteRecord Price(int mode, const RateCard& card = FlatCard(0, 0), float tax = 0, bool locked = false) const {
    QuoteRecord priced = quote;
    CalculateQuote(mode, priced, {card, tax, locked});
    return priced;
  }
};

Builder ALease() {
  return {};
}

double Units(Currency amount) {
  return static_cast<double>(amount.Units());
}

// The residue of the present-value identity: what is financed less what the lessee pays back, in currency units.
double Unbalanced(const QuoteRecord& q, double financed) {
  const double r = static_cast<double>(q.Yield) / 100 / (q.Quarterly ? 4 : 12);
  double worth = q.AdvancedPayments * (q.Payment.ToDouble() - q.Maintenance.ToDouble());
  const int n = q.NumberOfPayments - q.AdvancedPayments;
  for (int k = 1; k <= n; ++k) worth += (q.Payment.ToDouble() - q.Maintenance.ToDouble()) * std::pow(1 + r, -k);
  return financed - worth - q.ResidualValue.ToDouble() * std::pow(1 + r, -n);
}

}  // namespace

// Worked by hand; each payment follows from P = (A - R v) / a with A the amount financed.
TEST(Payment, WorkedExamples) {
  const QuoteRecord first = ALease().Cost("10000").Payments(36).Price(0, FlatCard(10, 2));
  EXPECT_EQ(first.Payment.ToText() + " " + first.CommissionValue.ToText(), "329.1253 200.0000");
  Builder second = ALease().Cost("20000").Quarterly().Payments(12).Deposit("1000").ResidualPercent(10);
  EXPECT_EQ(second.Price(0, FlatCard(8.5F, 0)).Payment.ToText(), "1662.3791");
  const QuoteRecord third = second.Maintenance("15").Price(0, FlatCard(8.5F, 0), 17.5F);
  EXPECT_EQ(third.Payment.ToText() + " " + third.PaymentIncTax.ToText(), "1677.3791 1970.9204");
  EXPECT_EQ(third.DepositIncTax.ToText() + " " + third.ResidualIncTax.ToText(), "1175.0000 2350.0000");
  const QuoteRecord fourth = ALease().Cost("10000").Payments(36).Advance(3).Price(0, FlatCard(10, 0));
  EXPECT_EQ(fourth.Payment.ToText() + " " + fourth.DepositValue.ToText(), "314.9862 944.9586");
}

// From published manuals of financial calculators and test suites, each recomputed to 30 digits.
TEST(Payment, PublishedExamples) {
  const std::tuple<const char*, int, int, float, const char*, std::string> cases[] = {
      {"750", 12, 3, 10, "0", "64.45"},          {"750", 12, 3, 15, "0", "65.43"},
      {"750", 12, 1, 15, "0", "66.86"},          {"15000", 60, 0, 8, "0", "304.1459"},
      {"50000", 120, 0, 14, "0", "776.33"},      {"50000", 120, 0, 14, "30000", "660.53"},
      {"25000", 36, 0, 1.99F, "11", "715.6586"},
  };
  for (const auto& [cost, payments, advance, yield, residual, expected] : cases) {
    Builder lease = ALease().Cost(cost).Payments(payments).Yield(yield).Residual(residual);
    if (advance > 0) lease.Advance(advance);
    const Currency payment = lease.Price(1).Payment;
    const bool exact = expected.size() - expected.find('.') > 3;  // all four decimals are known
    EXPECT_TRUE(exact ? payment.ToText() == expected : payment.Hundredths() == Money(expected.c_str()).Hundredths())
        << payment.ToText() << " " << expected;
  }
}

TEST(Payment, ACostEqualToAThresholdBelongsBelow) {
  const std::tuple<const char*, float, float> cases[] = {
      {"100000.0001", 7, 1}, {"100000", 8, 1.5F},     {"50000", 9, 2}, {"20000", 10, 2.5F},
      {"5000", 12, 3},       {"5000.0001", 10, 2.5F}, {"0", 0, 0},     {"-1", 0, 0},
  };
  for (const auto& [cost, yield, commission] : cases) {
    EXPECT_EQ(BandYield(ACard(), Money(cost)), yield) << cost;
    EXPECT_EQ(BandCommission(ACard(), Money(cost)), commission) << cost;
  }
  RateCard disordered = ACard();
  disordered.RangeEquipFROM[1] = Money("200000");
  EXPECT_EQ(BandYield(disordered, Money("150000")), 9);
}

TEST(Payment, ThePremiumAppliesAboveItsMinimum) {
  EXPECT_EQ(ALease().Cost("3000").Payments(12).Premium().Price(0, ACard()).Yield, 12);
  EXPECT_EQ(ALease().Cost("3000.01").Payments(12).Premium().Price(0, ACard()).Yield, 13.25F);
  EXPECT_EQ(ALease().Cost("9000").Payments(12).Price(0, ACard()).PremiumYield, 1.25F);
}

TEST(Payment, FailingStepsLeaveTheirTargets) {
  EXPECT_EQ(ALease().Cost("1000").Payments(12).Advance(12).Maintenance("15").Price(0, FlatCard(9, 0)).Payment,
            Money("15"));
  EXPECT_EQ(ALease().Payments(12).Commission("5").Payment("3").Price(3), ALease().Payments(12).quote);
  EXPECT_EQ(ALease().Cost("922337203685477").Payments(1).Payment("7").Price(0, FlatCard(1200, 0)).Payment, Money("7"));
  EXPECT_EQ(ALease().Cost("1000").Payments(-32768).Advance(1).Price(0, FlatCard(9, 0)).Payment, Currency());
}

TEST(Payment, WithoutYieldTheCostIsSpreadEvenly) {
  EXPECT_EQ(ALease().Cost("1200").Payments(12).Price(0).Payment.ToText(), "100.0000");
  EXPECT_EQ(ALease().Cost("1000").Payments(12).Deposit("2000").Price(0).Payment, Currency());
  EXPECT_EQ(ALease().Cost("1000").Payments(12).Deposit("2000").Price(0, FlatCard(9, 0)).NetCapital.ToText(),
            "-1000.0000");
}

// (1 + r)^n by repeated multiplication would lose everything at both ends.
TEST(Payment, ExtremeRatesLoseNoDigit) {
  const AnnuityFactors tiny = FactorsFor(1e-12, 60);
  EXPECT_NEAR(tiny.annuity, 60 - 60 * 61 / 2 * 1e-12, 1e-14 * 60);
  const AnnuityFactors huge = FactorsFor(1.0, 400);
  EXPECT_DOUBLE_EQ(huge.annuity, 1.0);
  EXPECT_EQ(ALease().Cost("1000").Payments(400).Yield(1200).Price(1).Payment.ToText(), "1000.0000");
  EXPECT_EQ(FactorsFor(0, 12).discount, 1);
}

// The search by averaging, as an independent way to the same amount.
TEST(Payment, AdvancedPaymentsAreTheFixedPointOfTheAveraging) {
  for (const int advance : {1, 3, 6, 11}) {
    const QuoteRecord quote =
        ALease().Cost("10000").Payments(36).Advance(advance).Residual("500").Price(0, FlatCard(10, 2));
    const double r = 10.0 / 1200, n = 36 - advance, v = std::pow(1 + r, -n), a = (1 - v) / r;
    double x = 10200, p = 0;
    for (int i = 0; i < 500; ++i) {
      p = (x - 500 * v) / a;
      x = (10200 - advance * p + x) / 2;
    }
    EXPECT_NEAR(quote.Payment.ToDouble(), p, 0.00006) << advance;
  }
}

TEST(Payment, ModeSixTakesTheTypedCommissionOrThePaymentsInAdvance) {
  const RateCard card = FlatCard(10, 9);
  EXPECT_EQ(ALease().Cost("10000").Payments(36).Commission("200").Payment("1").Price(6, card).Payment,
            Money("329.1253"));
  const QuoteRecord derived =
      ALease().Cost("10000").Payments(36).Advance(3).Commission("999").Payment("320").Price(6, card);
  EXPECT_EQ(derived.Payment, Money("320"));
  EXPECT_NEAR(Unbalanced(derived, 10000 + derived.CommissionValue.ToDouble()), 0, 0.01);
}

TEST(CapitalCost, ATargetOfNothingOrThatNoCostMeets) {
  const Builder lease = ALease().Cost("5000").Payments(36).Commission("7");
  const QuoteRecord locked = lease.Price(2, ACard(), 0, true);
  EXPECT_EQ(locked.CapitalCost, Money("5000"));
  EXPECT_EQ(locked.CommissionValue, Currency());
  EXPECT_EQ(lease.Price(2, ACard(), 0, false).CapitalCost, Currency());
  const QuoteRecord unmet = Builder(lease).Maintenance("500").Payment("400").Price(2, ACard());
  EXPECT_EQ(unmet.CapitalCost.ToText() + " " + unmet.Payment.ToText(), "5000.0000 400.0000");
  EXPECT_EQ(unmet.CommissionValue, Currency());
}

TEST(CapitalCost, ALargeFixedDepositIsFoundToo) {
  const QuoteRecord forward = ALease().Cost("9000").Deposit("6000").Payments(36).Price(0, ACard());
  Builder back = ALease().Deposit("6000").Payments(36);
  back.quote.Payment = forward.Payment;
  const QuoteRecord found = back.Price(2, ACard());
  EXPECT_EQ(found.Payment.Hundredths(), forward.Payment.Hundredths());
  EXPECT_EQ(found.DepositValue.ToText(), "6000.0000");
  EXPECT_NEAR(found.CapitalCost.ToDouble(), 9000, 0.5);
}

TEST(CapitalCost, OrdinaryInputsTakeFewPasses) {
  for (const char* payment : {"35.40", "150", "329.13", "1250", "4100.55"}) {
    QuoteRecord quote = ALease().Payments(48).ResidualPercent(10).Maintenance("12.50").Payment(payment).quote;
    EXPECT_LE(CalculateQuote(2, quote, {ACard()}), 40) << payment;
    EXPECT_EQ(quote.Payment.Hundredths(), Money(payment).Hundredths()) << payment;
  }
}

// Properties over many random leases; the seed is fixed.
class RandomLeases : public ::testing::Test {
 protected:
  static constexpr int kLeases = 20000;
  std::mt19937 random{20261124};
  double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }
  bool Chance(double share) { return Between(0, 1) < share; }

  QuoteRecord Lease() {
    QuoteRecord q;
    q.CapitalCost = Currency::FromUnits(static_cast<std::int64_t>(Between(100, 250000) * 100) * 100);
    q.Quarterly = Chance(0.3);
    q.NumberOfPayments = static_cast<std::int16_t>(q.Quarterly ? 4 + Between(0, 24) : 12 + Between(0, 72));
    q.DepositMode = static_cast<std::int16_t>(Between(0, 3));
    if (q.DepositMode == 0)
      q.DepositValue = *Currency::FromDouble(std::floor(q.CapitalCost.ToDouble() * Between(0, 0.4)));
    if (q.DepositMode == 1) q.DepositPercent = static_cast<float>(Between(0, 40));
    if (q.DepositMode == 2) q.AdvancedPayments = static_cast<std::int16_t>(Between(0, 4));
    if (Chance(0.5)) q.ResidualPercent = static_cast<float>(Between(0, 30));
    if (Chance(0.3)) q.Maintenance = *Currency::FromDouble(Between(0, 50));
    q.ApplyPremium = Chance(0.2);
    return q;
  }
  const RateCard card = ACard();
  const QuoteTerms terms{card, 20, false};
};

TEST_F(RandomLeases, TheFlowsAreWorthWhatIsFinanced) {
  for (int i = 0; i < kLeases; ++i) {
    QuoteRecord q = Lease();
    CalculatePayment(0, q, terms);
    const double deposit = q.DepositMode == 2 ? 0 : q.DepositValue.ToDouble();
    const double financed = q.CapitalCost.ToDouble() + q.CommissionValue.ToDouble() - deposit;
    // The payment is rounded to four decimals, and so is the commission.
    ASSERT_NEAR(Unbalanced(q, financed), 0, 0.00005 * q.NumberOfPayments + 0.0003);
  }
}

TEST_F(RandomLeases, ResultsDoNotChangeWhenComputedTwice) {
  for (int i = 0; i < kLeases; ++i) {
    QuoteRecord once = Lease();
    const int modes[] = {0, 1, 3, 4, 5, 6};
    const int mode = modes[i % 6];
    once.Yield = static_cast<float>(Between(0, 30));
    once.CommissionValue = *Currency::FromDouble(Between(0, 500));
    once.CommissionPercent = static_cast<float>(Between(0, 10));
    once.Payment = *Currency::FromDouble(Between(10, 3000));
    CalculateQuote(mode, once, terms);
    QuoteRecord twice = once;
    CalculateQuote(mode, twice, terms);
    ASSERT_EQ(Units(once.Payment), Units(twice.Payment)) << "mode " << mode;
    // A commission goes through its percentage and back.
    ASSERT_NEAR(Units(once.CommissionValue), Units(twice.CommissionValue), 1) << "mode " << mode;
    twice.CommissionValue = once.CommissionValue;
    twice.CommissionPercent = once.CommissionPercent;
    ASSERT_EQ(once, twice) << "mode " << mode;
  }
}

TEST_F(RandomLeases, ThePaymentGivesTheCommissionBack) {
  for (int i = 0; i < kLeases; ++i) {
    const QuoteRecord lease = Lease();
    QuoteRecord forward = lease, back = lease;
    CalculatePayment(0, forward, terms);
    back.Yield = forward.Yield;
    back.Payment = forward.Payment;
    CalculatePayment(5, back, terms);
    // Half a ten-thousandth in each payment.
    ASSERT_NEAR(back.CommissionValue.ToDouble(), forward.CommissionValue.ToDouble(),
                0.00005 * lease.NumberOfPayments + 0.0002);
    ASSERT_EQ(back.Payment, forward.Payment);
    ASSERT_NEAR(Units(back.DepositValue), Units(forward.DepositValue), 4);
  }
}

TEST_F(RandomLeases, ThePaymentGivesACapitalCostThatMeetsIt) {
  int most = 0;
  for (int i = 0; i < kLeases; ++i) {
    const QuoteRecord lease = Lease();
    QuoteRecord forward = lease, back = lease;
    CalculatePayment(0, forward, terms);
    back.CapitalCost = Currency();
    back.Payment = forward.Payment;
    most = std::max(most, CalculateQuote(2, back, terms));
    ASSERT_EQ(back.Payment.Hundredths(), forward.Payment.Hundredths());
    QuoteRecord again = lease;
    again.CapitalCost = back.CapitalCost;
    CalculatePayment(0, again, terms);
    ASSERT_EQ(again.Payment.Hundredths(), forward.Payment.Hundredths());
  }
  EXPECT_LE(most, 2000);
}

}  // namespace tarvolinex
