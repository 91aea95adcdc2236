// Finds a contact by name and goes to its supplier.
#pragma once

#include <vector>

#include "controls/Controls.h"

namespace tarvolinex {

class FrmSearch : public Window {
 public:
  FrmSearch();

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

  struct Match {
    int supplier, contact;  // their IDs
  };
  // Read to their end at once: while the dialog stands on one of them, other programs can write to the database.
  std::vector<Match> matches_;
  std::size_t current_ = 0;  // the match that is shown
  bool searching_ = false;
};

}  // namespace tarvolinex
