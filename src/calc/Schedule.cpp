#include "calc/Schedule.h"

#include <algorithm>
#include <cmath>

#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

Currency FromPence(std::int64_t pence) {
  return Currency::FromUnits(pence * 100);
}

// Sums that stop the work when they no longer fit: a total that is wrong must not be shown.
Currency Added(Currency sum, Currency more) {
  const auto result = sum.Plus(more);
  if (!result) throw RuntimeError(kOverflow, "The amounts of the schedule are too large to be added");
  return *result;
}

Currency Less(Currency from, Currency what) {
  return Added(from, Currency::FromUnits(-what.Units()));
}

bool IsNothing(const QuoteRecord& quote) {
  return quote.Payment == Currency() && quote.NetCapital <= Currency();
}

class Maker {
 public:
  Maker(const QuoteRecord& quote, CalendarDay start, Schedule& schedule)
      : quote_(quote),
        start_(start),
        schedule_(schedule),
        payments_(std::max(0, quote.NumberOfPayments - quote.AdvancedPayments)) {}

  void Make() {
    constexpr std::chrono::year kLastYear(9999);
    if (DateOf(payments_).year() > kLastYear) {
      throw RuntimeError(kOverflow, "The last payment would fall due after the year 9999");
    }
    schedule_.lines.clear();
    schedule_.totals = {};
    schedule_.lines.reserve(static_cast<std::size_t>(payments_) + 2);
    schedule_.opening = balance_ = std::max(Currency(), Shown(Added(quote_.NetCapital, quote_.CommissionValue)));
    AddStart();
    AddPayments();
    AddResidual();
  }

 private:
  CalendarDay DateOf(int number) const { return LaterBy(start_, number * (quote_.Quarterly ? 3 : 1)); }

  void Add(ScheduleLine line) {
    line.tax = Less(line.amountIncTax, line.amount);
    balance_ = Less(balance_, line.principal);
    line.balance = balance_;
    ScheduleTotals& totals = schedule_.totals;
    totals.amount = Added(totals.amount, line.amount);
    totals.amountIncTax = Added(totals.amountIncTax, line.amountIncTax);
    totals.interest = Added(totals.interest, line.interest);
    schedule_.lines.push_back(line);
  }

  void AddStart() {
    if (quote_.DepositValue == Currency()) return;
    ScheduleLine line;
    line.date = start_;
    line.kind = quote_.AdvancedPayments > 0 ? LineKind::Advance : LineKind::Deposit;
    line.amount = Shown(quote_.DepositValue);
    line.amountIncTax = Shown(quote_.DepositIncTax);
    Add(line);
  }

  void AddPayments() {
    const double rate = quote_.Yield > 0 ? static_cast<double>(quote_.Yield) / 100 / (quote_.Quarterly ? 4 : 12) : 0;
    const Currency level = Shown(Less(quote_.Payment, quote_.Maintenance));
    ScheduleLine line;
    line.amount = Shown(quote_.Payment);
    line.amountIncTax = Shown(quote_.PaymentIncTax);
    ScheduleTotals& totals = schedule_.totals;
    for (line.number = 1; line.number <= payments_; ++line.number) {
      line.date = DateOf(line.number);
      if (line.number < payments_) {
        line.interest = FromPence(std::llround(static_cast<double>(balance_.Hundredths()) * rate));
        line.principal = Less(level, line.interest);
      } else {
        line.principal = Less(balance_, Shown(quote_.ResidualValue));
        line.interest = Less(level, line.principal);
      }
      Add(line);
      totals.payments = Added(totals.payments, line.amount);
      totals.paymentsIncTax = Added(totals.paymentsIncTax, line.amountIncTax);
    }
    if (payments_ == 0) return;
    totals.firstPayment = DateOf(1);
    totals.lastPayment = line.date;
  }

  void AddResidual() {
    if (quote_.ResidualValue == Currency()) return;
    ScheduleLine line;
    line.number = payments_;
    line.date = DateOf(payments_);
    line.kind = LineKind::Residual;
    line.amount = Shown(quote_.ResidualValue);
    line.amountIncTax = Shown(quote_.ResidualIncTax);
    line.principal = balance_;
    line.interest = Less(line.amount, balance_);
    Add(line);
  }

  const QuoteRecord& quote_;
  const CalendarDay start_;
  Schedule& schedule_;
  const int payments_;
  Currency balance_;
};

}  // namespace

Currency Shown(Currency amount) {
  return FromPence(amount.Hundredths());
}

std::string_view KindName(LineKind kind) {
  switch (kind) {
    case LineKind::Deposit:
      return "deposit";
    case LineKind::Advance:
      return "advance";
    case LineKind::Payment:
      return "payment";
    case LineKind::Residual:
      break;
  }
  return "residual";
}

std::optional<QuoteRecord> Priced(int mode, const QuoteRecord& asked, const QuoteTerms& terms) {
  QuoteRecord quote = asked;
  CalculateQuote(mode, quote, terms);
  if (quote.NumberOfPayments - quote.AdvancedPayments < 1 || IsNothing(quote)) return std::nullopt;
  const bool givenPayment = mode == kModeCapitalCost || mode == kModePayment;
  if (givenPayment && asked.Payment <= Currency()) return std::nullopt;
  if (mode == kModeCapitalCost && NearestTo(asked, quote.CapitalCost, terms)) return std::nullopt;
  return quote;
}

CalendarDay LaterBy(CalendarDay day, int months) {
  const auto month = day.year() / day.month() + std::chrono::months(months);
  const CalendarDay kept = month / day.day();
  return kept.ok() ? kept : CalendarDay(month / std::chrono::last);
}

void MakeSchedule(const QuoteRecord& quote, CalendarDay start, Schedule& schedule) {
  Maker(quote, start, schedule).Make();
}

Schedule ScheduleOf(const QuoteRecord& quote, CalendarDay start) {
  Schedule schedule;
  MakeSchedule(quote, start, schedule);
  return schedule;
}

std::vector<std::optional<TermVariant>> CompareTerms(int mode, const QuoteRecord& asked, const QuoteTerms& terms,
                                                     const std::vector<std::int16_t>& numbersOfPayments) {
  std::vector<std::optional<TermVariant>> variants;
  Schedule schedule;
  for (const std::int16_t number : numbersOfPayments) {
    QuoteRecord request = asked;
    request.NumberOfPayments = number;
    variants.emplace_back();
    const auto quote = Priced(mode, request, terms);
    if (!quote) continue;
    constexpr CalendarDay kAnyDay = std::chrono::year(1) / 1 / 1;
    MakeSchedule(*quote, kAnyDay, schedule);
    variants.back() = {*quote, schedule.totals.amount, schedule.totals.amountIncTax, {}};
  }
  const auto shortest = std::min_element(variants.begin(), variants.end(), [](const auto& a, const auto& b) {
    return a && (!b || a->quote.NumberOfPayments < b->quote.NumberOfPayments);
  });
  if (shortest == variants.end() || !*shortest) return variants;
  const Currency least = (*shortest)->totalIncTax;
  for (auto& variant : variants) {
    if (variant) variant->difference = Less(variant->totalIncTax, least);
  }
  return variants;
}

}  // namespace tarvolinex
