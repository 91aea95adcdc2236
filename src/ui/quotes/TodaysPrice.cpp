#include "ui/quotes/TodaysPrice.h"

#include "calc/Schedule.h"
#include "platform/text/Translation.h"
#include "ui/quotes/PlanWords.h"

namespace tarvolinex {

namespace {

constexpr std::pair<std::string_view, const char*> kStateWords[] = {{"open", Marked("open")},
                                                                    {"accepted", Marked("accepted")},
                                                                    {"declined", Marked("declined")},
                                                                    {"expired", Marked("expired")}};

bool ShowsTheSame(const QuoteRecord& a, const QuoteRecord& b) {
  const auto same = [&](Currency QuoteRecord::*amount) { return (a.*amount).Hundredths() == (b.*amount).Hundredths(); };
  return same(&QuoteRecord::Payment) && same(&QuoteRecord::PaymentIncTax) && same(&QuoteRecord::CapitalCost) &&
         same(&QuoteRecord::DepositIncTax) && same(&QuoteRecord::ResidualIncTax) && same(&QuoteRecord::CommissionValue);
}

}  // namespace

std::optional<QuoteRecord> PriceToday(const QuoteFigures& figures, const RateCard& card, float taxRate) {
  return Priced(figures.mode, figures.asked, {card, taxRate, figures.capitalCostLocked});
}

TodaysPrice PriceToday(Database& database, const KeptQuote& quote, float taxRate) {
  const SupplierRow supplier = ReadSupplier(database, quote.origin.supplierId);
  TodaysPrice today;
  today.supplierFound = supplier.Found();
  if (supplier.Found() && supplier.rateCardFault.empty()) {
    today.quote = PriceToday(quote.figures, supplier.settings, taxRate);
  }
  return today;
}

std::string TodayWords(const QuoteFigures& figures, const TodaysPrice& today, const Words& words) {
  if (!today.supplierFound) {
    return ReplaceAliases(Tr("The <SUPPLIER> has been removed: there is no rate card of today."), words);
  }
  if (!today.quote) return Tr("Today's rate card gives no price.");
  const QuoteRecord& now = *today.quote;
  if (ShowsTheSame(figures.priced, now)) return Tr("Today's rate card gives the same.");
  if (figures.priced.CapitalCost.Hundredths() != now.CapitalCost.Hundredths()) {
    return ReplaceAliases(Tr("Today's rate card gives £%1, inc <VAT> £%2, for a cost of £%3.",
                             {MoneyWords(now.Payment), MoneyWords(now.PaymentIncTax), MoneyWords(now.CapitalCost)}),
                          words);
  }
  return ReplaceAliases(
      Tr("Today's rate card gives £%1, inc <VAT> £%2.", {MoneyWords(now.Payment), MoneyWords(now.PaymentIncTax)}),
      words);
}

std::string QuoteWords(const KeptQuote& quote, CalendarDay today) {
  const QuoteDetails& details = quote.details;
  const std::string state = StateWords(StateName(details.state, details.validUntil, today));
  const std::string number = std::to_string(quote.number), day = DayText(quote.date);
  const std::string whom = details.customer.empty() ? quote.origin.companyName : details.customer;
  if (!details.validUntil) return Tr("Quote %1 of %2 for %3: %4", {number, day, whom, state});
  return Tr("Quote %1 of %2 for %3, valid until %4: %5", {number, day, whom, DayText(*details.validUntil), state});
}

std::string StateWords(std::string_view state) {
  for (const auto& [name, words] : kStateWords) {
    if (name == state) return Tr(words);
  }
  return std::string(state);
}

}  // namespace tarvolinex
