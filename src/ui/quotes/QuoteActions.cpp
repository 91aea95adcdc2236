// What is done with the selected quote, and what is seen of it.
#include <algorithm>
#include <set>

#include "controls/Desktop.h"
#include "exchange/Csv.h"
#include "exchange/KeptQuoteTable.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/quotes/FrmKeepQuote.h"
#include "ui/quotes/FrmQuotes.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/ShownTable.h"
#include "ui/quotes/TodaysPrice.h"

namespace tarvolinex {

namespace {

struct Figure {
  const char* name;
  Currency QuoteRecord::*amount;
  float QuoteRecord::*rate = nullptr;
};
constexpr Figure kFigures[] = {
    {Marked("Payment (£)"), &QuoteRecord::Payment},
    {Marked("Inc <VAT> (£)"), &QuoteRecord::PaymentIncTax},
    {Marked("Cost (£)"), &QuoteRecord::CapitalCost},
    {Marked("<DEPOSIT> (£)"), &QuoteRecord::DepositValue},
    {Marked("<RESIDUAL> (£)"), &QuoteRecord::ResidualValue},
    {Marked("<MAINT> (£)"), &QuoteRecord::Maintenance},
    {Marked("Commission (£)"), &QuoteRecord::CommissionValue},
    {Marked("Yield (%)"), nullptr, &QuoteRecord::Yield},
    {Marked("Premium Yield (%)"), nullptr, &QuoteRecord::PremiumYield},
};

std::string FigureText(const Figure& figure, const QuoteRecord& quote) {
  return figure.amount ? MoneyWords(quote.*figure.amount) : RateText(quote.*figure.rate);
}

}  // namespace

void FrmQuotes::ShowCount() {
  const auto& rows = LvwQuotes.Rows();
  const auto seen = std::count_if(rows.begin(), rows.end(), [](const ListView::Row& row) { return !row.hidden; });
  LblCount.SetCaption(Tr("%1 of %2 quotes", {std::to_string(seen), std::to_string(rows.size())}));
  Toolbar1.SetButtonEnabled("EXPORT", seen > 0);
}

void FrmQuotes::ShowSelected() {
  const bool any = SelectedNumber() != 0;
  for (const char* key : {"REOPEN", "COPY"}) Toolbar1.SetButtonEnabled(key, any);
  for (const char* key : {"DETAILS", "ACCEPT", "DECLINE", "REMOVE"}) {
    Toolbar1.SetButtonEnabled(key, any && !database_.ReadOnly());
  }
  for (Label* label : {&LblQuote, &LblToday, &LblNote}) label->SetCaption("");
  LvwFigures.Clear();
  if (any) With([this](const KeptQuote& quote) { ShowFigures(quote); });
}

void FrmQuotes::ShowFigures(const KeptQuote& quote) {
  const float taxRate = run_.CalculatorPreferences.TaxRate;
  const TodaysPrice today = PriceToday(database_, quote, taxRate);
  LblQuote.SetCaption(CaptionOf(QuoteWords(quote, LocalDay(TheDesktop().Now()))));
  LblToday.SetCaption(CaptionOf(TodayWords(quote.figures, today, run_.OwnWords())));
  LblNote.SetCaption(CaptionOf(quote.details.note));
  LvwFigures.BeginFill();
  LvwFigures.Clear();
  for (const Figure& figure : kFigures) {
    const std::string then = FigureText(figure, quote.figures.priced);
    const std::string now = today.quote ? FigureText(figure, *today.quote) : Tr("none");
    LvwFigures.Add({figure.name, run_.ReplaceAliases(Tr(figure.name)), {then, now}, "", false, false});
  }
  LvwFigures.Add({"tax",
                  run_.ReplaceAliases(Tr("<VAT> (%)")),
                  {RateText(quote.origin.preferences.TaxRate), RateText(taxRate)},
                  "",
                  false,
                  false});
  LvwFigures.EndFill();
}

void FrmQuotes::LvwQuotes_ColumnClick(int column) {
  LvwQuotes.SortAscending = LvwQuotes.SortColumn != column || !LvwQuotes.SortAscending;
  LvwQuotes.SortColumn = column;
  LvwQuotes.Sort();
}

// Reads the selected quote; one that another program has removed is reported and goes from the list.
void FrmQuotes::With(const std::function<void(const KeptQuote&)>& use) {
  const int number = SelectedNumber();
  if (number == 0) return;
  try {
    if (const auto quote = ReadQuote(database_, number)) return use(*quote);
    run_.ShowError(Tr("Quote %1 has been removed", {std::to_string(number)}));
    LvwQuotes.Remove(LvwQuotes.Selected());
    Filter();
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

void FrmQuotes::Reopen(const std::function<void(const KeptQuote&)>& show) {
  With([&](const KeptQuote& quote) {
    Close();
    show(quote);
  });
}

void FrmQuotes::EditDetails(const KeptQuote& quote) {
  QuoteDetails details = quote.details;
  FrmKeepQuote dialog(run_, QuoteWords(quote, LocalDay(TheDesktop().Now())), details);
  TheDesktop().ShowModal(dialog);
  if (dialog.Confirmed && details != quote.details) Update(quote.number, details);
}

void FrmQuotes::SetState(KeptQuote quote, QuoteState state) {
  // Once more takes it back.
  quote.details.state = quote.details.state == state ? QuoteState::Open : state;
  Update(quote.number, quote.details);
}

void FrmQuotes::Update(int number, const QuoteDetails& details) {
  if (!UpdateQuote(database_, number, details)) {
    run_.ShowError(Tr("Quote %1 has been removed", {std::to_string(number)}));
  }
  Load();
}

void FrmQuotes::Remove() {
  const int number = SelectedNumber();
  if (number == 0) return;
  RemovedRows removed = RemoveQuote(database_, number);
  if (!removed.statements.empty()) removed_.push_back(std::move(removed));
  // The next one that is seen is selected.
  const int row = LvwQuotes.Selected();
  int next = row + 1;
  while (next < LvwQuotes.Count() && LvwQuotes.At(next).hidden) ++next;
  const std::string key = next < LvwQuotes.Count() ? LvwQuotes.At(next).key : std::string();
  LvwQuotes.Select(key.empty() ? -1 : next);
  Load();
  run_.SetNote(Tr("Quote %1 is removed; Undo in the list of quotes puts it back", {std::to_string(number)}));
}

void FrmQuotes::Undo() {
  if (removed_.empty()) return;
  const RemovedRows last = std::move(removed_.back());
  removed_.pop_back();
  RestoreRows(database_, last);
  Load();
  Select(last.quote);
  run_.SetNote(Tr("Quote %1 is back", {std::to_string(last.quote)}));
}

void FrmQuotes::Export() {
  std::set<int> seen;
  for (const ListView::Row& row : LvwQuotes.Rows()) {
    if (!row.hidden) seen.insert(IdOfKey(row.key));
  }
  const bool shared = !database_.Plain().IsFile();
  std::vector<SheetColumn> columns = KeptQuoteColumns();
  if (shared) columns.push_back({"By"});
  std::string rows;
  try {
    ListQuotes(database_, LocalDay(TheDesktop().Now()), [&](const QuoteListRow& quote) {
      if (!seen.contains(quote.number)) return;
      rows += KeptQuoteLine(quote);
      if (shared) rows.insert(rows.size() - 1, "," + CsvCell(makers_[quote.number]));
    });
  } catch (const RuntimeError& failure) {
    return run_.ShowError(failure.Description());
  }
  SaveTable(run_, Tr("Save the quotes"), "Quotes.xlsx", columns, rows);
}

}  // namespace tarvolinex
