// Asks how the calculator travels.
#pragma once

#include "controls/Controls.h"
#include "core/Run.h"
#include "distribute/Email.h"
#include "ui/main/SendPanel.h"

namespace tarvolinex {

// Starts with the way and the instructions of the panel's last send, before the first one with the link where the web
// server takes it; asks that server, which is given a few seconds. The link says what its readers will see, or what is
// missing; what is confirmed goes into the sending, and the
// panel remembers it.
class frmSendCalc : public Window {
 public:
  frmSendCalc(Run& run, Sending& sending, SendPanel& panel);

  Label lblSendCalc;
  TextBox TxtEmails;                      // the recipients, one a line
  ControlArray<OptionButton> OpFileType;  // by send type
  ControlArray<Label> LblFileType;        // what mail providers do with each, and how large the message gets
  CheckBox ChkInstructions;
  ControlArray<CommandButton> cmdaction;  // send, cancel, help

  bool SendConfirmed = false;

 private:
  std::string SizeText(int sendType) const;
  void OfferLink();
  void cmdaction_Click(int button);
  Run& run_;
  Sending& sending_;
  SendPanel& panel_;
};

}  // namespace tarvolinex
