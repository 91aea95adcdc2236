// What of the shown supplier is stored, removed and brought back.
#include <algorithm>
#include <utility>

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Changes.h"
#include "store/Tables.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

// The shown row follows its fields without a reload.
void FrmMain::RefreshRow() {
  for (Control* control : Controls()) {
    const auto* box = dynamic_cast<const TextBox*>(control);
    if (!box || GetTagValue(box->Tag(), "RS") != "SUPPLIER") continue;
    const std::string column = GetTagValue(box->Tag(), "FIELDNAME");
    const std::string text(Trim(box->Text()));
    if (EqualNoCase(column, "CompanyName")) ShowSupplierName();
    for (std::size_t i = 1; i < LvwSuppliers.Columns().size(); ++i) {
      if (!EqualNoCase(GetTagValue(LvwSuppliers.Columns()[i].tag, "FIELDNAME"), column)) continue;
      LvwSuppliers.SetCell(shown.CurrentSupplierIndex, static_cast<int>(i) - 1, text);
    }
  }
}

// The quote goes on with the rates that have just been stored; what the user typed last stays in force.
void FrmMain::UseStoredRateCard() {
  const SupplierRow row = ReadSupplier(database, shown.CurrentSupplierId);
  if (!row.Found()) return run.ShowError(run.ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
  fields_.TakeStored(row.row);
  fields_.RememberLoadedFields(row.row);
  UseRateCard(row);
}

void FrmMain::UseRateCard(const SupplierRow& row) {
  const RateCard before = run.SupplierCalcSettings;
  const bool faultBefore = !shown.RateCardFault.empty();
  UseSupplierSettings(row);
  quote.ApplySupplierOptions();
  const bool same = static_cast<const RateCard&>(run.SupplierCalcSettings) == before;
  if (!same || faultBefore || !shown.RateCardFault.empty() || quote.Kept()) quote.RecalculateShownQuote();
}

// The new supplier's row is selected by its new ID, and its ticks survive the refilling of the forms list.
void FrmMain::ShowInsertedSupplier() {
  forms.RefreshFormsList();
  LoadSupplierList(true);
  const int selected = LvwSuppliers.Selected();
  if (selected < 0) throw RuntimeError(kNoCurrentRecord, Tr("the supplier list is empty"));
  if (LvwSuppliers.At(selected).hidden) TxtFilter.SetText("");
  shown.CurrentSupplierIndex = LvwSuppliers.Selected();
  shown.CurrentSupplierId = IdOfKey(LvwSuppliers.At(shown.CurrentSupplierIndex).key);
  ShowSupplierName();
}

void FrmMain::StoreFields(bool asSupplier) {
  const FieldLists fields = fields_.Collect(asSupplier);
  if (!asSupplier) return ReplaceDefaultSupplier(database, fields);
  if (shown.CurrentSupplierId != 0) {
    UpdateSupplier(database, shown.CurrentSupplierId, fields);
  } else {
    InsertSupplier(database, fields);
    ShowInsertedSupplier();
  }
  UseStoredRateCard();
  RefreshRow();
}

void FrmMain::SaveSupplier(bool asSupplier) {
  if (asSupplier && !shown.SupplierChanged) return;
  run.SetStatus(false, run.ReplaceAliases("Saving <SUPPLIER>"), 40);
  try {
    StoreFields(asSupplier);
    shown.SupplierChanged = false;
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDatabaseGone) throw;
    run.ShowError(run.ReplaceAliases("Saving <SUPPLIER> Failed"));
  }
  run.SetStatus(false, "", -1);
  EnableCommands(false);
}

bool FrmMain::ReadsAsLoaded() const {
  return shown.CurrentSupplierId != 0 && !forms.FormLinksChanged && !contacts.ContactChanged && !fields_.Edited();
}

bool FrmMain::SavePendingChanges() {
  run.SetStatus(false, run.ReplaceAliases("Saving <SUPPLIER>"), 20);
  if (!Nameless() && !TabMain.Tabs()[kTabSettings].enabled) {
    for (const int tab : {kTabQuote, kTabSettings, kTabSend}) TabMain.SetTabEnabled(tab, true);
  }
  const bool stored = !NeedsStoring() || StoreShown();
  run.SetStatus(false, "", -1);
  return stored;
}

bool FrmMain::NeedsStoring() {
  if (database.ReadOnly()) shown.SupplierChanged = false;
  // A supplier without a name is never stored.
  if (shown.LoadingSupplier || !shown.SupplierChanged || (Nameless() && shown.CurrentSupplierId == 0)) return false;
  // Loading marks the supplier as changed too; fields that read as they were loaded need no writing.
  if (!ReadsAsLoaded()) return true;
  shown.SupplierChanged = false;
  return false;
}

// A supplier that is only shown counts as changed, because loading fills its fields. Keys that act on it need no second
// press for that.
void FrmMain::ForgetUneditedFields() {
  if (ReadsAsLoaded()) shown.SupplierChanged = false;
}

void FrmMain::SupplierCommand(int action) {
  const bool pending = shown.SupplierChanged || forms.FormLinksChanged;
  if (action == 0) {
    if (!SavePendingChanges()) return;
    const bool nothingToStore = shown.CurrentSupplierId == 0 && Nameless();
    // A contact is stored while the supplier still is its own.
    if ((pending && !nothingToStore) || !contacts.SaveContact()) return;
    shown.CurrentSupplierId = 0;
    shown.LoadingSupplier = true;
    NewSupplier();
    shown.LoadingSupplier = false;
    forms.TicksChanged = false;
    return;
  }
  if (action == 1 && !pending) {
    RemoveSupplier();
    return LvwSuppliers_ItemClick();
  }
  shown.SupplierChanged = forms.FormLinksChanged = false;
  if (const int row = LvwSuppliers.Find("ID0"); row >= 0 && row == LvwSuppliers.Selected()) {
    contacts.ContactChanged = false;
    LvwSuppliers.Remove(row);
    LvwSuppliers.Select(LvwSuppliers.FirstShown());
  }
  EnableCommands(false);
  LvwSuppliers_ItemClick();
}

