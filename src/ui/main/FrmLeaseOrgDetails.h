// The organisation's own details: name, address and, above all, the e-mail address that responses go to.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

// What the window has a box for.
struct OrganisationDetail {
  FixedText CalculatorPreferencesRecord::*field;
  const char* caption;  // with its mnemonic; empty where the box above has it
  const char* words;    // what it is called where it stands alone; empty = as the caption
  std::string Words() const;
};
std::span<const OrganisationDetail> OrganisationDetails();

class FrmLeaseOrgDetails : public Window {
 public:
  // agree: what is about to be stored, which it may change; false keeps the window open and stores nothing.
  using Agree = std::function<bool(CalculatorPreferencesRecord& edited)>;
  // saved: the preferences have been stored.
  FrmLeaseOrgDetails(Run& run, std::function<void()> saved, Agree agree = {});

  // Fills the boxes; Cancel is free only when a name and an e-mail address are stored already.
  void Load();

  ControlArray<Label> LblLeaseOrg;
  ControlArray<TextBox> TxtLeaseOrg;
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void BuildFormValues();
  CalculatorPreferencesRecord BuildCalcOptions() const;
  void TxtLeaseOrg_Change();
  bool Checked();
  void cmdaction_Click(int button);
  Run& run_;
  std::function<void()> saved_;
  Agree agree_;
};

}  // namespace tarvolinex
