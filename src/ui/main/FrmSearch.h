// Finds a contact by name and goes to its supplier.
#pragma once

#include "platform/Controls.h"
#include "platform/Database.h"

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

  Recordset matches_;
  bool searching_ = false;
};

}  // namespace tarvolinex
