// What a lease costs when: every line to the penny, as the window shows the figures that it is made of.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "calc/Payment.h"
#include "platform/text/Clock.h"

namespace tarvolinex {

enum class LineKind { Deposit, Advance, Payment, Residual };
// "deposit", "advance", "payment", "residual".
std::string_view KindName(LineKind kind);

// An amount as it is shown with two decimals.
Currency Shown(Currency amount);

// Amounts are whole hundredths.
struct ScheduleLine {
  int number = 0;  // 0 at the start, 1 to n the payments; the residual has the last payment's
  CalendarDay date;
  LineKind kind = LineKind::Payment;
  Currency amount, tax, amountIncTax;  // the tax is the difference of the two
  // For the organisation only: how the line divides (without maintenance), and what would settle the lease after it.
  Currency interest, principal, balance;
};

struct ScheduleTotals {
  Currency amount, amountIncTax;      // of all lines
  Currency payments, paymentsIncTax;  // of the payments alone
  Currency interest;
  CalendarDay firstPayment, lastPayment;
  bool operator==(const ScheduleTotals&) const = default;
};

struct Schedule {
  Currency opening;  // the balance at the start: net capital plus commission, at least 0
  std::vector<ScheduleLine> lines;
  ScheduleTotals totals;
};

// The quote that `asked` comes to in that mode; nullopt when it cannot be priced: nothing is left to pay in arrears, no
// payment is given where one decides or no capital cost gives it, or nothing is financed and nothing maintained.
std::optional<QuoteRecord> Priced(int mode, const QuoteRecord& asked, const QuoteTerms& terms);

// Many months after a day: the day of the month is kept, or cut to the month's last.
CalendarDay LaterBy(CalendarDay day, int months);

// The schedule of a priced quote. A deposit or residual of 0 has no line. Interest of a line is the balance before it
// times yield / 100 / payments a year (annuity in arrears), to the penny, halves away from 0; the last payment's takes
// the rounding, so that the balance is then the residual, and 0.00 after that.
// Throws RuntimeError (6) when a total does not fit or the last payment falls due after the year 9999.
void MakeSchedule(const QuoteRecord& quote, CalendarDay start, Schedule& schedule);
Schedule ScheduleOf(const QuoteRecord& quote, CalendarDay start);

// One of several terms for the same request.
struct TermVariant {
  QuoteRecord quote;
  Currency total, totalIncTax;  // as ScheduleTotals::amount and amountIncTax
  Currency difference;          // of totalIncTax to that of the shortest term that is priced
};
// The request with each number of payments in turn; nullopt for one that cannot be priced.
std::vector<std::optional<TermVariant>> CompareTerms(int mode, const QuoteRecord& asked, const QuoteTerms& terms,
                                                     const std::vector<std::int16_t>& numbersOfPayments);

}  // namespace tarvolinex
