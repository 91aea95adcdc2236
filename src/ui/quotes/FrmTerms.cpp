#include "ui/quotes/FrmTerms.h"

#include <algorithm>
#include <cmath>

#include "calc/InputRules.h"
#include "exchange/QuoteTables.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/ShownTable.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kMostTerms = 24;

// The numbers of a list such as "24, 36 48"; empty when something else stands in it.
std::vector<double> NumbersOf(const std::string& list, double most) {
  std::vector<double> numbers;
  std::string_view left = list;
  const auto isBetween = [](char c) { return c == ' ' || c == ',' || c == ';'; };
  while (!left.empty()) {
    const auto end = std::find_if(left.begin(), left.end(), isBetween);
    const std::string word(left.begin(), end);
    left.remove_prefix(std::min(left.size(), word.size() + 1));
    if (word.empty()) continue;
    std::string buffer;
    const auto text = ExactNumberText(word, buffer);
    const double number = text ? LeadingNumber(*text) : -1;
    if (number < 0 || number > most || numbers.size() == kMostTerms) return {};
    numbers.push_back(number);
  }
  return numbers;
}

double DepositOf(const QuoteRecord& quote) {
  if (quote.DepositMode == 1) return static_cast<double>(quote.DepositPercent);
  return quote.DepositMode == 2 ? quote.AdvancedPayments : quote.DepositValue.ToDouble();
}

std::string DepositText(const QuoteRecord& quote) {
  const double deposit = DepositOf(quote);
  if (quote.DepositMode == 2) return std::to_string(quote.AdvancedPayments);
  return FormatFixed(deposit, 2);
}

}  // namespace

