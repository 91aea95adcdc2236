#include "ui/main/FrmMailSettings.h"

#include <array>

#include "core/Reports.h"
#include "distribute/Email.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/main/MailProviders.h"

namespace tarvolinex {

namespace {

enum BoxRow {
  kProfile,
  kName,
  kTransport,
  kFrom,
  kProvider,
  kServer,
  kSecurity,
  kUser,
  kPassword,
  kCommand,
  kFolder,
  kWebServer,
  kWebSecret,
  kRows
};
constexpr std::array<const char*, kRows> kCaptions = {Marked("&Profile"),          Marked("&Name of the profile"),
                                                      Marked("Mail &goes out by"), Marked("Your &e-mail address"),
                                                      Marked("Pro&vider"),         Marked("Mail &server"),
                                                      Marked("Encr&yption"),       Marked("&User name"),
                                                      Marked("Pass&word"),         Marked("Comman&d"),
                                                      Marked("Fo&lder"),           Marked("Web server for links"),
                                                      Marked("Its secre&t")};
constexpr const char* kTitle = Marked("E-mail Settings");
enum Note { kAboutWay, kAboutPassword, kAboutWebServer, kNotes };
static_assert(kAboutWebServer == FrmMailSettings::kWebServerNote && kWebSecret == FrmMailSettings::kWebSecretCaption);

}  // namespace

std::string FrmMailSettings::ProfilesPath() const {
  return MailProfilesPath(run_.AppFolder);
}

bool FrmMailSettings::Refuse(Control& box, const std::string& why) {
  run_.MessageBox(why, Tr("E-mail Settings"), BoxButtons::Ok, BoxIcon::Information);
  box.SetFocus();
  return false;
}

FrmMailSettings::FrmMailSettings(Run& run)
    : Window("FrmMailSettings", Tr(kTitle)),
      LblMail(*this, "LblMail", kRows),
      CboProfile(*this, "CboProfile"),
      CmdRemove(*this, "CmdRemove", -1, Tr("&Remove")),
      TxtName(*this, "TxtName"),
      CboTransport(*this, "CboTransport"),
      TxtFrom(*this, "TxtFrom"),
      CboProvider(*this, "CboProvider"),
      TxtServer(*this, "TxtServer"),
      CboSecurity(*this, "CboSecurity"),
      TxtUser(*this, "TxtUser"),
      TxtPassword(*this, "TxtPassword"),
      ChkCommand(*this, "ChkCommand", -1, Tr("For e&xperts: a command prints the password")),
      TxtPasswordCommand(*this, "TxtPasswordCommand"),
      TxtFolder(*this, "TxtFolder"),
      LblNote(*this, "LblNote", kNotes),
      LblWebServer(*this, "LblWebServer"),
      TxtWebSecret(*this, "TxtWebSecret"),
      CmdWebTest(*this, "CmdWebTest", -1, Tr("Test the we&b server")),
      CmdTest(*this, "CmdTest"),
      cmdaction(*this, "cmdaction", 2),
      run_(run) {
  for (std::size_t i = 0; i < kCaptions.size(); ++i) LblMail(static_cast<int>(i)).SetCaption(Tr(kCaptions.at(i)));
  for (const std::string& way :
       {Tr("An e-mail account"), Tr("This computer's mail service (sendmail)"), Tr("A folder, from which you send it")})
    CboTransport.Add(way);
  CboProvider.Add(Tr("My own server"));
  for (const MailProvider& provider : MailProviders()) CboProvider.Add(Tr(provider.name));
  for (const std::string& security : {std::string("STARTTLS"), std::string("TLS"), Tr("None")})
    CboSecurity.Add(security);
  WireBoxes();
  CmdTest.SetCaption(Tr("Send a test &message to myself"));
  CmdTest.Click = [this] { CmdTest_Click(); };
  CmdWebTest.Click = [this] { CmdWebTest_Click(); };
  CmdRemove.SetToolTip(Tr("Remove this profile"));
  CmdRemove.Click = [this] { CmdRemove_Click(); };
  cmdaction(0).SetCaption(Tr("&OK"));
  cmdaction(1).SetCaption(Tr("Cancel"));
  for (int i = 0; i < 2; ++i) cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
  MayClose = [this] {
    run_.StopRequested = true;
    return !sending_;
  };
  FillProfiles();
  ShowWebServer();
}

void FrmMailSettings::WireBoxes() {
  CboProfile.Click = [this] { CboProfile_Click(); };
  CboTransport.Click = [this] { ShowRows(); };
  CboProvider.Click = [this] { CboProvider_Click(); };
  TxtFrom.LostFocus = [this] { SuggestProvider(); };
  TxtUser.LostFocus = TxtServer.LostFocus = [this] { LookForPassword(); };
  ChkCommand.Click = [this] { ShowRows(); };
  TxtFrom.SetToolTip(Tr("Empty: the address of your organisation's details"));
  TxtServer.SetToolTip(Tr("Such as mail.example.com or mail.example.com:587"));
  TxtFolder.SetToolTip(Tr("Empty: the folder Outbox in the folder of the program"));
}

void FrmMailSettings::FillProfiles() {
  shownIndex_ = -1;
  CboProfile.Clear();
  CboProfile.Add(Tr("No profile: the local sendmail, else the outbox"));
  int chosen = 0;
  try {
    const std::string used = GetDefaultMailProfile(run_.AppFolder);
    for (const std::string& name : MailProfileNames(ProfilesPath())) {
      CboProfile.Add(name);
      if (EqualNoCase(name, used)) chosen = static_cast<int>(CboProfile.Items().size()) - 1;
    }
  } catch (const RuntimeError& failure) {
    run_.MessageBox(failure.Description(), Tr(kTitle), BoxButtons::Ok, BoxIcon::Exclamation);
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
  const bool leave =
      !UsesProfile() || (entered == untouched_ && TxtPassword.Text().empty()) ||
      run_.MessageBox(Tr("The changes to the profile \"%1\" are not stored yet.\r\n\r\nDrop them?", {entered.name}),
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
      shown_ = LoadMailProfile(ProfilesPath(), name, &mistake);
    } catch (const RuntimeError& failure) {
      mistake = failure.Description();
    }
  }
  // Shown as far as it is understood, so that it can be mended.
  if (!mistake.empty()) run_.MessageBox(mistake, Tr(kTitle), BoxButtons::Ok, BoxIcon::Exclamation);
  CmdRemove.SetEnabled(!shown_.name.empty());
  ShowProfile(shown_);
  if (IsNew()) SuggestProvider();
  untouched_ = Entered();
}

void FrmMailSettings::ShowProfile(const MailProfile& profile) {
  filling_ = true;
  TxtName.SetText(profile.name);
  CboTransport.SetListIndex(static_cast<int>(profile.transport));
  const MailProvider* provider = ProviderAt(profile.server, profile.security);
  CboProvider.SetListIndex(provider ? static_cast<int>(provider - MailProviders().data()) + 1 : 0);
  TxtServer.SetText(profile.server);
  CboSecurity.SetListIndex(static_cast<int>(profile.security));
  TxtUser.SetText(profile.user);
  TxtPassword.SetText("");
  ChkCommand.SetValue(!profile.passwordCommand.empty());
  TxtPasswordCommand.SetText(profile.passwordCommand);
  TxtFrom.SetText(profile.from);
  TxtFolder.SetText(profile.folder);
  filling_ = false;
  LookForPassword();
}

bool FrmMailSettings::UsesServer() const {
  return UsesProfile() && CboTransport.ListIndex() == static_cast<int>(MailTransport::Smtp);
}

void FrmMailSettings::ShowRows() {
  if (filling_) return;
  const bool profile = UsesProfile(), server = UsesServer(), own = server && CboProvider.ListIndex() <= 0;
  const bool command = server && ChkCommand.Value();
  const bool folder = profile && CboTransport.ListIndex() == static_cast<int>(MailTransport::Outbox);
  struct Shown {
    BoxRow row;
    Control* box;
    bool visible;
  };
  for (const Shown& shown :
       {Shown{kName, &TxtName, profile}, Shown{kTransport, &CboTransport, profile}, Shown{kFrom, &TxtFrom, profile},
        Shown{kProvider, &CboProvider, server}, Shown{kServer, &TxtServer, own}, Shown{kSecurity, &CboSecurity, own},
        Shown{kUser, &TxtUser, server}, Shown{kPassword, &TxtPassword, server && !command},
        Shown{kCommand, &TxtPasswordCommand, command}, Shown{kFolder, &TxtFolder, folder}}) {
    LblMail(shown.row).SetVisible(shown.visible);
    shown.box->SetVisible(shown.visible);
  }
  ChkCommand.SetVisible(server);
  ShowNotes();
}

void FrmMailSettings::ShowNotes() {
  std::string way;
  if (!UsesProfile()) {
    way =
        Tr("Without a profile mail leaves through this computer's own mail service. Where there is none, each message "
           "is put into the folder Outbox, and you send it from there.");
  } else if (UsesServer()) {
    const int provider = CboProvider.ListIndex();
    if (provider > 0) way = Tr(MailProviders()[static_cast<std::size_t>(provider - 1)].advice);
  } else if (CboTransport.ListIndex() == static_cast<int>(MailTransport::Outbox)) {
    way = Tr("Each message becomes a file that your mail program opens and sends. Nothing leaves by itself.");
  }
  LblNote(kAboutWay).SetCaption(CaptionOf(way));
  LblNote(kAboutWay).SetVisible(!way.empty());
  std::string password;
  if (ChkCommand.Value()) {
    password = Tr("The first line that the command prints is the password, for example: secret-tool lookup mail lease");
  } else if (!noKeyStore_.empty()) {
    password =
        Tr("This desktop has no key store that keeps passwords. Tick the box below and name a command that prints "
           "the password whenever a message is sent.");
  } else if (kept_) {
    password = Tr("The desktop's key store keeps a password for this user. Leave the box empty to go on using it.");
  } else {
    password = Tr("The desktop's key store will keep the password. This program writes it into no file.");
  }
  LblNote(kAboutPassword).SetCaption(CaptionOf(password));
  LblNote(kAboutPassword).SetVisible(UsesServer());
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
  profile.passwordCommand = ChkCommand.Value() ? text(TxtPasswordCommand) : std::string();
  profile.from = text(TxtFrom);
  profile.folder = text(TxtFolder);
  return profile;
}

bool FrmMailSettings::Checked() {
  if (!UsesProfile()) return true;
  const MailProfile profile = Entered();
  if (!IsMailProfileName(profile.name)) {
    return Refuse(TxtName, Tr("Please give the profile a name without square brackets, other than \"PROFILES\""));
  }
  if (!EqualNoCase(profile.name, shown_.name)) {
    for (std::size_t i = 1; i + 1 < CboProfile.Items().size(); ++i) {
      if (EqualNoCase(profile.name, CboProfile.Items()[i].text)) {
        return Refuse(TxtName, Tr("There is a profile of this name already"));
      }
    }
  }
  if (profile.transport == MailTransport::Smtp && profile.server.empty()) {
    return Refuse(TxtServer, Tr("Please enter the mail server"));
  }
  if (!profile.from.empty() && !IsMailAddress(ParseMailAddress(profile.from).address)) {
    return Refuse(TxtFrom, Tr("Your e-mail address is none that mail can come from"));
  }
  return PasswordChecked(profile);
}

void FrmMailSettings::SetSending(bool sending) {
  sending_ = sending;
  run_.StopRequested = false;
  for (Control* control : {static_cast<Control*>(&CboProfile), static_cast<Control*>(&CmdTest),
                           static_cast<Control*>(&CmdWebTest), static_cast<Control*>(&cmdaction(0))}) {
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
  MailSession session = NewMailSession(run_.CalculatorPreferences, Tr("Sending a test message"), run_);
  const MailAddress self = profile.from.empty() ? session.DefaultSender : ParseMailAddress(profile.from);
  std::string failed;
  try {
    const BusyWhile busy;
    session.SignOnWith(ProfilesPath(), profile);
    if (AsksKeyStore(profile) && !TxtPassword.Text().empty()) session.Password = TxtPassword.Text();
    session.Compose();
    session.AddRecipient(self.name, self.address);
    session.SetSubject(Tr("Tarvolinex test message"));
    session.SetNoteText(Tr("This message shows that Tarvolinex can send e-mail."));
    session.Send();
  } catch (const RuntimeError& failure) {
    failed = failure.Description();
  }
  run_.SetStatus(false, "", -1);
  if (failed.empty()) {
    run_.MessageBox(Tr("The test message to %1 went to %2.", {self.address, session.Taker()}), Tr(kTitle),
                    BoxButtons::Ok, BoxIcon::Information);
  } else {
    run_.MessageBox(Tr("The test message was not sent.\r\n\r\n%1", {failed}), Tr(kTitle), BoxButtons::Ok,
                    BoxIcon::Exclamation);
  }
}

void FrmMailSettings::CmdRemove_Click() {
  if (run_.MessageBox(Tr("Remove the profile \"%1\"?", {shown_.name}), Tr(kTitle), BoxButtons::YesNo,
                      BoxIcon::Question) != Answer::Yes) {
    return;
  }
  try {
    RemoveMailProfile(ProfilesPath(), shown_.name);
    ForgetUnusedPassword(shown_);
  } catch (const RuntimeError& failure) {
    return run_.ShowError(Tr("The e-mail settings cannot be saved.\r\n\r\n%1", {failure.Description()}));
  }
  FillProfiles();
}

void FrmMailSettings::Store() {
  if (!UsesProfile()) return ForgetDefaultMailProfile(ProfilesPath());
  const MailProfile profile = Entered();
  SaveMailProfile(ProfilesPath(), profile);
  if (!shown_.name.empty() && !EqualNoCase(shown_.name, profile.name)) {
    RemoveMailProfile(ProfilesPath(), shown_.name);
  }
  ForgetUnusedPassword(shown_);
}

void FrmMailSettings::cmdaction_Click(int button) {
  if (sending_) {
    run_.StopRequested = true;
    return;
  }
  if (button == 0) {
    if (!Checked() || !KeepPassword(Entered()) || !KeepWebSecret()) return;
    try {
      Store();
    } catch (const RuntimeError& failure) {
      return run_.ShowError(Tr("The e-mail settings cannot be saved.\r\n\r\n%1", {failure.Description()}));
    }
  }
  Close();
}

}  // namespace tarvolinex
