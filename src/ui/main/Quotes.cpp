// Keeping the shown quote, and the quotes that were kept.
#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "publish/PageOptions.h"
#include "ui/main/FrmMain.h"
#include "ui/quotes/FrmKeepQuote.h"
#include "ui/quotes/FrmQuotes.h"
#include "ui/quotes/FrmSheet.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/TodaysPrice.h"

namespace tarvolinex {

namespace {

CalendarDay DaysAfter(CalendarDay day, int days) {
  return CalendarDay(std::chrono::sys_days(day) + std::chrono::days(days));
}

}  // namespace

// As the calculator's page says, else a month.
int FrmMain::DaysOfValidity() const {
  constexpr int kUsual = 30;
  try {
    const int days = ReadPageOptions(run.AppFolder).validDays;
    return days > 0 ? days : kUsual;
  } catch (const RuntimeError&) {
    return kUsual;
  }
}

void FrmMain::KeepShownQuote() {
  if (!MayStore()) return;
  if (quote.Kept()) return ChangeKeptQuote(*quote.Kept());
  const int supplierId = shown.CurrentSupplierId;
  if (!SavePendingChanges()) return;  // what prices the quote is what is stored
  if (shown.CurrentSupplierId == 0) {
    run.MessageBox(run.ReplaceAliases(Tr("A quote is kept for a stored <SUPPLIER>: give it a name first")),
                   Tr("Keep Quote"), BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  const bool left = supplierId != 0 && supplierId != shown.CurrentSupplierId;
  if (left || !quote.HasQuote()) return;
  KeptQuote kept;
  kept.date = LocalDay(TheDesktop().Now());
  kept.figures = quote.Figures();
  kept.origin = {shown.CurrentSupplierId, supplier.Name().Text(), run.SupplierCalcSettings, run.CalculatorPreferences};
  kept.details = Draft().details;
  if (!kept.details.validUntil) kept.details.validUntil = ProposedEnd(kept.date);
  const std::string words = PaymentsWords(kept.figures.priced, run.OwnWords());
  FrmKeepQuote dialog(run, kept.origin.companyName + "\n" + words, kept.details);
  TheDesktop().ShowModal(dialog);
  if (!dialog.Confirmed) return;
  try {
    kept.number = KeepQuote(database, kept);
    draft_ = {};
    ShowKeptQuote(kept.number);
    run.SetNote(Tr("Quote %1 is kept", {std::to_string(kept.number)}));
  } catch (const RuntimeError& failure) {
    run.ShowError(failure.Description());
  }
}

void FrmMain::ChangeKeptQuote(const KeptQuote& kept) {
  QuoteDetails details = kept.details;
  FrmKeepQuote dialog(run, QuoteWords(kept, LocalDay(TheDesktop().Now())), details);
  TheDesktop().ShowModal(dialog);
  if (dialog.Confirmed) StoreDetails(kept.number, details);
}

void FrmMain::StoreDetails(int number, const QuoteDetails& details) {
  if (!MayStore()) return;
  try {
    if (!UpdateQuote(database, number, details)) {
      return run.ShowError(Tr("Quote %1 has been removed", {std::to_string(number)}));
    }
    ShowKeptQuote(number);
    run.SetNote(Tr("Quote %1 is kept", {std::to_string(number)}));
  } catch (const RuntimeError& failure) {
    run.ShowError(failure.Description());
  }
}

void FrmMain::ShowKeptQuote(int number) {
  if (const auto kept = ReadQuote(database, number)) quote.ShowKept(*kept);
}

// Whether the quote's supplier is still there, and shown now.
bool FrmMain::ShowSupplierOf(const KeptQuote& kept) {
  TabMain.SelectTab(kTabQuote);
  const int row = LvwSuppliers.Find("ID" + std::to_string(kept.origin.supplierId));
  if (kept.origin.supplierId != shown.CurrentSupplierId && row >= 0) {
    if (LvwSuppliers.At(row).hidden) TxtFilter.SetText("");
    LvwSuppliers.Select(row);
    LvwSuppliers_ItemClick();
  }
  return kept.origin.supplierId == shown.CurrentSupplierId;
}

void FrmMain::CopyAsNew(const KeptQuote& kept) {
  if (ShowSupplierOf(kept)) {
    // For the same customer and equipment, of today.
    draft_ = {kept.origin.supplierId, kept.details};
    draft_.details.reference.clear();
    draft_.details.note.clear();
    draft_.details.start = draft_.details.validUntil = std::nullopt;
    return quote.TakeRequest(kept.figures);
  }
  run.MessageBox(run.ReplaceAliases(Tr("The <SUPPLIER> has been removed since")), Tr("Copy as New"), BoxButtons::Ok,
                 BoxIcon::Information);
}

void FrmMain::ShowQuotes() {
  if (!SaveShown()) return;
  FrmQuotes quotes(run, database,
                   {[this](const KeptQuote& kept) {
                      ShowSupplierOf(kept);
                      draft_ = {};
                      quote.ShowKept(kept);
                    },
                    [this](const KeptQuote& kept) { CopyAsNew(kept); }},
                   RemovedQuotes);
  quotes.Load();
  TheDesktop().ShowModal(quotes);
  RefreshKeptQuote();
}

// What is shown of a kept quote follows what was done in its window.
void FrmMain::RefreshKeptQuote() {
  if (!quote.Kept()) return;
  try {
    const auto now = ReadQuote(database, quote.Kept()->number);
    if (!now) return quote.LoseKept();
    if (*now != *quote.Kept()) quote.ShowKept(*now);
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDatabaseGone) run.ShowError(failure.Description());
  }
}

FrmMain::SheetDraft& FrmMain::Draft() {
  if (draft_.supplierId != shown.CurrentSupplierId) draft_ = {shown.CurrentSupplierId, {}};
  return draft_;
}

// The last day of a quote of that day, unless the user has taken it off its sheet.
std::optional<CalendarDay> FrmMain::ProposedEnd(CalendarDay day) {
  if (Draft().endless) return std::nullopt;
  return DaysAfter(day, DaysOfValidity());
}

// Of a kept quote as it was quoted, else of what is stored now.
void FrmMain::ShowSheet() {
  if (const auto kept = quote.Kept()) {
    SheetDraft draft = {kept->origin.supplierId, kept->details};
    ShowSheet(SheetOf(run.Places(), *kept), draft);
    if (draft.details != kept->details) StoreDetails(kept->number, draft.details);
    return;
  }
  if (!SavePendingChanges() || shown.CurrentSupplierId == 0 || !quote.HasQuote()) return;
  SheetContents contents = SheetOf(run.Places(), run.CalculatorPreferences, run.SupplierCalcSettings);
  contents.date = contents.start = LocalDay(TheDesktop().Now());
  contents.validUntil = ProposedEnd(contents.date);
  ShowSheet(contents, Draft());
}

// The draft takes what the user types, and nothing that was only proposed.
void FrmMain::ShowSheet(const SheetContents& contents, SheetDraft& draft) {
  QuoteDetails& known = draft.details;
  QuoteDetails proposed = known;
  if (known.reference.empty()) proposed.reference = contents.reference;
  if (!known.start) proposed.start = contents.start;
  if (!known.validUntil) proposed.validUntil = contents.validUntil;
  QuoteDetails left = proposed;
  FrmSheet sheet(run, contents, quote.Figures(), left);
  TheDesktop().ShowModal(sheet);
  if (left.reference == proposed.reference) left.reference = known.reference;
  if (left.start == proposed.start) left.start = known.start;
  draft.endless = !left.validUntil;
  if (left.validUntil == proposed.validUntil) left.validUntil = known.validUntil;
  known = left;
}

}  // namespace tarvolinex
