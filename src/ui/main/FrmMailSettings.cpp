#include "ui/main/FrmMailSettings.h"

#include <array>

#include "core/Globals.h"
#include "core/Reports.h"
#include "distribute/Email.h"
#include "platform/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::array<const char*, 10> kCaptions = {
    Marked("&Profile"),
    Marked("&Name"),
    Marked("&Transport"),
    Marked("Ser&ver"),
    Marked("Se&curity"),
    Marked("&User"),
    Marked("Pass&word command"),
    Marked("&From"),
    Marked("Fo&lder"),
    Marked("The password itself is never stored: the command prints it when a message is sent, for example "
           "\"secret-tool lookup mail lease\". Server is HOST or HOST:PORT. From and Folder may stay empty.")};
constexpr const char* kTitle = Marked("E-mail Settings");

}  // namespace

FrmMailSettings::FrmMailSettings()
    : Window("FrmMailSettings", Tr(kTitle)),
      LblMail(*this, "LblMail", static_cast<int>(kCaptions.size())),
      CboProfile(*this, "CboProfile"),
      CmdRemove(*this, "CmdRemove", -1, Tr("&Remove")),
      TxtName(*this, "TxtName"),
      CboTransport(*this, "CboTransport"),
      TxtServer(*this, "TxtServer"),
      CboSecurity(*this, "CboSecurity"),
      TxtUser(*this, "TxtUser"),
      TxtPasswordCommand(*this, "TxtPasswordCommand"),
      TxtFrom(*this, "TxtFrom"),
      TxtFolder(*this, "TxtFolder"),
      CmdTest(*this, "CmdTest"),
      cmdaction(*this, "cmdaction", 2) {
  for (std::size_t i = 0; i < kCaptions.size(); ++i) LblMail(static_cast<int>(i)).SetCaption(Tr(kCaptions.at(i)));
  for (const std::string& transport : {Tr("Mail server (SMTP)"), Tr("Local sendmail"), Tr("Outbox folder")})
    CboTransport.Add(transport);
  for (const std::string& security : {std::string("STARTTLS"), std::string("TLS"), Tr("None")})
    CboSecurity.Add(security);
  CmdTest.SetCaption(Tr("Send a test &message to myself"));
  CmdTest.Click = [this] { CmdTest_Click(); };
  CmdRemove.SetToolTip(Tr("Remove this profile"));
  CmdRemove.Click = [this] { CmdRemove_Click(); };
  cmdaction(0).SetCaption(Tr("&OK"));
  cmdaction(1).SetCaption(Tr("Cancel"));
  for (int i = 0; i < 2; ++i) cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  CboProfile.Click = [this] { CboProfile_Click(); };
  CboTransport.Click = [this] { CboTransport_Click(); };
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
  MayClose = [this] {
    StopRequested = true;
    return !sending_;
  };
  FillProfiles();
}

void FrmMailSettings::FillProfiles() {
  shownIndex_ = -1;
  CboProfile.Clear();
  CboProfile.Add(Tr("No profile: the local sendmail, else the outbox"));
  int chosen = 0;
  try {
    const std::string used = GetDefaultMailProfile();
    for (const std::string& name : MailProfileNames(MailProfilesPath())) {
      CboProfile.Add(name);
      if (EqualNoCase(name, used)) chosen = static_cast<int>(CboProfile.Items().size()) - 1;
    }
  } catch (const RuntimeError& failure) {
    TheDesktop().MessageBox(failure.Description(), Tr(kTitle), BoxButtons::Ok, BoxIcon::Exclamation);
  }
  CboProfile.Add(Tr("New profile"));
  CboProfile.SetListIndex(chosen);
}

