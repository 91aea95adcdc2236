#include "distribute/Email.h"

#include "core/Settings.h"
#include "distribute/InstallPackage.h"
#include "distribute/SentMail.h"
#include "platform/RuntimeError.h"
#include "platform/text/Clock.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"
#include "support/KeyRing.h"
#include "support/LoopbackServer.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/frmSendCalc.h"

namespace tarvolinex {

class EmailTest : public SampleTest {
 protected:
  EmailTest() {
    SaveCalculatorPreferences(OwnBranding(), run);
    CalculatorPreferences.AliasCalcName = "Lease Tool";
    folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=out\n[out]\nTransport=outbox\n");
    form->TabMain.Choose(kTabSend);
    form->send.TxtEmail(0).SetText("Your calculator");
    form->send.TxtEmail(1).SetText("Hello\r\nthere");
    desktop.modal = [this](Window& window) {
      auto& choice = dynamic_cast<frmSendCalc&>(window);
      names = choice.TxtEmails.Text();
      choice.OpFileType(way).SetValue(true);
      choice.cmdaction(confirm ? 0 : 1).Press();
    };
  }
  void Send() {
    desktop.boxes.clear();
    form->send.CmdCalcGo(0).Press();
  }
  void TickAll() { form->send.CmdCalcGo(3).Press(); }
  std::string LastBox() { return desktop.boxes.empty() ? "(none)" : desktop.boxes.back().text; }
  // Without the reason that follows.
  std::string LastReport() { return LastBox().substr(0, LastBox().find("\r\n\r\n")); }
  std::size_t OutboxFiles() { return ListFiles(AppFolder + "\\Outbox\\*.eml").size(); }
  std::string Dates() {
    const std::string all = AskAll("SELECT DateLastSent FROM contacts WHERE DateLastSent IS NOT NULL ORDER BY ID");
    return all == "(none)" ? "" : all;
  }
  void ExpectFreeWindow() {
    EXPECT_TRUE(form->menus.MnuFile.Enabled() && form->send.CmdCalcGo(0).Enabled() &&
                form->send.FraCalCreate(0).Enabled());
  }
  // Another program keeps the database to itself.
  void Hold() {
    if (!other.IsOpen()) other.Open(Where());
    if (!other.InTransaction()) other.Begin();
    other.Flush();
  }
  Connection other;
  int way = kSendZip;
  bool confirm = true;
  std::string names;
};

TEST_F(EmailTest, NothingIsDoneBeforeEverythingIsThere) {
  Send();
  EXPECT_EQ(LastBox(), "You must select at least one contact to email");
  TickAll();
  confirm = false;
  for (const auto& [subject, message, said] :
       {std::tuple{"", "m", "You must enter a Subject for your email"},
        std::tuple{"s", "", "Your email has no message, continue?"}, std::tuple{"s", "m", "(none)"}}) {
    form->send.TxtEmail(0).SetText(subject);
    form->send.TxtEmail(1).SetText(message);
    Send();
    EXPECT_EQ(LastBox(), said);
  }
  EXPECT_EQ(names, "Helen Ackroyd\r\nGareth Evans");
  EXPECT_EQ(OutboxFiles() + ListFiles(CalculatorFolder() + "*.html").size(), 0U);
  EXPECT_EQ(ReadIni(AppFolder, "General", "OPTIONS", "LASTSUBJECT", "none"), "none");
}

TEST_F(EmailTest, OneMessageGoesToAllTickedContactsAndTheDayIsNoted) {
  TickAll();
  Send();
  EXPECT_EQ(LastBox(),
            "Lease Tool has been sent successfully by Tarvolinex.\n\r\nPlease check your email application to verify");
  EXPECT_EQ(OutboxFiles(), 1U);
  const std::string date = LongDateTime(desktop.now);
  EXPECT_EQ(Dates(), date + "|" + date);
  EXPECT_EQ(form->send.lvSendContacts.At(0).cells.at(1), date);
  while (form->standing.TmrStanding.Running()) form->standing.TmrStanding.Tick();
  EXPECT_TRUE(form->standing.LblStanding.Caption().starts_with("Sent on "));
  EXPECT_NE(ReadFile(AppFolder + "\\General.INI").find("LASTMSG=Hello|+|there\r\n"), std::string::npos);
  ExpectFreeWindow();
  EXPECT_EQ(form->TxtStatus.Text() + form->send.CmdCalcGo(3).Caption(), "Check &All");
  EXPECT_FALSE(FileExists(AppFolder + "\\Sent.lst"));
}

TEST(EmailBody, OfEachWay) {
  Sending sending;
  sending.publication.branding.prefs.AliasCalcName = "Lease Tool";
  sending.message = "Hi";
  sending.web.server = "www.example.com";
  sending.instructions = "About the <CALCNAME>.";
  const std::string link = "\r\n\r\nhttp://www.example.com/download/Get.asp?ID=0001\r\n\r\n";
  for (const auto& [way, instructed, body] :
       {std::tuple{kSendLink, false, "Hi" + link},
        std::tuple{kSendLink, true, "Hi\r\n\r\n" + link + "About the Lease Tool."},
        std::tuple{kSendZip, true, std::string("Hi\r\n\r\nAbout the Lease Tool.")},
        std::tuple{kSendZip, false, std::string("Hi")}}) {
    sending.sendType = way;
    sending.includeInstructions = instructed;
    EXPECT_EQ(addEmailInstructions(sending, "0001"), body);
  }
}

TEST_F(EmailTest, AMessageThatCannotLeaveIsReportedAndMarksNobody) {
  TickAll();
  folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=w\n[w]\nTransport=smtp\nSecurity=none\nServer=127.0.0.1:1\n");
  Send();
  ASSERT_EQ(desktop.boxes.size(), 2U);
  EXPECT_TRUE(desktop.boxes[0].text.starts_with(
      "Failed to connect to remote host.\r\n\r\nPlease check your Internet connection and try again\r\n\r\nthe mail "
      "server 127.0.0.1:1: "));
  EXPECT_EQ(desktop.boxes[1].text,
            "Sending email failed\r\n\r\nThe message was not sent.\r\n\r\nPlease try again later, or check how mail "
            "is sent under Options > E-mail Settings.");
  ExpectFreeWindow();
  folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=gone\n");
  Send();
  EXPECT_EQ(LastReport(), "Sending email failed");
  folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=out\n[out]\nTransport=outbox\n");
  form->contacts.TxtContact(5).Type("no address");
  form->contacts.CmdContact(0).Press();
  form->send.lvSendContacts.SetChecked(0, true);
  Send();
  EXPECT_EQ(LastReport(), "Sending email failed");
  EXPECT_EQ(form->TxtStatus.Text(), "\"no address\" is no e-mail address");
  EXPECT_EQ(Dates(), "");
  EXPECT_EQ(OutboxFiles(), 0U);
}

TEST_F(EmailTest, WhatIsRememberedOfOneSupplierIsForgottenAlone) {
  const SentList list = {AppFolder, DataFolder};
  SentMail bob{3, 33, "today", "Bob", {}, "tax\t20\n", ""};
  bob.delivery.date = "2026-11-25 09:00:00";
  bob.delivery.message = "It's\there\r\n";
  MailOnItsWay(list, {{1, 11, "today", "Ann"}, bob}).Remember();
  ForgetRememberedMail(list, 1);
  ASSERT_EQ(RememberedMail(list).size(), 1U);
  EXPECT_EQ(RememberedMail(list)[0].name, "Bob");
  for (int twice = 0; twice < 2; ++twice) NoteRememberedMail(list, form->database);
  EXPECT_EQ(AskAll("SELECT SupplierId,Contact,Result FROM Deliveries"), "3 Bob sent");
  EXPECT_EQ(MessageOfDelivery(form->database, 1), "\n\nIt's\there\r\n");
  EXPECT_EQ(LastSentOf(form->database)[3].organisationIngredients, "tax\t20\n");
}

TEST_F(EmailTest, NothingIsSentWhileTheDatabaseTakesNoDate) {
  TickAll();
  Hold();
  Send();
  EXPECT_EQ(LastReport(), "Sending email failed");
  EXPECT_NE(LastBox().find("does not take the date of sending: " + Held()), std::string::npos) << LastBox();
  EXPECT_EQ(ListFiles(CalculatorFolder() + "*.html").size(), 0U);
  other.Rollback();
  desktop.events = [&] {  // while the calculator is built
    if (!ListFiles(CalculatorFolder() + "*.html").empty()) Hold();
  };
  Send();
  EXPECT_EQ(LastReport(), "Sending email failed");
  EXPECT_EQ(OutboxFiles(), 0U);
  EXPECT_EQ(Dates(), "");
  EXPECT_FALSE(FileExists(AppFolder + "\\Sent.lst"));
}

TEST_F(EmailTest, MailThatCouldNotBeNotedIsToldRememberedAndNotedLater) {
  const auto sendAndFail = [&](const std::vector<int>& rows) {
    for (const int row : rows) form->send.lvSendContacts.SetChecked(row, true);
    desktop.events = [&, before = OutboxFiles()] {
      if (OutboxFiles() > before) Hold();
    };
    EXPECT_THROW(Send(), ProgramEnded);
    desktop.events = nullptr;
    other.Rollback();
    EXPECT_TRUE(FileExists(AppFolder + "\\Sent.lst"));
  };
  const std::string date = LongDateTime(desktop.now);
  sendAndFail({0});
  EXPECT_EQ(LastBox().find("Database update failed.\n\n" + Held()), 0U);
  EXPECT_NE(LastBox().find("\n\nThe message has gone out already to:\n\nHelen Ackroyd\n\n"), std::string::npos);
  EXPECT_EQ(Dates(), "");

  desktop.now += std::chrono::hours(1);
  TickAll();
  Send();
  ASSERT_EQ(desktop.boxes.size(), 2U);
  EXPECT_EQ(desktop.boxes[0].text, "The message of " + date +
                                       " has gone out to these already; only the date could not be noted then:\n\n"
                                       "Helen Ackroyd\n\nSend to them again?");
  EXPECT_EQ(names, "Gareth Evans");
  EXPECT_EQ(Dates(), date + "|" + LongDateTime(desktop.now));
  EXPECT_FALSE(FileExists(AppFolder + "\\Sent.lst"));

  sendAndFail({0, 1});
  TickAll();
  Send();
  EXPECT_EQ(LastBox(), "All of them have got the message; nothing was sent.");
  EXPECT_EQ(OutboxFiles(), 3U);

  sendAndFail({0, 1});
  form->Load();  // the next start notes it
  EXPECT_EQ(form->send.lvSendContacts.At(0).cells.at(1), LongDateTime(desktop.now));
  TickAll();
  desktop.answers = {Answer::Yes};
  Send();
  EXPECT_EQ(OutboxFiles(), 5U);
  EXPECT_FALSE(FileExists(AppFolder + "\\Sent.lst"));
}

TEST_F(EmailTest, ALinkIsSentOnlyAfterTheUpload) {
  way = kSendLink;
  {
    const LoopbackServer server("http", folder.Path(), {"500"});
    WebServer = server.Host();
    TickAll();
    Send();
    EXPECT_EQ(LastReport(), "File Upload failed");
    EXPECT_EQ(OutboxFiles(), 0U);
    EXPECT_EQ(Dates(), "");
  }
  const LoopbackServer server("http", folder.Path(), {"SUCCESS"});
  WebServer = server.Host();
  Send();
  ASSERT_EQ(OutboxFiles(), 1U);
  const std::string mail = ReadFile(AppFolder + "\\Outbox\\" + ListFiles(AppFolder + "\\Outbox\\*.eml")[0]);
  EXPECT_NE(mail.find("/download/Get.asp?ID=3D" + CustomerReference), std::string::npos) << mail;
  EXPECT_EQ(mail.find("attachment"), std::string::npos);
}

TEST_F(EmailTest, TheDialogOffersTheLinkWhereTheServerTakesItAndSaysWhatIsMissing) {
  const auto hint = [&](const WebAccount& account, bool link) {
    Sending sending;
    sending.publication.branding = {run.Places(), CalculatorPreferences, CustomerReference};
    sending.web = account;
    frmSendCalc dialog(run, sending, form->send);
    EXPECT_EQ(dialog.OpFileType(kSendLink).Value(), link);
    dialog.OpFileType(kSendLink).SetValue(true);
    dialog.cmdaction(0).Press();
    EXPECT_EQ(dialog.SendConfirmed, NamesServer(account));
    form->send.SendType = kSendProgram;
    return dialog.LblFileType(kSendLink).Caption();
  };
  const LoopbackServer server("http", folder.Path(), {"asked:<STATUS>3 MB left</STATUS> SUCCESS"});
  const LoopbackServer refuses("http", folder.Path(), {"asked:<STATUS>Not known here</STATUS> ERROR"});
  EXPECT_TRUE(hint({"www.tarvolinex.example", "7"}, false).starts_with("No web server is set up."));
  EXPECT_EQ(LastBox().substr(0, 24), "No web server is set up.");
  EXPECT_NE(hint({server.Host(), "7"}, true).find("with one tap"), std::string::npos);
  // What the user has chosen since stays chosen.
  EXPECT_NE(hint({server.Host(), "7"}, false).find("with one tap"), std::string::npos);
  EXPECT_NE(hint({refuses.Host(), "7"}, false).find("Not known here"), std::string::npos);
}

TEST_F(EmailTest, MissingInstructionsAreReportedAndEmpty) {
  std::filesystem::remove(folder.Path() + "/inst1.txt");
  EXPECT_EQ(GetInstructions(AppFolder, 1, run), "");
  EXPECT_EQ(LastBox(), "Instruction File load failed");
  EXPECT_EQ(GetInstructions(AppFolder, 0, run).substr(0, 24), "The <CALCNAME> is attach");
}

class MailSettingsTest : public EmailTest {
 protected:
  MailSettingsTest() { std::filesystem::remove(folder.Path() + "/Mail.INI"); }
  std::string ProfileNames() {
    std::string all;
    for (const std::string& name : MailProfileNames(MailProfilesPath(AppFolder))) all += name + ";";
    return all;
  }
};

TEST_F(MailSettingsTest, AProfileIsKeptAndTried) {
  const LoopbackServer server("smtp", folder.Path());
  FrmMailSettings settings(run);
  EXPECT_FALSE(settings.TxtServer.Visible());
  settings.CboProfile.Choose(1);
  settings.cmdaction(0).Press();
  EXPECT_FALSE(settings.Closed());
  settings.TxtName.Type("work");
  settings.TxtServer.Type(server.Host());
  settings.CboSecurity.Choose(2);
  settings.CmdTest.Press();
  EXPECT_EQ(LastBox(), "The test message to leases@example.com went to the mail server " + server.Host() + ".");
  EXPECT_TRUE(FileExists(folder.Path() + "/message.json"));
  settings.TxtServer.Type("127.0.0.1:1");
  settings.CmdTest.Press();
  EXPECT_EQ(LastBox().substr(0, 30), "The test message was not sent.");
  settings.cmdaction(0).Press();
  EXPECT_TRUE(settings.Closed());
  EXPECT_EQ(GetDefaultMailProfile(AppFolder), "work");
}

TEST_F(MailSettingsTest, AProfileIsRenamedLeftAndRemoved) {
  folder.File("Mail.INI",
              "[PROFILES]\nDefaultProfile=work\n[work]\nTransport=smtp\nSecurity=none\nServer=127.0.0.1:1\n"
              "CaFile=/own.pem\n[home]\nTransport=outbox\n");
  FrmMailSettings settings(run);
  settings.TxtName.Type("HOME");
  settings.cmdaction(0).Press();
  EXPECT_EQ(LastBox(), "There is a profile of this name already");
  settings.TxtName.Type("office");
  settings.cmdaction(1).SetFocus();
  settings.KeyUp(Key::Return);  // of the button that has the focus
  EXPECT_EQ(GetDefaultMailProfile(AppFolder), "work");
  settings.Reopen();
  settings.cmdaction(0).Press();
  EXPECT_EQ(ProfileNames(), "home;office;");
  EXPECT_EQ(LoadMailProfile(MailProfilesPath(AppFolder), "office").caFile, "/own.pem");
  FrmMailSettings last(run);
  last.TxtUser.Type("me");
  last.CboProfile.Choose(0);  // asked, and the safe answer keeps what was typed
  EXPECT_EQ(last.TxtName.Text() + last.TxtUser.Text(), "officeme");
  desktop.answers = {Answer::Yes, Answer::Yes};
  last.CboProfile.Choose(1);
  EXPECT_EQ(last.TxtName.Text() + last.TxtUser.Text(), "home");
  last.CboProfile.Choose(2);
  last.CmdRemove.Press();
  EXPECT_EQ(ProfileNames(), "home;");
  EXPECT_EQ(last.CboProfile.ListIndex(), 0);
}

TEST_F(MailSettingsTest, AKnownAddressBringsItsProviderAndThePasswordGoesIntoTheKeyStoreAlone) {
  CalculatorPreferences.OrgEmail = "ann@GMAIL.com";
  const auto beginsWith = [&](const char* text) { return LastBox().starts_with(text); };
  {
    FrmMailSettings settings(run);
    settings.CboProfile.Choose(1);
    EXPECT_EQ(settings.TxtName.Text() + "|" + settings.TxtServer.Text() + "|" + settings.TxtUser.Text(),
              "Gmail, Google Workspace|smtp.gmail.com:587|ann@GMAIL.com");
    EXPECT_FALSE(settings.TxtServer.Visible());
    EXPECT_NE(settings.LblNote(0).Caption().find("app password"), std::string::npos);
    EXPECT_NE(settings.LblNote(1).Caption().find("no key store"), std::string::npos);
    settings.cmdaction(0).Press();
    EXPECT_TRUE(beginsWith("The password is not known."));
    settings.TxtPassword.Type("secret word");
    settings.cmdaction(0).Press();
    EXPECT_TRUE(beginsWith("The password cannot be kept"));
    EXPECT_FALSE(settings.Closed());
    settings.ChkCommand.SetValue(true);
    EXPECT_TRUE(settings.TxtPasswordCommand.Visible() && !settings.TxtPassword.Visible());
  }
  const KeyRing keyRing(folder.Path());
  FrmMailSettings settings(run);
  settings.CboProfile.Choose(1);
  settings.cmdaction(0).Press();
  EXPECT_EQ(LastBox(), "Please enter the password");
  settings.TxtPassword.Type("secret word");
  settings.cmdaction(0).Press();
  EXPECT_TRUE(settings.Closed());
  EXPECT_EQ(StoredPassword({"smtp.gmail.com", "ann@GMAIL.com"}), "secret word");
  EXPECT_EQ(ReadFile(MailProfilesPath(AppFolder)).find("secret"), std::string::npos);
  FrmMailSettings again(run);
  EXPECT_EQ(again.CboProvider.Items()[static_cast<std::size_t>(again.CboProvider.ListIndex())].text,
            "Gmail, Google Workspace");
  EXPECT_NE(again.LblNote(1).Caption().find("keeps a password"), std::string::npos);
  EXPECT_EQ(again.TxtPassword.Text(), "");
  again.cmdaction(0).Press();
  EXPECT_TRUE(again.Closed());
  again.Reopen();
  desktop.answers = {Answer::Yes};
  again.CmdRemove.Press();
  EXPECT_EQ(StoredPassword({"smtp.gmail.com", "ann@GMAIL.com"}), std::nullopt);
}

TEST_F(MailSettingsTest, TheWebServerIsTestedAndItsSecretKept) {
  WebServer = "www.tarvolinex.example";
  EXPECT_FALSE(FrmMailSettings(run).CmdWebTest.Visible());
  const LoopbackServer server("http", folder.Path(), {"asked:<STATUS>3 MB left</STATUS> SUCCESS"});
  WebServer = server.Host();
  CustomerReference = "7";
  FrmMailSettings settings(run);
  settings.TxtWebSecret.Type("word");
  settings.CmdWebTest.Press();
  EXPECT_EQ(LastBox(), "The web server takes calculators.\r\n\r\n3 MB left");
  EXPECT_NE(ReadFile(folder.Path() + "/asked").find("Basic Nzp3b3Jk\n"), std::string::npos);  // 7:word
  settings.cmdaction(0).Press();
  EXPECT_TRUE(LastBox().starts_with("The web server's secret cannot be kept."));
  const KeyRing keyRing(folder.Path());
  settings.cmdaction(0).Press();
  EXPECT_TRUE(settings.Closed());
  EXPECT_EQ(UploadSecret({server.Host(), "7"}, {}), "word");
}

TEST_F(MailSettingsTest, ATestMessageCanBeStoppedAndABrokenFileIsShownAsFarAsItIs) {
  const LoopbackServer server("smtp", folder.Path(), {"silent"});
  folder.File("Mail.INI",
              "[PROFILES]\nDefaultProfile=w\n[w]\nTransport=pigeon\nServer=" + server.Host() + "\nFrom=a@b.example");
  FrmMailSettings settings(run);
  EXPECT_NE(LastBox().find("pigeon"), std::string::npos);
  EXPECT_EQ(settings.TxtFrom.Text(), "a@b.example");
  settings.CboSecurity.Choose(2);
  bool free = true;
  desktop.events = [&] {
    free = settings.CmdTest.Enabled() || settings.cmdaction(0).Enabled() || settings.MayClose();
    settings.cmdaction(1).Press();
  };
  settings.CmdTest.Press();
  EXPECT_FALSE(free || settings.Closed());
  EXPECT_EQ(LastBox().substr(0, 30), "The test message was not sent.");
  EXPECT_TRUE(settings.CmdTest.Enabled());
  std::filesystem::remove(folder.Path() + "/Mail.INI");
  std::filesystem::create_directories(folder.Path() + "/Mail.INI");
  EXPECT_NO_THROW(FrmMailSettings{run});
}

}  // namespace tarvolinex
