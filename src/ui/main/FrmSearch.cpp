#include "ui/main/FrmSearch.h"

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

FrmSearch::FrmSearch()
    : Window("FrmSearch", Tr("Contact Search")),
      LblPrompt(*this, "LblPrompt", -1, Tr("Enter contacts name or partial name to search the database for")),
      LblSearch(*this, "LblSearch", 2),
      TxtSearch(*this, "TxtSearch", 2),
      CmdFind(*this, "CmdFind", -1, Tr("&Find First")),
      CmdClose(*this, "CmdClose", -1, Tr("&Close")) {
  LblSearch(0).SetCaption(Tr("F&irst Name"));
  LblSearch(1).SetCaption(Tr("&Surname"));
  CmdFind.SetEnabled(false);
  CmdFind.Click = [this] { CmdFind_Click(); };
  CmdClose.Click = [this] { Close(); };
  for (int i = 0; i < 2; ++i) {
    TextBox& box = TxtSearch(i);
    box.Change = [this] { EndSearch(); };
    box.Validate = [&box] { box.SetText(EscapeQuotes(box.Text())); };
    box.KeyUp = [this](Key key) {
      if (key == Key::Return) CmdFind.Press();
    };
  }
  KeyUp = [this](Key key) {
    if (key == Key::Escape) Close();
  };
}

void FrmSearch::EndSearch() {
  searching_ = false;
  CmdFind.SetEnabled(true);
  CmdFind.SetCaption(Tr("&Find First"));
}

void FrmSearch::CmdFind_Click() {
  if (searching_) return FindNext();
  if (Trim(TxtSearch(0).Text() + TxtSearch(1).Text()).empty()) return;
  SubDoContactSearch();
}

void FrmSearch::SubDoContactSearch() {
  SetStatus(false, "Searching", 50);
  const auto wanted = [this](int box) { return EscapeQuotes(Trim(TxtSearch(box).Text())); };
  Recordset found;
  OpenRecordset(FillStatement(statements::kFindContacts, {{"<FIRSTNAME>", wanted(0)}, {"<SURNAME>", wanted(1)}}),
                found);
  matches_.clear();
  current_ = 0;
  try {
    for (; !found.EndOfFile(); found.MoveNext()) {
      matches_.push_back(
          {static_cast<int>(ValueNumber(found.Field("Supplierid"))), static_cast<int>(ValueNumber(found.Field("id")))});
    }
  } catch (const RuntimeError& failure) {
    return ShowError(failure.Description());
  }
  if (matches_.empty()) {
    SetStatus(false, "", -1);
    TheDesktop().MessageBox(Tr("No Contacts Found"), Tr("Contract Search"), BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  SetSupplierListView();
  searching_ = true;
  CmdFind.SetCaption(Tr("&Find Next"));
  SetStatus(false, "", -1);
}

void FrmSearch::FindNext() {
  if (++current_ < matches_.size()) return SetSupplierListView();
  TheDesktop().MessageBox(Tr("No more contacts found"), Tr("Search"), BoxButtons::Ok, BoxIcon::Information);
  searching_ = false;
  CmdFind.SetCaption(Tr("&Find First"));
}

void FrmSearch::SetSupplierListView() {
  MainWindow& form = MainForm();
  const Match match = matches_[current_];
  const std::string key = "ID" + std::to_string(match.supplier);
  form.TabMain.SelectTab(kTabDetails);
  // A new supplier that is stored now fills the list anew.
  SavePendingChanges();
  const std::string shown = "ID" + std::to_string(CurrentSupplierId);
  if (form.LvwSuppliers.Find(key) < 0) LoadSupplierList(false);  // another program has added it
  const int row = form.LvwSuppliers.Find(key);
  if (row < 0) {
    ShowError(ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
    // The list was filled anew: the supplier that is shown stays selected, or the one that is selected is shown.
    if (const int before = form.LvwSuppliers.Find(shown); before >= 0) form.LvwSuppliers.Select(before);
    if (form.LvwSuppliers.ItemClick) form.LvwSuppliers.ItemClick();
    return;
  }
  if (form.LvwSuppliers.At(row).hidden) form.TxtFilter.SetText("");
  form.LvwSuppliers.Select(row);
  if (form.LvwSuppliers.ItemClick) form.LvwSuppliers.ItemClick();
  SelectContact(match.contact);
}

}  // namespace tarvolinex
