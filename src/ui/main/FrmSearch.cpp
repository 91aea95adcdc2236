#include "ui/main/FrmSearch.h"

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"

namespace tarvolinex {

FrmSearch::FrmSearch(Run& run, Database& database, ShowContact showContact)
    : Window("FrmSearch", Tr("Contact Search")),
      LblPrompt(*this, "LblPrompt", -1, Tr("Enter contacts name or partial name to search the database for")),
      LblSearch(*this, "LblSearch", 2),
      TxtSearch(*this, "TxtSearch", 2),
      CmdFind(*this, "CmdFind", -1, Tr("&Find First")),
      CmdClose(*this, "CmdClose", -1, Tr("&Close")),
      run_(run),
      database_(database),
      showContact_(std::move(showContact)) {
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
  run_.SetStatus(false, "Searching", 50);
  matches_.clear();
  current_ = 0;
  try {
    matches_ = FindContacts(database_, Trim(TxtSearch(0).Text()), Trim(TxtSearch(1).Text()));
  } catch (const RuntimeError& failure) {
    return run_.ShowError(failure.Description());
  }
  if (matches_.empty()) {
    run_.SetStatus(false, "", -1);
    run_.MessageBox(Tr("No Contacts Found"), Tr("Contract Search"), BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  SetSupplierListView();
  searching_ = true;
  CmdFind.SetCaption(Tr("&Find Next"));
  run_.SetStatus(false, "", -1);
}

void FrmSearch::FindNext() {
  if (++current_ < matches_.size()) return SetSupplierListView();
  run_.MessageBox(Tr("No more contacts found"), Tr("Search"), BoxButtons::Ok, BoxIcon::Information);
  searching_ = false;
  CmdFind.SetCaption(Tr("&Find First"));
}

void FrmSearch::SetSupplierListView() {
  const FoundContact match = matches_[current_];
  showContact_(match.supplier, match.contact);
}

}  // namespace tarvolinex
