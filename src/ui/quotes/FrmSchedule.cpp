#include "ui/quotes/FrmSchedule.h"

#include "exchange/QuoteTables.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/ShownTable.h"
#include "ui/quotes/TypedInput.h"

namespace tarvolinex {

namespace {

ListView::Row RowOf(const ScheduleLine& line, bool internal, const Words& words) {
  ListView::Row row;
  row.key = std::string(KindName(line.kind)) + std::to_string(line.number);
  row.text = KindWords(line, words);
  row.cells = {DayText(line.date), MoneyWords(line.amount), MoneyWords(line.tax), MoneyWords(line.amountIncTax)};
  if (!internal) return row;
  for (const Currency amount : {line.interest, line.principal, line.balance}) row.cells.push_back(MoneyWords(amount));
  return row;
}

}  // namespace

FrmSchedule::FrmSchedule(Run& run, const QuoteRecord& quote, CalendarDay start)
    : Window("FrmSchedule", Tr("Schedule")),
      LblStart(*this, "LblStart", -1, Tr("&Start (year-month-day)")),
      TxtStart(*this, "TxtStart"),
      ChkInternal(*this, "ChkInternal", -1, Tr("With &interest and balance (for us only)")),
      LvwLines(*this, "LvwLines"),
      LblTotals(*this, "LblTotals"),
      CmdCopy(*this, "CmdCopy", -1, Tr("&Copy")),
      CmdSave(*this, "CmdSave", -1, Tr("Save &As...")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      quote_(quote) {
  CmdCopy.SetToolTip(Tr("As text with tabs, and as a table for a mail or a document"));
  TxtStart.Change = [this] { TxtStart_Change(); };
  ChkInternal.Click = [this] { ShowLines(); };
  CmdCopy.Click = [this] { CopyTable(LvwLines); };
  CmdSave.Click = [this] { Save(); };
  CmdClose.Click = [this] { Close(); };
  AnswerKeys(*this, CmdClose, CmdClose);
  TxtStart.SetText(DayText(start));
}

void FrmSchedule::TxtStart_Change() {
  const auto day = MarkDay(TxtStart, false);
  schedule_ = {};
  try {
    if (day) schedule_ = ScheduleOf(quote_, *day);
  } catch (const RuntimeError& failure) {
    TxtStart.SetFault(failure.Description());
  }
  ShowLines();
}

void FrmSchedule::ShowLines() {
  const Words words = run_.OwnWords();
  const bool internal = ChkInternal.Value();
  LvwLines.BeginFill();
  LvwLines.Clear();
  auto& columns = LvwLines.Columns();
  columns = {{Tr("Payment"), "", 2200},
             {Tr("Date"), "", 1500},
             {run_.ReplaceAliases(Tr("Amount (£)")), "", 1700, true},
             {run_.ReplaceAliases(Tr("<VAT> (£)")), "", 1500, true},
             {run_.ReplaceAliases(Tr("Inc <VAT> (£)")), "", 1700, true}};
  if (internal) {
    for (const std::string& name : {Tr("Interest (£)"), Tr("Principal (£)"), Tr("Balance (£)")}) {
      columns.push_back({run_.ReplaceAliases(name), "", 1600, true});
    }
  }
  for (const ScheduleLine& line : schedule_.lines) LvwLines.Add(RowOf(line, internal, words));
  LvwLines.EndFill();
  const std::string& fault = TxtStart.Fault();
  for (CommandButton* button : {&CmdCopy, &CmdSave}) button->SetEnabled(fault.empty());
  if (!fault.empty()) return LblTotals.SetCaption(CaptionOf(fault));
  std::string totals = PlanWords(quote_, schedule_.totals, words);
  if (internal)
    totals +=
        "\n" + run_.ReplaceAliases(Tr("Interest over the whole lease £%1", {MoneyWords(schedule_.totals.interest)}));
  LblTotals.SetCaption(CaptionOf(totals));
}

void FrmSchedule::Save() {
  std::string rows;
  AppendSchedule(1, schedule_, ChkInternal.Value(), rows);
  SaveTable(run_, Tr("Save the schedule"), "Schedule.xlsx", ScheduleColumns(ChkInternal.Value()), rows);
}

}  // namespace tarvolinex
