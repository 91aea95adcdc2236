// Everything that has gone out: searched, sorted, exported, and what was said.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/Deliveries.h"

namespace tarvolinex {

class FrmSent : public Window {
 public:
  // Goes to the supplier; with a contact, to sending it another one.
  using Open = std::function<void(int supplierId, int contactId)>;
  FrmSent(Run& run, Database& database, Open open);

  Label LblSearch;
  TextBox TxtSearch;  // every word of it is in a row that is shown
  ListView LvwSent;
  TextBox TxtMessage;  // of the selected row
  CommandButton CmdOpen, CmdAgain, CmdSave, CmdClose;

  // Run before the window is shown.
  void Load();

 private:
  struct Listed {
    int supplier, contact;
    std::string folded;
  };
  void Filter();
  void ShowSelected();
  void Leave(bool again);
  void Save();
  const Listed* Selected() const;
  Run& run_;
  Database& database_;
  Open open_;
  std::map<std::string, Listed> listed_;  // by key
};

}  // namespace tarvolinex
