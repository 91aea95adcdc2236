// The organisation's own details: name, address and, above all, the e-mail address that responses go to.
#pragma once

#include <functional>

#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FrmLeaseOrgDetails : public Window {
 public:
  // saved: the preferences have been stored.
  FrmLeaseOrgDetails(Run& run, std::function<void()> saved);

  // Fills the boxes; Cancel is free only when a name and an e-mail address are stored already.
  void Load();

  ControlArray<Label> LblLeaseOrg;
  ControlArray<TextBox> TxtLeaseOrg;
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void BuildFormValues();
  void BuildCalcOptions();
  void TxtLeaseOrg_Change();
  bool Checked();
  void cmdaction_Click(int button);
  Run& run_;
  std::function<void()> saved_;
};

}  // namespace tarvolinex
