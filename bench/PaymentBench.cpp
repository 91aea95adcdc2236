// One pass of the payment calculation beside one std::pow, measured in the same run.
#include <benchmark/benchmark.h>

#include <cmath>

#include "calc/Payment.h"

namespace tarvolinex {
namespace {

RateCard ACard() {
  RateCard card;
  const std::int64_t thresholds[] = {100000, 50000, 20000, 5000, 0};
  for (std::size_t i = 0; i < 5; ++i) card.RangeEquipFROM[i] = Currency::FromUnits(thresholds[i] * 10000);
  card.Yield = {7, 8, 9, 10, 12};
  card.Com = {1, 1.5F, 2, 2.5F, 3};
  return card;
}

QuoteRecord ALease() {
  QuoteRecord quote;
  quote.CapitalCost = Currency::FromUnits(125'000'000);
  quote.NumberOfPayments = 36;
  return quote;
}

void Pow(benchmark::State& state) {
  double rate = 0.1 / 12;
  int periods = 36;
  for (auto _ : state) {
    benchmark::DoNotOptimize(rate);
    benchmark::DoNotOptimize(periods);
    benchmark::DoNotOptimize(std::pow(1 + rate, periods));
  }
}
BENCHMARK(Pow);

void PaymentPass(benchmark::State& state) {
  const RateCard card = ACard();
  const QuoteRecord lease = ALease();
  for (auto _ : state) {
    QuoteRecord quote = lease;
    CalculatePayment(kModeForward, quote, {card, 20});
    benchmark::DoNotOptimize(quote);
  }
}
BENCHMARK(PaymentPass);

void CapitalCostSearch(benchmark::State& state) {
  const RateCard card = ACard();
  QuoteRecord lease = ALease();
  lease.Payment = Currency::FromUnits(4'500'000);
  lease.ResidualPercent = 10;
  int passes = 0;
  for (auto _ : state) {
    QuoteRecord quote = lease;
    passes = CalculateQuote(kModeCapitalCost, quote, {card, 20});
    benchmark::DoNotOptimize(quote);
  }
  state.counters["passes"] = passes;
}
BENCHMARK(CapitalCostSearch);

}  // namespace
}  // namespace tarvolinex
