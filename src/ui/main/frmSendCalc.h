// Asks how the calculator travels.
#pragma once

#include "controls/Controls.h"

namespace tarvolinex {

// Sets `SendType`, `SendConfirmed` and `IncludeInstructions`.
class frmSendCalc : public Window {
 public:
  frmSendCalc();

  Label lblSendCalc;
  TextBox TxtEmails;                      // the ticked contacts, one a line
  ControlArray<OptionButton> OpFileType;  // by send type
  ControlArray<Label> LblFileType;        // what mail providers do with each, and how large the message gets
  CheckBox ChkInstructions;
  ControlArray<CommandButton> cmdaction;  // send, cancel, help

 private:
  void cmdaction_Click(int button);
};

}  // namespace tarvolinex
