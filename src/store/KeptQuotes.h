// Quotes that were kept: what was asked, what came out and what priced it, as they were on that day.
//
// Their tables are made when the first quote is kept; until then a database has none, and reading finds nothing.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/Quote.h"
#include "core/Records.h"
#include "platform/text/Clock.h"
#include "store/Database.h"
#include "store/Suppliers.h"

namespace tarvolinex {

// Stored as "open", "accepted", "declined".
enum class QuoteState { Open, Accepted, Declined };
// "open", "accepted", "declined"; "expired" for an open quote whose last day of validity is before today.
std::string_view StateName(QuoteState state);
std::string_view StateName(QuoteState state, const std::optional<CalendarDay>& validUntil, CalendarDay today);

// What a person says about a quote and may change later. Texts hold no apostrophes: a grave accent is stored;
// only the note has line breaks: elsewhere a blank is.
struct QuoteDetails {
  std::string customer, customerEmail, customerTel, equipment, reference, note;
  std::optional<CalendarDay> start;       // of the lease; none = not settled
  std::optional<CalendarDay> validUntil;  // the last day; none = without an end
  QuoteState state = QuoteState::Open;
  bool operator==(const QuoteDetails&) const = default;
};

// What was asked in which mode, and what it came to. Of `asked` only the inputs are kept; the fields that are results
// alone are 0.
struct QuoteFigures {
  int mode = 0;
  bool capitalCostLocked = false;
  QuoteRecord asked, priced;
  bool operator==(const QuoteFigures&) const = default;
};

// Who and what priced it: enough to price it again and to print it as it was.
struct QuoteOrigin {
  int supplierId = 0;                       // of a supplier that may have been removed since
  std::string companyName;                  // as it was then
  SupplierCalcSettingsRecord supplier;      // with the rate card
  CalculatorPreferencesRecord preferences;  // with limits, tax rate, currency and words
  bool operator==(const QuoteOrigin&) const = default;
};
// REQUIRES: the supplier was found and its rates can price.
QuoteOrigin OriginOf(const SupplierRow& supplier, const CalculatorPreferencesRecord& preferences);

struct KeptQuote {
  int number = 0;    // 0 = not kept yet; a number is never given twice
  CalendarDay date;  // of the day it was kept
  QuoteDetails details;
  QuoteOrigin origin;
  QuoteFigures figures;
  bool operator==(const KeptQuote&) const = default;
};

// Throws RuntimeError (6) for an amount of 100,000,000,000 or more (the database would round it) and a rate that is no
// number.
void CheckKeepable(QuoteFigures figures);

// Keeps each of the figures as a quote of its own with the date, details and origin of `common`, together or not at
// all, and returns their numbers. Throws RuntimeError, before anything is written, for a text that is too long and as
// CheckKeepable. A statement that fails is a fatal report.
std::vector<int> KeepQuotes(Database& database, const KeptQuote& common, const std::vector<QuoteFigures>& figures);
// Likewise, one.
int KeepQuote(Database& database, const KeptQuote& quote);

// nullopt when there is no such quote. Throws RuntimeError, naming quote and column, for what cannot be read.
std::optional<KeptQuote> ReadQuote(Database& database, int number);

// What a list shows of a quote. The texts live until the reader returns.
struct QuoteListRow {
  int number = 0;
  std::string_view date, companyName, customer, equipment, validUntil;  // days as YYYY-MM-DD
  std::string_view customerEmail, customerTel, reference;
  int supplierId = 0;
  Currency capitalCost, payment, paymentIncTax;
  int numberOfPayments = 0;
  std::string_view state;  // as StateName
};
// Every quote in the order of the numbers. Throws RuntimeError.
void ListQuotes(Database& database, CalendarDay today, const std::function<void(const QuoteListRow&)>& read);

// False when the quote is no longer there. Throws as KeepQuotes; nothing else of the quote changes.
bool UpdateQuote(Database& database, int number, const QuoteDetails& details);

// RestoreRows puts it back under its number; without statements there was no such quote.
RemovedRows RemoveQuote(Database& database, int number);

// How many characters a text of the details may have.
inline constexpr int kMostInCustomer = 100, kMostInEmail = 100, kMostInTel = 50, kMostInEquipment = 250,
                     kMostInReference = 50, kMostInNote = 2000;

// A field of QuoteRecord under its own name. Columns are called so; those of what was asked have "Asked" before it.
using QuoteMember = std::variant<std::int16_t*, float*, Currency*, bool*>;
struct QuoteField {
  const char* name;
  QuoteMember (*member)(QuoteRecord&);
  bool input;  // not a result alone
};
std::span<const QuoteField> QuoteFields();

}  // namespace tarvolinex
