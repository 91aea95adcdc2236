#include "ui/quotes/PlanWords.h"

#include "calc/InputRules.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

std::string MoneyWords(Currency amount) {
  return WithThousands(FormatFixed(amount.ToDouble(), 2));
}

std::string RateText(float rate) {
  return FormatNumberInput(kInputPercent, FormatSingle(rate));
}

std::string DepositText(const QuoteRecord& asked) {
  if (asked.DepositMode == kDepositPercent) return RateText(asked.DepositPercent);
  if (asked.DepositMode == kDepositAdvanced) return std::to_string(asked.AdvancedPayments);
  return FormatFixed(asked.DepositValue.ToDouble(), 2);
}

std::string KindWords(const ScheduleLine& line, const Words& words) {
  switch (line.kind) {
    case LineKind::Deposit:
      return ReplaceAliases(Tr("<DEPOSIT>"), words);
    case LineKind::Advance:
      return Tr("Payments in advance");
    case LineKind::Payment:
      return Tr("Payment %1", {std::to_string(line.number)});
    case LineKind::Residual:
      break;
  }
  return ReplaceAliases(Tr("<RESIDUAL>"), words);
}

std::string LineWords(const ScheduleLine& line, const Words& words) {
  return Tr("%1, %2: %3", {KindWords(line, words), DayText(line.date), MoneyWords(line.amountIncTax)});
}

std::string PaymentsWords(const QuoteRecord& quote, const Words& words) {
  return ReplaceAliases(
      Tr("%1 payments of £%2, inc <VAT> £%3", {std::to_string(quote.NumberOfPayments - quote.AdvancedPayments),
                                               MoneyWords(quote.Payment), MoneyWords(quote.PaymentIncTax)}),
      words);
}

std::string PlanWords(const QuoteRecord& quote, const ScheduleTotals& totals, const Words& words) {
  const std::string total =
      Tr("Total payable £%1, inc <VAT> £%2", {MoneyWords(totals.amount), MoneyWords(totals.amountIncTax)});
  const std::string run =
      Tr("%1 payments of £%2 inc <VAT>, from %3 to %4",
         {std::to_string(quote.NumberOfPayments - quote.AdvancedPayments), MoneyWords(quote.PaymentIncTax),
          DayText(totals.firstPayment), DayText(totals.lastPayment)});
  return ReplaceAliases(total, words) + "\n" + ReplaceAliases(run, words);
}

}  // namespace tarvolinex
