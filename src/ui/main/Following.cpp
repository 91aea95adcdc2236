// What other programs store in the database is shown without being in the user's way: what he has typed, selected and
// ticked stays, and so does where he looks.
#include <algorithm>
#include <map>
#include <utility>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "store/Tables.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

bool ReadsTheSame(const std::vector<ListView::Row>& one, const std::vector<ListView::Row>& other) {
  return std::ranges::equal(one, other, [](const ListView::Row& a, const ListView::Row& b) {
    return a.key == b.key && a.text == b.text && a.cells == b.cells;
  });
}

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

// Nothing while work goes on or a window waits for an answer: what they were begun with must not change below them.
void FrmMain::TimerOthers_Tick() {
  if (Working || busy_ || shown.LoadingSupplier || quote.loading || !database.IsOpen() ||
      database.Plain().InTransaction() || TheDesktop().Waits()) {
    return;
  }
  try {
    const std::string version = DatabaseVersion(database);
    // A server tells of a change that may not be finished yet: it is looked for once more.
    const bool again = std::exchange(lookAgain_, false);
    const bool changed = std::exchange(version_, version) != version;
    lookAgain_ = changed && !database.Plain().IsFile();
    // What was edited here and elsewhere is shown once it is no edit any more, without another change.
    const bool edited = !ReadsAsLoaded() || contacts.ContactChanged, wasEdited = std::exchange(edited_, edited);
    if (changed || again) {
      FollowOthers();
    } else if (wasEdited && shown.CurrentSupplierId != 0) {
      FollowShownSupplier();
    }
    RememberLastChange();
  } catch (const RuntimeError&) {
    // What cannot be read now is read with the next command, which tells why it cannot.
  }
}

void FrmMain::FollowOthers() {
  if (shown.CurrentSupplierId != 0) FollowShownSupplier();
  FollowSupplierList();
  RefreshKeptQuote();
}

// One that is gone stays in the fields while something of it is edited: the user is asked when it is stored.
void FrmMain::FollowShownSupplier() {
  const SupplierRow now = ReadSupplier(database, shown.CurrentSupplierId);
  if (!now.Found()) {
    SetNote(Tr("%1 has been removed by another program", {fields_.LoadedRow().Text("CompanyName")}));
    return TxtStatus.SetText(note_);
  }
  const bool changedBefore = shown.SupplierChanged;
  shown.LoadingSupplier = true;
  const bool met = !Meet(now).empty();
  const bool taken = fields_.TakeStored(now.row);
  const bool ticks = forms.Follow(shown.CurrentSupplierId);
  const bool people = contacts.Follow();
  if (met || taken || ticks || people) ShowWhoChanged();
  shown.LoadingSupplier = false;
  shown.SupplierChanged = changedBefore;
  if (!taken) return;
  if (!Nameless()) ShowSupplierName();
  UseRateCard(now);
}

// The row of what is edited, or not stored yet, stays as it is.
void FrmMain::FollowSupplierList() {
  ListView& list = LvwSuppliers;
  std::vector<ListView::Row> rows = RowsByName();
  const std::string key = "ID" + std::to_string(shown.CurrentSupplierId);
  if (const int own = list.Find(key); own >= 0 && !ReadsAsLoaded()) {
    const auto found = std::ranges::find(rows, key, &ListView::Row::key);
    if (found == rows.end()) {
      rows.push_back(list.At(own));
    } else {
      *found = list.At(own);
    }
  }
  KeepMarks(list.Rows(), rows);
  standing.LookAtAll();
  if (ReadsTheSame(rows, list.Rows())) return;
  list.Renew(std::move(rows));
  shown.CurrentSupplierIndex = list.Selected();
  if (list.Selected() < 0) LoadInsteadOfMissing();
}

void FrmMain::LoadInsteadOfMissing() {
  shown.SupplierChanged = false;
  LvwSuppliers.Select(LvwSuppliers.FirstShown());
  LvwSuppliers_ItemClick();
}

}  // namespace tarvolinex
