#include "ui/quotes/FrmTerms.h"

#include <algorithm>

#include "calc/InputRules.h"
#include "exchange/QuoteTables.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/ShownTable.h"
#include "ui/quotes/TypedInput.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kMostTerms = 24;

}  // namespace

FrmTerms::FrmTerms(Run& run, const Request& request, TakeVariant take)
    : Window("FrmTerms", Tr("Compare Terms")),
      LblTerms(*this, "LblTerms", -1, Tr("&Numbers of payments")),
      TxtTerms(*this, "TxtTerms"),
      LblDeposits(*this, "LblDeposits", -1, run.CaptionWithAliases(Tr("<DEPOSIT>"))),
      TxtDeposits(*this, "TxtDeposits"),
      LvwTerms(*this, "LvwTerms"),
      LblHint(*this, "LblHint"),
      CmdCopy(*this, "CmdCopy", -1, Tr("&Copy")),
      CmdSave(*this, "CmdSave", -1, Tr("Save &As...")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      asked_(request.asked),
      mode_(request.mode),
      terms_(request.terms),
      take_(std::move(take)) {
  if (!request.kept) present_ = {std::to_string(asked_.NumberOfPayments), DepositText(asked_)};
  if (asked_.DepositMode == kDepositPercent) LblDeposits.SetCaption(run.CaptionWithAliases(Tr("<DEPOSIT> (%)")));
  if (asked_.DepositMode == kDepositAdvanced) LblDeposits.SetCaption(Tr("Payments in advance"));
  hint_ = (request.kept ? Tr("At today's rates.") + " " : "") +
          Tr("Choose a row to take it into the quote. Differences are to the shortest term of the same deposit.");
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
  TxtDeposits.SetText(DepositText(asked_));
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
  if (asked_.DepositMode == kDepositValue) request.DepositValue = Currency::FromDouble(deposit).value_or(Currency());
  if (asked_.DepositMode == kDepositPercent) request.DepositPercent = static_cast<float>(deposit);
  if (asked_.DepositMode == kDepositAdvanced) request.AdvancedPayments = static_cast<std::int16_t>(deposit);
  return request;
}

std::vector<double> FrmTerms::Deposits() const {
  constexpr double kWhole = 100;
  if (asked_.DepositMode == kDepositPercent) return NumbersOf(TxtDeposits.Text(), kWhole);
  return NumbersOf(TxtDeposits.Text(), asked_.DepositMode == kDepositAdvanced ? kMostPayments : kLargestAmount);
}

void FrmTerms::Compare() {
  const std::vector<std::int16_t> terms = TermsOf(TxtTerms.Text());
  const std::vector<double> deposits = Deposits();
  const bool priceable =
      !terms.empty() && terms.size() <= kMostTerms && *std::max_element(terms.begin(), terms.end()) <= kMostPayments;
  TxtTerms.SetFault(priceable ? "" : Tr("Write numbers of payments, such as 24, 36, 48"));
  TxtDeposits.SetFault(deposits.empty() || deposits.size() > kMostTerms
                           ? Tr("Write one or more numbers with blanks between them, such as 0 500 1,000")
                           : "");
  const bool fine = TxtTerms.Fault().empty() && TxtDeposits.Fault().empty();
  ListVariants(fine ? deposits : std::vector<double>(), terms);
  const std::string& fault = TxtTerms.Fault().empty() ? TxtDeposits.Fault() : TxtTerms.Fault();
  LblHint.SetCaption(CaptionOf(fault.empty() ? hint_ : fault));
  for (CommandButton* button : {&CmdCopy, &CmdSave}) button->SetEnabled(fault.empty());
}

void FrmTerms::ListVariants(const std::vector<double>& deposits, const std::vector<std::int16_t>& terms) {
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
  try {
    for (const double deposit : deposits) AddDeposit(deposit, terms);
  } catch (const RuntimeError& failure) {
    TxtTerms.SetFault(failure.Description());
    LvwTerms.Clear();
    variants_.clear();
    saved_.clear();
  }
  LvwTerms.EndFill();
}

void FrmTerms::AddDeposit(double deposit, const std::vector<std::int16_t>& terms) {
  // As the quote's box will hold it, so that a row that is taken comes to what it shows.
  const std::string depositText = DepositText(With(deposit));
  const QuoteRecord request = With(LeadingNumber(depositText));
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
