// What of the shown supplier was edited here meets what somebody else has stored meanwhile.
#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Changes.h"
#include "ui/main/FrmConflict.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

// What is edited stays so where the server is gone.
bool FrmMain::StoreShown() {
  const GoesOnWithout server(database);
  std::function<void()> goBack;
  const bool wasNew = shown.CurrentSupplierId == 0;
  try {
    Settle();
    goBack = WayBack(wasNew);
    return StoreAsChosen();
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDatabaseGone) throw;
    if (goBack) {
      shown.WayForth = WayBack(wasNew);
      goBack();
    }
    TellOfLoss(failure);
    return false;
  }
}

// What was about to be stored when the server went, and was stored, is not stored once more; what has been typed since
// is still an edit. Throws RuntimeError while nobody can tell.
void FrmMain::Settle() {
  if (!shown.WayForth) return;
  const bool ticked = forms.FormLinksChanged, contact = contacts.ContactChanged;
  if (database.Plain().UnsureWasStored()) {
    shown.WayForth();
    forms.FormLinksChanged = ticked;
    contacts.ContactChanged = contact;
  }
  shown.WayForth = nullptr;
}

// What brings back which of all that is shown is an edit, and of what; with the supplier's row where it gets one, or
// another.
std::function<void()> FrmMain::WayBack(bool withRow) {
  return [this, id = shown.CurrentSupplierId, fields = fields_.WayBack(), ticks = forms.WayBack(),
          contact = contacts.WayBack(), change = lastChange_, withRow,
          rows = withRow ? LvwSuppliers.Rows() : std::vector<ListView::Row>()] {
    fields();
    ticks();
    contact();
    lastChange_ = change;
    shown.SupplierChanged = true;
    if (!withRow) return;
    // The list may have been filled with another ID, or be empty.
    shown.CurrentSupplierId = id;
    LvwSuppliers.Renew(rows);
    StayAtShownSupplier();
  };
}

void FrmMain::TellOfLoss(const RuntimeError& loss) {
  run.SetStatus(false, "", -1);
  const std::string& why = loss.Description();
  const std::string text = ReadsAsLoaded()
                               ? why
                               : Tr("%1\n\nWhat you have typed stays in the fields. The next command stores "
                                    "it, once the database server answers.",
                                    {why});
  run.MessageBox(text, Tr("Database Connection"), BoxButtons::Ok, BoxIcon::Exclamation);
}

// The user closes the program while the server is gone.
bool FrmMain::LeavesUnstored() {
  if (!database.GivenUp()) return false;
  const std::string question = Tr("What you have typed could not be stored.\n\nClose the program without it?");
  if (run.MessageBox(question, Tr("Database Connection"), BoxButtons::YesNo, BoxIcon::Exclamation) != Answer::Yes) {
    return false;
  }
  shown.SupplierChanged = forms.FormLinksChanged = contacts.ContactChanged = false;
  return true;
}

// The transaction is over while the user chooses; then it is looked at again.
bool FrmMain::StoreAsChosen() {
  for (;;) {
    SupplierRow now;
    std::vector<MetField> met;
    if (StoreUnlessMet(now, met)) {
      standing.LookAt(shown.CurrentSupplierId);
      return true;
    }
    if (!now.Found()) {
      if (!PutBackOrLeave()) return false;
    } else if (contacts.IsMissing()) {
      contacts.PutBackOrForget();
    } else {
      if (!Decide(met)) return false;
      fields_.Decide(now.row, met);
      contacts.Decide(met);
    }
  }
}

// Looks and stores in one transaction. False when the supplier or the contact is gone, or fields meet what somebody
// else has stored.
bool FrmMain::StoreUnlessMet(SupplierRow& now, std::vector<MetField>& met) {
  Transaction transaction(database);
  if (shown.CurrentSupplierId != 0) {
    now = ReadSupplier(database, shown.CurrentSupplierId);
    if (!now.Found() || contacts.IsMissing()) return false;
    met = Meet(now);
    if (!met.empty()) return false;
  }
  SaveSupplier(true);
  forms.SaveSupplierFormLinks(shown.CurrentSupplierId);
  contacts.SaveWithSupplier();
  NoteOwnChange();
  transaction.Commit();
  return true;
}

// Of the shown supplier, with what belongs to it.
void FrmMain::NoteOwnChange() {
  lastChange_ = NoteChange(database, Changed::Supplier, shown.CurrentSupplierId);
  lastChangeOf_ = shown.CurrentSupplierId;
  LblChanged.SetVisible(false);
}

// What is noted after this is somebody else's. It is not read while a supplier is being selected, which has to be fast.
void FrmMain::RememberLastChange() {
  if (lastChangeOf_ == shown.CurrentSupplierId) return;
  lastChangeOf_ = shown.CurrentSupplierId;
  lastChange_ = LastChange(database, Changed::Supplier, lastChangeOf_);
}