void FrmMain::TxtSupplier_Changed(int field, bool changedBefore) {
  const std::string& name = supplier.Name().Text();
  LblCompany.SetCaption("*" + CaptionOf(name) + "*");
  if (field != kSupplierName) return;
  EnableCommands(Trim(name).empty());
  if (!changedBefore && shown.LoadingSupplier) return;
  const std::string text = name.empty() ? Tr("<NEW>") : name;
  LvwSuppliers.SetRowText(shown.CurrentSupplierIndex, text);
  if (!shown.LoadingSupplier) SetCaption("Tarvolinex - " + text);
}

void FrmMain::RemoveSupplier() {
  if (LvwSuppliers.Count() < 2) {
    TheDesktop().MessageBox(Tr("You can not delete the last supplier."), run.ReplaceAliases("<SUPPLIER> &  Delete"),
                            BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  // What is named is what is removed: the supplier that is shown, wherever the list stands.
  const int row = LvwSuppliers.Find("ID" + std::to_string(shown.CurrentSupplierId));
  if (row < 0) return;
  if (LvwSuppliers.Selected() != row) LvwSuppliers.Select(row);
  const std::string question = run.ReplaceAliases("Are you sure you want to delete this <SUPPLIER>:") + "\n" +
                               LvwSuppliers.At(row).text + "\n" + Tr("Continue?");
  const auto answer =
      TheDesktop().MessageBox(question, run.ReplaceAliases("Remove <SUPPLIER>"), BoxButtons::YesNo, BoxIcon::Question);
  if (answer != Answer::Yes) return;
  run.SetStatus(false, run.ReplaceAliases("Removing <SUPPLIER>"), 20);
  try {
    OfferUndo(DeleteSupplier(database, shown.CurrentSupplierId));
    shown.SupplierChanged = false;
    // The contacts are gone with the supplier; what was typed for one of them has no owner any more.
    contacts.ContactChanged = false;
    LoadSupplierList(false);
  } catch (const RuntimeError&) {
    run.ShowError(run.ReplaceAliases("Delete <SUPPLIER> Failed"));
  }
  run.SetStatus(false, "", -1);
}

void FrmMain::OfferUndo(RemovedRows removed) {
  Menu& menu = menus.MnuUndoRemove;
  Removed = std::move(removed);
  const bool changes = Removed.supplier == 0 && !Removed.statements.empty();
  menu.SetTag(std::string("ALAIS=") + (changes                ? Marked("&Undo Import or Changes")
                                       : Removed.contact == 0 ? "&Undo Remove <SUPPLIER>"
                                                              : "&Undo Remove Contact"));
  menu.SetCaption(run.ReplaceAliases(GetTagValue(menu.Tag(), "ALAIS")));
  menu.SetEnabled(!Removed.statements.empty());
}

// Another program has put it back first.
bool FrmMain::IsThereAgain(const RemovedRows& removed) {
  if (removed.contact != 0) return ReadContact(database, removed.contact, removed.supplier).Found();
  return removed.supplier != 0 && SupplierIsStored(database, removed.supplier);
}

// What others have stored since may be in the rows that get their old values.
bool FrmMain::MayUndo(const RemovedRows& removed) {
  if (removed.told.empty() || removed.told == database.Plain().Told()) return true;
  constexpr std::size_t kNamed = 5;
  const std::vector<std::string> changed = ChangedSince(database, removed);
  if (changed.empty()) return true;
  std::string names;
  for (std::size_t i = 0; i < std::min(kNamed, changed.size()); ++i) names += "\n" + changed[i];
  if (changed.size() > kNamed) names += "\n...";
  return run.MessageBox(
             Tr("Another program has changed these since, and what it has stored there would be lost:\n%1\n\n"
                "Undo all the same?",
                {names}),
             Tr("Undo Import or Changes"), BoxButtons::YesNo, BoxIcon::Exclamation) == Answer::Yes;
}

int FrmMain::UndoRemove() {
  const RemovedRows removed = Removed;
  const int wanted = removed.supplier != 0 ? removed.supplier : shown.CurrentSupplierId;
  if (removed.statements.empty() || !MayUndo(removed)) return 0;
  OfferUndo({});
  if (IsThereAgain(removed)) {
    run.MessageBox(Tr("It has been put back by another program"), "", BoxButtons::Ok, BoxIcon::Information);
    LoadSupplierList(false);
    return removed.contact;
  }
  if (removed.contact != 0 && !SupplierIsStored(database, removed.supplier)) {
    run.ShowError(run.ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
    return 0;
  }
  Transaction transaction(database);
  RestoreRows(database, removed);
  if (removed.supplier != 0) NoteChange(database, Changed::Supplier, removed.supplier);
  transaction.Commit();
  if (removed.contact == 0) LoadSupplierList(false);
  const int row = LvwSuppliers.Find("ID" + std::to_string(wanted));
  if (row >= 0) LvwSuppliers.Select(row);
  return removed.contact;
}

}  // namespace tarvolinex