FrmTerms::FrmTerms(Run& run, const Request& request, TakeVariant take)
    : Window("FrmTerms", Tr("Compare Terms")),
      LblTerms(*this, "LblTerms", -1, Tr("&Numbers of payments")),
      TxtTerms(*this, "TxtTerms"),
      LblDeposits(*this, "LblDeposits", -1, run.CaptionWithAliases(Tr("<DEPOSIT>"))),
      TxtDeposits(*this, "TxtDeposits"),
      LvwTerms(*this, "LvwTerms"),
      LblHint(*this, "LblHint", -1,
              Tr("Choose a row to take it into the quote. Differences are to the shortest term of the same deposit.")),
      CmdCopy(*this, "CmdCopy", -1, Tr("&Copy")),
      CmdSave(*this, "CmdSave", -1, Tr("Save &As...")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      asked_(request.asked),
      mode_(request.mode),
      terms_(request.terms),
      take_(std::move(take)),
      present_{std::to_string(asked_.NumberOfPayments), DepositText(asked_)} {
  if (asked_.DepositMode == 1) LblDeposits.SetCaption(run.CaptionWithAliases(Tr("<DEPOSIT> (%)")));
  if (asked_.DepositMode == 2) LblDeposits.SetCaption(Tr("Payments in advance"));
  CmdCopy.SetToolTip(Tr("As text with tabs, and as a table for a mail or a document"));
  std::vector<int> payments;
  for (int years = 2; years <= 5; ++years) payments.push_back(years * (asked_.Quarterly ? 4 : 12));
  if (std::find(payments.begin(), payments.end(), asked_.NumberOfPayments) == payments.end()) {
    payments.push_back(asked_.NumberOfPayments);
    std::sort(payments.begin(), payments.end());
  }
  std::string list;
  for (const int number : payments) list += (list.empty() ? "" : ", ") + std::to_string(number);
  TxtTerms.SetText(list);
  TxtDeposits.SetText(present_.deposit);
  TxtTerms.Change = TxtDeposits.Change = [this] { Compare(); };
  LvwTerms.ItemClick = [this] { LvwTerms_ItemClick(); };
  CmdCopy.Click = [this] { CopyTable(LvwTerms); };
  CmdSave.Click = [this] { Save(); };
  CmdClose.Click = [this] { Close(); };
  AnswerKeys(*this, CmdClose, CmdClose);
  Compare();
}

QuoteRecord FrmTerms::With(double deposit) const {
  QuoteRecord request = asked_;
  if (asked_.DepositMode == 0) request.DepositValue = Currency::FromDouble(deposit).value_or(Currency());
  if (asked_.DepositMode == 1) request.DepositPercent = static_cast<float>(deposit);
  if (asked_.DepositMode == 2) request.AdvancedPayments = static_cast<std::int16_t>(deposit);
  return request;
}

void FrmTerms::Compare() {
  std::vector<std::int16_t> terms;
  bool whole = true;
  for (const double number : NumbersOf(TxtTerms.Text(), kMostPayments)) {
    whole = whole && number >= 1 && number == std::floor(number);
    terms.push_back(static_cast<std::int16_t>(number));
  }
  const bool percent = asked_.DepositMode == 1, advanced = asked_.DepositMode == 2;
  const std::vector<double> deposits = NumbersOf(TxtDeposits.Text(), advanced  ? kMostPayments
                                                                     : percent ? 100
                                                                               : kLargestAmount);
  TxtTerms.SetFault(terms.empty() || !whole ? Tr("Write numbers of payments, such as 24, 36, 48") : "");
  TxtDeposits.SetFault(deposits.empty() ? Tr("Write one or more numbers, such as 0, 500") : "");
  if (!TxtTerms.Fault().empty() || !TxtDeposits.Fault().empty()) return;
  LvwTerms.BeginFill();
  LvwTerms.Clear();
  LvwTerms.Columns() = {{run_.ReplaceAliases(Tr("<DEPOSIT>")), "", 1500, true},
                        {Tr("Payments"), "", 1200, true},
                        {run_.ReplaceAliases(Tr("Payment (£)")), "", 1600, true},
                        {run_.ReplaceAliases(Tr("Inc <VAT> (£)")), "", 1600, true},
                        {run_.ReplaceAliases(Tr("Total inc <VAT> (£)")), "", 2000, true},
                        {run_.ReplaceAliases(Tr("Difference (£)")), "", 1700, true},
                        {Tr("Quote"), "", 1300}};
  variants_.clear();
  saved_.clear();
  for (const double deposit : deposits) AddDeposit(deposit, terms);
  LvwTerms.EndFill();
}

void FrmTerms::AddDeposit(double deposit, const std::vector<std::int16_t>& terms) {
  const QuoteRecord request = With(deposit);
  const std::string depositText = DepositText(request);
  const auto compared = CompareTerms(mode_, request, terms_, terms);
  for (std::size_t i = 0; i < compared.size(); ++i) {
    const auto& variant = compared[i];
    variants_.push_back({std::to_string(terms[i]), depositText});
    ListView::Row row;
    row.key = std::to_string(variants_.size());
    row.text = WithThousands(depositText);
    const bool present = variants_.back().payments == present_.payments && depositText == present_.deposit;
    const std::string mark = present ? Tr("this quote") : "";
    if (variant) {
      row.cells = {variants_.back().payments,
                   MoneyWords(variant->quote.Payment),
                   MoneyWords(variant->quote.PaymentIncTax),
                   MoneyWords(variant->totalIncTax),
                   MoneyWords(variant->difference),
                   mark};
      AppendVariant(static_cast<long>(variants_.size()), *variant, saved_);
    } else {
      row.cells = {variants_.back().payments, Tr("none"), "", "", "", mark};
    }
    LvwTerms.Add(std::move(row));
    if (present) LvwTerms.Select(LvwTerms.Count() - 1);
  }
}

void FrmTerms::LvwTerms_ItemClick() {
  const int row = LvwTerms.Selected();
  if (row < 0) return;
  present_ = variants_[static_cast<std::size_t>(row)];
  for (int i = 0; i < LvwTerms.Count(); ++i) LvwTerms.SetCell(i, 5, i == row ? Tr("this quote") : "");
  take_(present_.payments, present_.deposit);
}

void FrmTerms::Save() {
  SaveTable(run_, Tr("Save the terms"), "Terms.xlsx", VariantColumns(), saved_);
}

}  // namespace tarvolinex
