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
  CommandButton CmdRemove;
  TextBox TxtName;
  ComboBox CboTransport;
  TextBox TxtServer;
  ComboBox CboSecurity;
  TextBox TxtUser, TxtPasswordCommand, TxtFrom, TxtFolder;
  CommandButton CmdTest;
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void FillProfiles();
  void CmdRemove_Click();
  void SendTestMessage(const MailProfile& profile);
  // While the test message travels, only Cancel and Escape act: they stop it.
  void SetSending(bool sending);
  void CboProfile_Click();
  void CboTransport_Click();
  void CmdTest_Click();
  void cmdaction_Click(int button);
  bool UsesProfile() const { return CboProfile.ListIndex() > 0; }
  bool IsNew() const { return CboProfile.ListIndex() == static_cast<int>(CboProfile.Items().size()) - 1; }
  MailProfile Entered() const;
  // Names what is missing and goes there.
  bool Checked();
  // Stores what is shown; a profile that was given another name leaves the old one.
  void Store();

  bool MayLeaveProfile();

  MailProfile shown_;     // as it stands in the file
  int shownIndex_ = -1;   // its entry of CboProfile
  bool leaving_ = false;  // the list's choice goes there and back
  bool sending_ = false;
};

}  // namespace tarvolinex
