#include "ui/main/FrmMailSettings.h"

#include <array>

#include "core/Globals.h"
#include "core/Reports.h"
#include "distribute/Email.h"
#include "platform/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace tarvolinex {

namespace {

constexpr std::array<const char*, 10> kCaptions = {
    "&Profile",
    "&Name",
    "&Transport",
    "Ser&ver",
    "Se&curity",
    "&User",
    "Pass&word command",
    "&From",
    "Fo&lder",
    "The password itself is never stored: the command prints it when a message is sent, for example "
    "\"secret-tool lookup mail lease\". Server is HOST or HOST:PORT. From and Folder may stay empty."};
constexpr const char* kTitle = "E-mail Settings";

}  // namespace

FrmMailSettings::FrmMailSettings()
    : Window("FrmMailSettings", kTitle),
      LblMail(*this, "LblMail", static_cast<int>(kCaptions.size())),
      CboProfile(*this, "CboProfile"),
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
  for (std::size_t i = 0; i < kCaptions.size(); ++i) LblMail(static_cast<int>(i)).SetCaption(kCaptions.at(i));
  for (const char* transport : {"Mail server (SMTP)", "Local sendmail", "Outbox folder"}) CboTransport.Add(transport);
  for (const char* security : {"STARTTLS", "TLS", "None"}) CboSecurity.Add(security);
  CmdTest.SetCaption("Send a test &message to myself");
  CmdTest.Click = [this] { CmdTest_Click(); };
  cmdaction(0).SetCaption("&OK");
  cmdaction(1).SetCaption("Cancel");
  for (int i = 0; i < 2; ++i) cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  CboProfile.Click = [this] { CboProfile_Click(); };
  CboTransport.Click = [this] { CboTransport_Click(); };
  KeyUp = [this](Key key) {
    if (key == Key::Return) cmdaction(0).Press();
    if (key == Key::Escape) cmdaction(1).Press();
  };
  FillProfiles();
}

void FrmMailSettings::FillProfiles() {
  CboProfile.Add("No profile: the local sendmail, else the outbox");
  int chosen = 0;
  const std::string used = GetDefaultMailProfile();
  for (const std::string& name : MailProfileNames(MailProfilesPath())) {
    CboProfile.Add(name);
    if (EqualNoCase(name, used)) chosen = static_cast<int>(CboProfile.Items().size()) - 1;
  }
  CboProfile.Add("New profile");
  CboProfile.SetListIndex(chosen);
}

void FrmMailSettings::CboProfile_Click() {
  const bool isNew = CboProfile.ListIndex() == static_cast<int>(CboProfile.Items().size()) - 1;
  MailProfile profile;
  try {
    if (UsesProfile() && !isNew) {
      profile.name = CboProfile.Items().at(static_cast<std::size_t>(CboProfile.ListIndex())).text;
      profile = LoadMailProfile(MailProfilesPath(), profile.name);
    }
  } catch (const RuntimeError& failure) {
    // Shown as far as it is understood, so that it can be mended.
    TheDesktop().MessageBox(failure.Description(), kTitle, BoxButtons::Ok, BoxIcon::Exclamation);
  }
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
  MailProfile profile;
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
  const auto refuse = [](TextBox& box, const char* why) {
    TheDesktop().MessageBox(why, kTitle, BoxButtons::Ok, BoxIcon::Information);
    box.SetFocus();
    return false;
  };
  if (!IsMailProfileName(profile.name)) {
    return refuse(TxtName, "Please give the profile a name without square brackets, other than \"PROFILES\"");
  }
  if (profile.transport == MailTransport::Smtp && profile.server.empty()) {
    return refuse(TxtServer, "Please enter the mail server");
  }
  if (!profile.from.empty() && !IsMailAddress(ParseMailAddress(profile.from).address)) {
    return refuse(TxtFrom, "From is no e-mail address");
  }
  return true;
}

void FrmMailSettings::CmdTest_Click() {
  if (!Checked()) return;
  const MailProfile profile = Entered();
  MailSession session = NewMailSession("Sending a test message");
  const MailAddress self = profile.from.empty() ? session.DefaultSender : ParseMailAddress(profile.from);
  StopRequested = false;
  try {
    const BusyWhile busy;
    session.SignOnWith(MailProfilesPath(), profile);
    session.Compose();
    session.AddRecipient(self.name, self.address);
    session.SetSubject("Tarvolinex test message");
    session.SetNoteText("This message shows that Tarvolinex can send e-mail.");
    session.Send();
  } catch (const RuntimeError& failure) {
    SetStatus(false, "", -1);
    TheDesktop().MessageBox("The test message was not sent.\r\n\r\n" + failure.Description(), kTitle, BoxButtons::Ok,
                            BoxIcon::Exclamation);
    return;
  }
  SetStatus(false, "", -1);
  TheDesktop().MessageBox("The test message to " + self.address + " went to " + session.Taker() + ".", kTitle,
                          BoxButtons::Ok, BoxIcon::Information);
}

void FrmMailSettings::cmdaction_Click(int button) {
  if (button == 0) {
    if (!Checked()) return;
    try {
      UsesProfile() ? SaveMailProfile(MailProfilesPath(), Entered()) : ForgetDefaultMailProfile(MailProfilesPath());
    } catch (const RuntimeError& failure) {
      return ShowError("The e-mail settings cannot be saved.\r\n\r\n" + failure.Description());
    }
  }
  Close();
}

}  // namespace tarvolinex
