// What other programs store in the database is shown without being in the user's way: what he has typed, selected and
// ticked stays, and so does where he looks.
#include <algorithm>
#include <map>
#include <utility>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

// What fields take from the database is no edit.
class WhileLoading {
 public:
  explicit WhileLoading(ShownSupplier& shown) : shown_(shown), changedBefore_(shown.SupplierChanged) {
    shown_.LoadingSupplier = true;
  }
  ~WhileLoading() {
    shown_.LoadingSupplier = false;
    shown_.SupplierChanged = changedBefore_;
  }
  WhileLoading(const WhileLoading&) = delete;
  WhileLoading& operator=(const WhileLoading&) = delete;

 private:
  ShownSupplier& shown_;
  const bool changedBefore_;
};

// Marks stay until they have been looked at again.
void KeepMarks(const std::vector<ListView::Row>& from, std::vector<ListView::Row>& rows) {
  std::map<std::string_view, const ListView::Row*> known;
  for (const ListView::Row& row : from) known[row.key] = &row;
  for (ListView::Row& row : rows) {
    const auto before = known.find(row.key);
    if (before == known.end()) continue;
    row.mark = before->second->mark;
    row.cells[StandingMarks::kStateCell] = before->second->cells[StandingMarks::kStateCell];
  }
}

}  // namespace

// Whether no work goes on and no window waits for an answer: what they were begun with must not change below them.
bool FrmMain::AtRest() {
  return !Working && !busy_ && !shown.LoadingSupplier && !quote.loading && database.IsOpen() &&
         !database.Plain().InTransaction() && !database.GivenUp() && !TheDesktop().Waits();
}

void FrmMain::TimerOthers_Tick() {
  if (!AtRest()) return;
  standing.GoOn();
  const GoesOnWithout server(database);
  try {
    const std::string told = database.Plain().Told();
    const bool changed = std::exchange(told_, told) != told;
    // What was edited here and elsewhere is shown once it is no edit any more, without another change.
    const bool heldBack = std::exchange(heldBack_, false);
    if (changed) {
      FollowOthers();
    } else if (heldBack && shown.CurrentSupplierId != 0) {
      FollowShownSupplier();
    }
    heldBack_ = (changed || heldBack) && !ReadsAsLoaded();
    RememberLastChange();
  } catch (const RuntimeError&) {
    // What cannot be read now is read later; a command tells why it cannot.
    told_.clear();
  }
}

void FrmMain::FollowOthers() {
  if (shown.CurrentSupplierId != 0) FollowShownSupplier();
  FollowSupplierList();
  RefreshKeptQuote();
  FollowPreferences();
}

// One that is gone stays in the fields while something of it is edited: the user is asked when it is stored.
void FrmMain::FollowShownSupplier() {
  const SupplierRow now = ReadSupplier(database, shown.CurrentSupplierId);
  if (!now.Found()) {
    SetNote(Tr("%1 has been removed by another program", {fields_.LoadedRow().Text("CompanyName")}));
    return TxtStatus.SetText(note_);
  }
  if (!TakeStored(now)) return;
  if (!Nameless()) ShowSupplierName();
  UseRateCard(now);
}

// Returns whether a field of the supplier's has changed.
bool FrmMain::TakeStored(const SupplierRow& now) {
  const WhileLoading loading(shown);
  const bool met = !Meet(now).empty();
  const bool taken = fields_.TakeStored(now.row);
  const bool ticks = forms.Follow(shown.CurrentSupplierId);
  const bool people = contacts.Follow();
  if (met || taken || ticks || people) ShowWhoChanged();
  return taken;
}

// The name that is typed, or not stored yet, stays as it is, and so does the row of what is gone while it is edited.
void FrmMain::FollowSupplierList() {
  ListView& list = LvwSuppliers;
  std::vector<ListView::Row> rows = RowsByName();
  const std::string key = "ID" + std::to_string(shown.CurrentSupplierId);
  if (const int own = list.Find(key); own >= 0 && !ReadsAsLoaded()) {
    const auto found = std::ranges::find(rows, key, &ListView::Row::key);
    if (found == rows.end()) {
      rows.insert(rows.begin() + std::min<std::ptrdiff_t>(own, std::ssize(rows)), list.At(own));
    } else {
      found->text = list.At(own).text;
    }
  }
  KeepMarks(list.Rows(), rows);
  const bool renewed = list.Renew(std::move(rows));
  standing.LookAtAll();
  if (!renewed) return;
  shown.CurrentSupplierIndex = list.Selected();
  if (list.Selected() < 0) LoadInsteadOfMissing();
}

void FrmMain::LoadInsteadOfMissing() {
  shown.SupplierChanged = false;
  LvwSuppliers.Select(LvwSuppliers.FirstShown());
  LvwSuppliers_ItemClick();
}

}  // namespace tarvolinex