// Goes back to the profile that is shown when its changes are to stay.
bool FrmMailSettings::MayLeaveProfile() {
  const int chosen = CboProfile.ListIndex();
  leaving_ = true;
  CboProfile.SetListIndex(shownIndex_);
  const MailProfile entered = Entered();
  const bool leave = !UsesProfile() || entered == shown_ ||
                     TheDesktop().MessageBox(
                         Tr("The changes to the profile \"%1\" are not stored yet.\r\n\r\nDrop them?", {entered.name}),
                         Tr(kTitle), BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes;
  if (leave) CboProfile.SetListIndex(chosen);
  leaving_ = false;
  return leave;
}

void FrmMailSettings::CboProfile_Click() {
  if (leaving_ || (shownIndex_ >= 0 && !MayLeaveProfile())) return;
  shownIndex_ = CboProfile.ListIndex();
  shown_ = {};
  std::string mistake;
  if (UsesProfile() && !IsNew()) {
    const std::string name = CboProfile.Items().at(static_cast<std::size_t>(CboProfile.ListIndex())).text;
    try {
      shown_ = LoadMailProfile(MailProfilesPath(), name, &mistake);
    } catch (const RuntimeError& failure) {
      mistake = failure.Description();
    }
  }
  // Shown as far as it is understood, so that it can be mended.
  if (!mistake.empty()) TheDesktop().MessageBox(mistake, Tr(kTitle), BoxButtons::Ok, BoxIcon::Exclamation);
  const MailProfile& profile = shown_;
  CmdRemove.SetEnabled(!profile.name.empty());
  TxtName.SetText(profile.name);
  CboTransport.SetListIndex(static_cast<int>(profile.transport));
  TxtServer.SetText(profile.server);
  CboSecurity.SetListIndex(static_cast<int>(profile.security));
  TxtUser.SetText(profile.user);
  TxtPasswordCommand.SetText(profile.passwordCommand);
  TxtFrom.SetText(profile.from);
  TxtFolder.SetText(profile.folder);
  CboTransport_Click();
}

void FrmMailSettings::CboTransport_Click() {
  const bool smtp = UsesProfile() && CboTransport.ListIndex() == static_cast<int>(MailTransport::Smtp);
  for (Control* control :
       {static_cast<Control*>(&TxtName), static_cast<Control*>(&CboTransport), static_cast<Control*>(&TxtFrom)}) {
    control->SetEnabled(UsesProfile());
  }
  for (Control* control : {static_cast<Control*>(&TxtServer), static_cast<Control*>(&CboSecurity),
                           static_cast<Control*>(&TxtUser), static_cast<Control*>(&TxtPasswordCommand)}) {
    control->SetEnabled(smtp);
  }
  TxtFolder.SetEnabled(UsesProfile() && CboTransport.ListIndex() == static_cast<int>(MailTransport::Outbox));
}

MailProfile FrmMailSettings::Entered() const {
  if (!UsesProfile()) return BuiltInMailProfile();
  const auto text = [](const TextBox& box) { return std::string(Trim(box.Text())); };
  MailProfile profile = shown_;
  profile.name = text(TxtName);
  profile.transport = static_cast<MailTransport>(CboTransport.ListIndex());
  profile.server = text(TxtServer);
  profile.security = static_cast<MailSecurity>(CboSecurity.ListIndex());
  profile.user = text(TxtUser);
  profile.passwordCommand = text(TxtPasswordCommand);
  profile.from = text(TxtFrom);
  profile.folder = text(TxtFolder);
  return profile;
}

bool FrmMailSettings::Checked() {
  if (!UsesProfile()) return true;
  const MailProfile profile = Entered();
  const auto refuse = [](TextBox& box, const std::string& why) {
    TheDesktop().MessageBox(why, Tr(kTitle), BoxButtons::Ok, BoxIcon::Information);
    box.SetFocus();
    return false;
  };
  if (!IsMailProfileName(profile.name)) {
    return refuse(TxtName, Tr("Please give the profile a name without square brackets, other than \"PROFILES\""));
  }
  if (!EqualNoCase(profile.name, shown_.name)) {
    for (std::size_t i = 1; i + 1 < CboProfile.Items().size(); ++i) {
      if (EqualNoCase(profile.name, CboProfile.Items()[i].text)) {
        return refuse(TxtName, Tr("There is a profile of this name already"));
      }
    }
  }
  if (profile.transport == MailTransport::Smtp && profile.server.empty()) {
    return refuse(TxtServer, Tr("Please enter the mail server"));
  }
  if (!profile.from.empty() && !IsMailAddress(ParseMailAddress(profile.from).address)) {
    return refuse(TxtFrom, Tr("From is no e-mail address"));
  }
  return true;
}

void FrmMailSettings::SetSending(bool sending) {
  sending_ = sending;
  StopRequested = false;
  for (Control* control :
       {static_cast<Control*>(&CboProfile), static_cast<Control*>(&CmdTest), static_cast<Control*>(&cmdaction(0))}) {
    control->SetEnabled(!sending);
  }
  CmdRemove.SetEnabled(!sending && !shown_.name.empty());
}

void FrmMailSettings::CmdTest_Click() {
  if (!Checked()) return;
  SetSending(true);
  SendTestMessage(Entered());
  SetSending(false);
}

void FrmMailSettings::SendTestMessage(const MailProfile& profile) {
  MailSession session = NewMailSession(Tr("Sending a test message"));
  const MailAddress self = profile.from.empty() ? session.DefaultSender : ParseMailAddress(profile.from);
  std::string failed;
  try {
    const BusyWhile busy;
    session.SignOnWith(MailProfilesPath(), profile);
    session.Compose();
    session.AddRecipient(self.name, self.address);
    session.SetSubject(Tr("Tarvolinex test message"));
    session.SetNoteText(Tr("This message shows that Tarvolinex can send e-mail."));
    session.Send();
  } catch (const RuntimeError& failure) {
    failed = failure.Description();
  }
  SetStatus(false, "", -1);
  if (failed.empty()) {
    TheDesktop().MessageBox(Tr("The test message to %1 went to %2.", {self.address, session.Taker()}), Tr(kTitle),
                            BoxButtons::Ok, BoxIcon::Information);
  } else {
    TheDesktop().MessageBox(Tr("The test message was not sent.\r\n\r\n%1", {failed}), Tr(kTitle), BoxButtons::Ok,
                            BoxIcon::Exclamation);
  }
}

void FrmMailSettings::CmdRemove_Click() {
  if (TheDesktop().MessageBox(Tr("Remove the profile \"%1\"?", {shown_.name}), Tr(kTitle), BoxButtons::YesNo,
                              BoxIcon::Question) != Answer::Yes) {
    return;
  }
  try {
    RemoveMailProfile(MailProfilesPath(), shown_.name);
  } catch (const RuntimeError& failure) {
    return ShowError(Tr("The e-mail settings cannot be saved.\r\n\r\n%1", {failure.Description()}));
  }
  FillProfiles();
}

void FrmMailSettings::Store() {
  if (!UsesProfile()) return ForgetDefaultMailProfile(MailProfilesPath());
  const MailProfile profile = Entered();
  SaveMailProfile(MailProfilesPath(), profile);
  if (!shown_.name.empty() && !EqualNoCase(shown_.name, profile.name)) {
    RemoveMailProfile(MailProfilesPath(), shown_.name);
  }
}

void FrmMailSettings::cmdaction_Click(int button) {
  if (sending_) {
    StopRequested = true;
    return;
  }
  if (button == 0) {
    if (!Checked()) return;
    try {
      Store();
    } catch (const RuntimeError& failure) {
      return ShowError(Tr("The e-mail settings cannot be saved.\r\n\r\n%1", {failure.Description()}));
    }
  }
  Close();
}

}  // namespace tarvolinex
