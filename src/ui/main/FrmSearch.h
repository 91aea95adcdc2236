// Finds a contact by name and goes to its supplier.
#pragma once

#include <functional>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/Contacts.h"

namespace tarvolinex {

class FrmSearch : public Window {
 public:
  using ShowContact = std::function<void(int supplierId, int contactId)>;
  // showContact: goes to what was found.
  FrmSearch(Run& run, Database& database, ShowContact showContact);

  Label LblPrompt;
  ControlArray<Label> LblSearch;
  ControlArray<TextBox> TxtSearch;  // first name, surname
  CommandButton CmdFind, CmdClose;

 private:
  void CmdFind_Click();
  void FindNext();
  void SubDoContactSearch();
  void SetSupplierListView();
  void EndSearch();

  Run& run_;
  Database& database_;
  ShowContact showContact_;
  // Read to their end at once: while the dialog stands on one of them, other programs can write to the database.
  std::vector<FoundContact> matches_;
  std::size_t current_ = 0;  // the match that is shown
  bool searching_ = false;
};

}  // namespace tarvolinex
