// How mail leaves this machine.
#pragma once

#include "platform/Controls.h"
#include "platform/MailProfiles.h"

namespace tarvolinex {

// Edits the mail profiles; the one that is shown when OK is pressed becomes the default.
class FrmMailSettings : public Window {
 public:
  FrmMailSettings();

  ControlArray<Label> LblMail;  // captions of the boxes below, in their order; then a hint
  ComboBox CboProfile;          // "no profile", the profiles, "new profile"
  TextBox TxtName;
  ComboBox CboTransport;
  TextBox TxtServer;
  ComboBox CboSecurity;
  TextBox TxtUser, TxtPasswordCommand, TxtFrom, TxtFolder;
  CommandButton CmdTest;
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void FillProfiles();
  void CboProfile_Click();
  void CboTransport_Click();
  void CmdTest_Click();
  void cmdaction_Click(int button);
  bool UsesProfile() const { return CboProfile.ListIndex() > 0; }
  MailProfile Entered() const;
  // Names what is missing and goes there.
  bool Checked();
};

}  // namespace tarvolinex
