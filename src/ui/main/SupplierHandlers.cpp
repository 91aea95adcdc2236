// The supplier list and the supplier's own fields.
#include "calc/QuotePanel.h"
#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorFolder.h"
#include "store/Contacts.h"
#include "store/Statements.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

void FrmMain::WireSuppliers() {
  LvwSuppliers.ItemClick = [this] { LvwSuppliers_ItemClick(); };
  LvwSuppliers.ColumnClick = [this](int column) { LvwSuppliers_ColumnClick(column); };
  LvwSuppliers.DblClick = [this] { Preview(); };
  TxtFilter.Change = [this] { TxtFilter_Change(); };
  TxtFilter.KeyUp = [this](Key key) {
    if (key == Key::Return || key == Key::Down) LvwSuppliers.SetFocus();
  };
  LvwSuppliers.KeyUp = [this](Key key) {
    if (key != Key::Delete) return;
    ForgetUneditedFields();
    SupplierCommand(1);
  };
  for (int i = 0; i < kSupplierFields; ++i) {
    TextBox& field = supplier.TxtSupplier(i);
    field.Change = [this, i] { TxtSupplier_Change(i); };
    field.Validate = [&field] { field.SetText(EscapeQuotes(field.Text())); };
    field.LostFocus = [this, i] { TxtSupplier_LostFocus(i); };
  }
}

void FrmMain::LvwSuppliers_ItemClick() {
  const std::string chosen = LvwSuppliers.Selected() < 0 ? std::string() : LvwSuppliers.At(LvwSuppliers.Selected()).key;
  if (!SupplierChanged) LoadingSupplier = true;
  SavePendingChanges();
  // A new supplier that has been stored is selected in a list filled anew.
  if (const int row = LvwSuppliers.Find(chosen); row >= 0) LvwSuppliers.Select(row);
  LoadSupplier();
  CurrentSupplierIndex = LvwSuppliers.Selected();
  // A supplier that is gone has been reported and the list filled anew: the fields follow it.
  if (CurrentSupplierIndex >= 0 && IdOfKey(LvwSuppliers.At(CurrentSupplierIndex).key) != CurrentSupplierId) {
    LoadSupplier();
  }
  formTicksChanged_ = false;
  if (!loading) RecalculateQuote();
  // Everything is blocked until it has a name, so the user is taken to it.
  if (CurrentSupplierId != 0 && Nameless()) {
    TabMain.SelectTab(kTabDetails);
    supplier.TxtSupplier(kSupplierName).SetFocus();
  }
  LoadingSupplier = false;
}

void FrmMain::LvwSuppliers_ColumnClick(int column) {
  SetStatus(false, "Sorting", 50);
  LvwSuppliers.SortAscending = LvwSuppliers.SortColumn != column || !LvwSuppliers.SortAscending;
  LvwSuppliers.SortColumn = column;
  LvwSuppliers.Sort([] { TheDesktop().Repaint(); });
  CurrentSupplierIndex = LvwSuppliers.Selected();
  SetStatus(false, "", -1);
}

void FrmMain::TxtFilter_Change() {
  const std::string wanted = FoldCase(Trim(TxtFilter.Text()));
  if (wanted.empty()) {
    LvwSuppliers.SetFilter(nullptr);
    return LvwSuppliers.Select(LvwSuppliers.Selected());  // scrolled to again
  }
  LvwSuppliers.NoMatchText = ReplaceAliases("No <SUPPLIER> matches");
  LvwSuppliers.SetFilter([wanted, people = SuppliersOfContacts(wanted)](const ListView::Row& row) {
    constexpr std::size_t kTown = 3, kPostCode = 5;
    const auto holds = [&](const std::string& text) { return FoldCase(text).find(wanted) != std::string::npos; };
    return row.key == "ID0" || holds(row.text) || holds(row.cells.at(kTown)) || holds(row.cells.at(kPostCode)) ||
           people.contains(IdOfKey(row.key));
  });
  // Whatever acts on the selected supplier acts on one that is seen.
  const int shown = LvwSuppliers.Selected();
  if (shown >= 0 && !LvwSuppliers.At(shown).hidden) return;
  const int first = LvwSuppliers.FirstShown();
  if (first < 0 || LvwSuppliers.At(first).hidden) return;
  LvwSuppliers.Select(first);
  LvwSuppliers_ItemClick();
}

// A supplier that is only shown counts as changed, because loading fills its fields. Keys that act on it need no second
// press for that.
void FrmMain::ForgetUneditedFields() {
  if (ReadsAsLoaded()) SupplierChanged = false;
}

void FrmMain::SupplierCommand(int action) {
  const bool pending = SupplierChanged || FormLinksChanged;
  if (action == 0) {
    SavePendingChanges();
    const bool nothingToStore = CurrentSupplierId == 0 && Nameless();
    if (pending && !nothingToStore) return;
    SaveContact();  // while it still is the shown supplier's
    CurrentSupplierId = 0;
    LoadingSupplier = true;
    NewSupplier();
    LoadingSupplier = false;
    formTicksChanged_ = false;
    return;
  }
  if (action == 1 && !pending) {
    RemoveSupplier();
    return LvwSuppliers_ItemClick();
  }
  SupplierChanged = FormLinksChanged = false;
  if (const int row = LvwSuppliers.Find("ID0"); row >= 0 && row == LvwSuppliers.Selected()) {
    ContactChanged = false;
    LvwSuppliers.Remove(row);
    LvwSuppliers.Select(LvwSuppliers.FirstShown());
  }
  EnableCommands(false);
  LvwSuppliers_ItemClick();
}

void FrmMain::TxtSupplier_Change(int field) {
  const bool changedBefore = SupplierChanged;
  SupplierChanged = true;
  const std::string& name = supplier.TxtSupplier(kSupplierName).Text();
  LblCompany.SetCaption("*" + CaptionOf(name) + "*");
  if (field != kSupplierName) return;
  EnableCommands(Trim(name).empty());
  if (!changedBefore && LoadingSupplier) return;
  const std::string shown = name.empty() ? Tr("<NEW>") : name;
  LvwSuppliers.SetRowText(CurrentSupplierIndex, shown);
  if (!LoadingSupplier) SetCaption("Tarvolinex - " + shown);
}

void FrmMain::TxtSupplier_LostFocus(int field) {
  if (field != kSupplierName || !Nameless() || KeepsFocus()) return;
  TheDesktop().MessageBox(ReplaceAliases("You must enter a <SUPPLIER> name"), "", BoxButtons::Ok, BoxIcon::None);
  supplier.TxtSupplier(kSupplierName).SetFocus();
}

}  // namespace tarvolinex
