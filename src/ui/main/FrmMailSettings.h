// How mail leaves this machine.
#pragma once

#include <string>

#include "controls/Controls.h"
#include "core/Run.h"
#include "platform/network/MailProfiles.h"

namespace tarvolinex {

// Edits the mail profiles; the one that is shown when OK is pressed becomes the default. Only what matters for the
// chosen way is visible. A password goes into the desktop's key store and nowhere else.
class FrmMailSettings : public Window {
 public:
  explicit FrmMailSettings(Run& run);

  static constexpr int kWebServerNote = 2, kWebSecretCaption = 12;  // of LblNote and LblMail
  ControlArray<Label> LblMail;                                      // captions of the boxes below, in their order
  ComboBox CboProfile;                                              // "no profile", the profiles, "new profile"
  CommandButton CmdRemove;
  TextBox TxtName;
  ComboBox CboTransport;
  TextBox TxtFrom;
  ComboBox CboProvider;  // "my own server", the known ones
  TextBox TxtServer;
  ComboBox CboSecurity;
  TextBox TxtUser, TxtPassword;  // the password as it is typed now; empty when the one that is kept stays
  CheckBox ChkCommand;           // a command prints the password
  TextBox TxtPasswordCommand, TxtFolder;
  ControlArray<Label> LblNote;  // about the way or the provider, about the password, about the web server
  Label LblWebServer;           // which one takes what is sent as a link, and as whom
  TextBox TxtWebSecret;         // as it is typed now; empty when the one that is kept stays
  CommandButton CmdWebTest;
  CommandButton CmdTest;
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void WireBoxes();
  void FillProfiles();
  void CmdRemove_Click();
  void SendTestMessage(const MailProfile& profile);
  // While the test message travels, only Cancel and Escape act: they stop it.
  void SetSending(bool sending);
  void CboProfile_Click();
  void CmdTest_Click();
  void cmdaction_Click(int button);
  bool UsesProfile() const { return CboProfile.ListIndex() > 0; }
  bool IsNew() const { return CboProfile.ListIndex() == static_cast<int>(CboProfile.Items().size()) - 1; }
  bool UsesServer() const;
  MailProfile Entered() const;
  void ShowProfile(const MailProfile& profile);
  void ShowRows();
  void ShowNotes();
  // Names what is missing and goes there.
  bool Checked();
  bool PasswordChecked(const MailProfile& profile);
  // Says why and goes there; false.
  bool Refuse(Control& box, const std::string& why);
  // Stores what is shown; a profile that was given another name leaves the old one.
  void Store();
  bool MayLeaveProfile();

  // The address that mail comes from, typed or the organisation's.
  std::string SenderAddress() const;
  // The provider of the sender's address, when no server has been entered yet.
  void SuggestProvider();
  void CboProvider_Click();

  // Asks the key store what it has for the user at the server.
  void LookForPassword();
  // Takes the profile's password out of the key store unless another profile uses it. What cannot be taken away stays.
  void ForgetUnusedPassword(const MailProfile& profile);
  // False, after a report, when the key store does not take what was typed.
  bool KeepPassword(const MailProfile& profile);

  // The web server's part of the window, which the profiles have nothing to do with.
  void ShowWebServer();
  void CmdWebTest_Click();
  // False, after a report, when the key store does not take the secret that was typed.
  bool KeepWebSecret();

  std::string ProfilesPath() const;

  Run& run_;
  MailProfile shown_;      // as it stands in the file
  MailProfile untouched_;  // as it was when it came up here
  int shownIndex_ = -1;    // its entry of CboProfile
  bool leaving_ = false;   // the list's choice goes there and back
  bool filling_ = false;   // the program fills the boxes
  bool sending_ = false;
  bool kept_ = false;       // the key store has a password for this user
  std::string noKeyStore_;  // why there is none that answers; empty when there is one
};

}  // namespace tarvolinex