void FrmMain::ForgetLastChange() {
  lastChangeOf_ = 0;
  LblChanged.SetVisible(false);
}

// The shown supplier has been changed by another program since it was loaded or stored here.
void FrmMain::ShowWhoChanged() {
  const auto change = LastChange(database, Changed::Supplier, shown.CurrentSupplierId);
  constexpr std::size_t kTimeAt = 11, kTime = 5;
  const bool known = lastChangeOf_ == shown.CurrentSupplierId;
  const bool told = known && change && change != lastChange_ && change->at.size() >= kTimeAt + kTime;
  const std::string text = told ? Tr("Changed by %1 at %2", {change->by, change->at.substr(kTimeAt, kTime)})
                                : Tr("Changed by another program");
  LblChanged.SetCaption(CaptionOf(text));
  LblChanged.SetToolTip(told ? Tr("Changed by %1 at %2", {change->by, change->at}) : text);
  LblChanged.SetVisible(true);
}

std::vector<MetField> FrmMain::Meet(const SupplierRow& now) {
  std::vector<MetField> met = fields_.Meet(now.row);
  for (MetField& field : met) field.words = supplier.WordsOf(field.control) + rateCard.WordsOf(field.control);
  const std::vector<MetField> contact = contacts.Meet();
  met.insert(met.end(), contact.begin(), contact.end());
  return met;
}

bool FrmMain::Decide(std::vector<MetField>& met) {
  return Decide(met,
                Tr("%1 has been changed by another program since it was loaded here, in fields that you have changed "
                   "too. Choose what is to be stored.",
                   {std::string(Trim(supplier.Name().Text()))}));
}

bool FrmMain::Decide(std::vector<MetField>& met, const std::string& about) {
  run.SetStatus(false, "", -1);
  FrmConflict conflict(about, met);
  TheDesktop().ShowModal(conflict);
  return conflict.Confirmed;
}

// What is stored as the default supplier is what this desk has seen of it.
void FrmMain::RememberDefaults() {
  ForeseeDefaultSupplier(database);
  defaults_.RememberRow(ReadDefaultSupplier(database));
  forms.RememberDefaultLinks();
}

void FrmMain::StoreAsDefault() {
  const GoesOnWithout server(database);
  const auto seen = defaults_.WayBack(), ticks = forms.WayBack();
  try {
    StoreDefaultAsChosen();
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDatabaseGone) throw;
    seen();
    ticks();
    TellOfLoss(failure);
  }
}

// The whole rate card becomes the default's; but what somebody else has made of that since it was seen here is chosen.
void FrmMain::StoreDefaultAsChosen() {
  std::set<std::string> theirs;  // columns of the user's choice
  Row now;
  std::vector<MetField> met;
  while (!StoreDefaultUnlessMet(now, met, theirs)) {
    for (MetField& field : met) field.words = rateCard.WordsOf(field.control);
    if (!Decide(met, run.ReplaceAliases(Tr("The default <SUPPLIER> has been changed by another program since it was "
                                           "last seen here. Choose what is to be stored.")))) {
      return;
    }
    for (const MetField& field : met) {
      const std::string column = defaults_.ColumnOf(field);
      theirs.erase(column);
      if (field.choice == MetField::Choice::Theirs) theirs.insert(column);
    }
    defaults_.RememberRow(now);
  }
}

bool FrmMain::StoreDefaultUnlessMet(Row& now, std::vector<MetField>& met, const std::set<std::string>& theirs) {
  Transaction transaction(database);
  now = ReadDefaultSupplier(database);
  met = defaults_.MeetAll(now);
  if (!met.empty()) return false;
  SaveSupplier(false);
  UpdateDefaultSupplier(database, now, theirs);
  // The default's forms are only replaced by ticks that somebody has set.
  forms.FormLinksChanged = forms.TicksChanged;
  forms.SaveSupplierFormLinks(0);
  defaults_.RememberRow(ReadDefaultSupplier(database));
  transaction.Commit();
  return true;
}

// Somebody else has removed the supplier that is edited here. False when the user lets it go: what was typed is
// forgotten with it, and another one is shown.
bool FrmMain::PutBackOrLeave() {
  run.SetStatus(false, "", -1);
  const std::string question =
      Tr("%1 has been removed by another program while you were changing it.\n\nPut it back with what you typed?",
         {fields_.LoadedRow().Text("CompanyName")});
  if (run.MessageBox(question, Tr("Removed Meanwhile"), BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes) {
    PutSupplierBack(database, fields_.LoadedRow(), contacts.LoadedContacts(), forms.LoadedLinks());
    SetNote("");
    return true;
  }
  shown.SupplierChanged = forms.FormLinksChanged = contacts.ContactChanged = false;
  LoadStartLists();
  return false;
}

}  // namespace tarvolinex
