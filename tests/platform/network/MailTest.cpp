#include "platform/network/Mail.h"

#include "platform/text/Json.h"
#include "platform/text/Text.h"
#include "support/Failure.h"
#include "support/Fixture.h"
#include "support/KeyRing.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

using namespace std::chrono_literals;

class MailTest : public ProgramTest {
 protected:
  MailTest() { folder.File("CalcInstall.exe", attachment); }
  void Profile(const std::string& keys) {
    folder.File("Mail.INI", "[PROFILES]\r\nDefaultProfile=work\r\n[work]\r\n" + keys);
  }
  void PlainProfile(const std::string& host) { Profile("Transport=smtp\r\nSecurity=none\r\nServer=" + host + "\r\n"); }
  void TlsProfile(const LoopbackServer& server, const std::string& passwordCommand) {
    Profile("Transport=smtp\r\nServer=" + server.NamedHost() + "\r\nUser=ann\r\nCaFile=" + folder.Path() +
            "/cert.pem\r\n" + passwordCommand + "\r\n");
  }
  void MakeCertificate(const std::string& host) {
    const std::string command = "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=" + host +
                                " -addext subjectAltName=DNS:" + host + " -keyout " + folder.Path() + "/key.pem -out " +
                                folder.Path() + "/cert.pem 2>/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  // One session. 0 when the message was taken; else nobody has got it.
  int Send(const std::string& subject = "Hello", const std::string& text = "text") {
    std::filesystem::remove(message);
    session = {};
    session.DefaultSender = {"Ann Whitlöck", "ann@example.com"};
    session.Patience = {2000ms, 1000ms};
    session.Password = password;
    session.LocalSendmail = sendmail;
    const RuntimeError failure = FailureOf([&] {
      session.SignOn(ini, DefaultMailProfileName(ini));
      session.Compose();
      session.AddRecipient("Jörg \"J\" Müller, GmbH", "SMTP:joerg@example.com");
      session.AddRecipient("Bo", "SMTP:bo@example.com");
      session.SetSubject(subject);
      session.SetNoteText(text);
      session.Attach(folder.Path() + "/CalcInstall.exe", "CalcInstall.exe");
      session.Send();
      session.SignOff();
    });
    reason = failure.Description();
    EXPECT_TRUE(failure.Number() == 0 || (!reason.empty() && !FileExists(message)));
    return failure.Number();
  }
  std::string Received(const std::string& name) {
    for (const auto& [key, value] : ParseJsonObject(ReadFile(message))) {
      if (key == name) return std::get<std::string>(value);
    }
    return "(none)";
  }
  const std::string attachment = "MZ\0\r\n.\r\n\n\xFF" + std::string(1000, 'x');
  const std::string ini = folder.Path() + "/Mail.INI", message = folder.Path() + "/message.json";
  MailSession session;
  std::optional<std::string> password;
  std::string reason, sendmail;
};

TEST_F(MailTest, AServerGetsTheWholeMessage) {
  const LoopbackServer server("smtp", folder.Path());
  PlainProfile(server.Host());
  const std::string text = "Grüße\r\n.\r\nFrom here\r\n" + std::string(2000, 'l') + "\r\n";
  ASSERT_EQ(Send("Ihr Rechner – für Sie\r\nBcc: evil@example.com", text), 0);
  const std::pair<const char*, const char*> parts[] = {
      {"sender", "ann@example.com"},
      {"recipients", "joerg@example.com,bo@example.com"},
      {"from", "Ann Whitlöck <ann@example.com>"},
      {"to", R"("Jörg \"J\" Müller, GmbH" <joerg@example.com>, Bo <bo@example.com>)"},
      {"subject", "Ihr Rechner – für Sie  Bcc: evil@example.com"},
      {"headers", "Content-Type,Date,From,MIME-Version,Message-Id,Subject,To"},
      {"attachment", "CalcInstall.exe"},
      {"defects", ""}};
  for (const auto& [name, expected] : parts) EXPECT_EQ(Received(name), expected);
  EXPECT_EQ(ReplaceAll(Received("text"), "\r\n", "\n"), ReplaceAll(text, "\r\n", "\n"));
  EXPECT_EQ(ReadFile(folder.Path() + "/attachment"), attachment);
  EXPECT_LE(std::stoi(Received("longest")), 78);
}

TEST_F(MailTest, TheConnectionIsEncryptedAndItsCertificateAndThePasswordAreLookedAt) {
  for (const auto& [host, word, number] : {std::tuple{"localhost", "right word", 0},
                                           {"localhost", "wrong word", kMailLoginRefused},
                                           {"elsewhere", "right word", kMailFailed}}) {
    MakeCertificate(host);
    const LoopbackServer server("smtp", folder.Path(), {"tls"});
    TlsProfile(server, "PasswordCommand=echo '" + std::string(word) + "'; echo more");
    EXPECT_EQ(Send(), number) << host << ", " << word;
    EXPECT_TRUE(number != 0 || Received("tls") + Received("user") == "yesann");
  }
}

TEST_F(MailTest, WithoutACommandThePasswordIsTheKeyStores) {
  MakeCertificate("localhost");
  const LoopbackServer server("smtp", folder.Path(), {"tls"});
  TlsProfile(server, "");
  EXPECT_EQ(Send(), kMailLoginRefused);  // there is no key store
  password = "right word";
  EXPECT_EQ(Send(), 0);
  password.reset();
  const KeyRing keyRing(folder.Path());
  const Login login{"LOCALHOST", "ann"};
  EXPECT_EQ(Send(), kMailLoginRefused);  // it has none
  StorePassword(login, "wrong word");
  StorePassword(login, "right word");
  EXPECT_FALSE(HasStoredPassword({"localhost", "bo"}));
  EXPECT_TRUE(HasStoredPassword({server.NamedHost(), "ann"}));
  EXPECT_EQ(Send(), 0);
  EXPECT_THROW(StoredPassword(login, [](std::int64_t, std::int64_t) { return false; }), RuntimeError);
  ForgetPassword(login);
  EXPECT_EQ(StoredPassword(login), std::nullopt);
  ForgetPassword(login);
}

TEST_F(MailTest, APasswordCommandMayNeitherPrintWithoutEndNorTakeForEverNorWriteToTheTerminal) {
  for (const auto& [command, why] : {std::pair{"yes", "prints without end"},
                                     {"yes >&2", "prints without end"},
                                     {"sleep 60", "took too long"},
                                     {R"(printf 'a\033[31m\a\302\233b' >&2; exit 1)", "command failed: a[31mb"}}) {
    Profile("Transport=smtp\r\nServer=127.0.0.1:1\r\nUser=ann\r\nPasswordCommand=" + std::string(command) + "\r\n");
    EXPECT_EQ(Send(), kMailLoginRefused) << command;
    EXPECT_NE(reason.find(why), std::string::npos) << reason;
  }
}

TEST_F(MailTest, FaultsOfTheServerEndTheMessage) {
  for (const auto& [behaviour, number, why] : {std::tuple{"refuse", kMailRecipientRefused, "550 no mail today"},
                                               {"refuse-second", kMailRecipientRefused, "550 no such user"},
                                               {"drop", kMailFailed, "may have gone out all the same"},
                                               {"later", kMailFailed, ": 451 try again later"},
                                               {"silent", kMailFailed, "too long"},
                                               {"chatty", kMailFailed, "the mail server"}}) {
    const LoopbackServer server("smtp", folder.Path(), {behaviour});
    PlainProfile(server.Host());
    EXPECT_EQ(Send(), number) << behaviour;
    EXPECT_NE(reason.find(why), std::string::npos) << reason;
    EXPECT_TRUE(behaviour == std::string("drop") || reason.find("gone out") == std::string::npos) << reason;
    EXPECT_THROW(session.SignOff(), RuntimeError);
  }
  PlainProfile("127.0.0.1:1");
  EXPECT_EQ(Send(), kNotConnected);
}

TEST_F(MailTest, WhoeverMayGetTheMessageAfterAFailureIsInItsFate) {
  for (const auto& [behaviour, fate] : {std::pair{"refuse", MailFate::Barred},
                                        {"refuse-second", MailFate::Refused},
                                        {"later", MailFate::RefusedForNow},
                                        {"drop", MailFate::Unknown}}) {
    const LoopbackServer server("smtp", folder.Path(), {behaviour});
    PlainProfile(server.Host());
    Send();
    EXPECT_EQ(session.Fate(), fate) << behaviour;
  }
  const std::string program = folder.Path() + "/sendmail";
  for (const auto& [end, fate] : {std::pair{"exit 67", MailFate::Refused},
                                  {"exit 78", MailFate::Barred},
                                  {"exit 75", MailFate::Unknown},
                                  {"kill -9 $$", MailFate::Unknown}}) {
    std::filesystem::remove(program);
    sendmail = folder.File("sendmail", "#!/bin/sh\ncat >/dev/null; " + std::string(end) + "\n");
    std::filesystem::permissions(sendmail, std::filesystem::perms::owner_all);
    Profile("Transport=sendmail\r\n");
    EXPECT_EQ(Send(), kMailFailed) << end;
    EXPECT_EQ(session.Fate(), fate) << end;
  }
  sendmail = folder.Path() + "/none";
  Send();
  EXPECT_EQ(session.Fate(), MailFate::Barred);
}

TEST_F(MailTest, TheOutboxGetsOneFileAndAnUnwritableOneFails) {
  Profile("Transport=outbox\r\n");
  EXPECT_EQ(Send(), 0);
  const auto files = ListFiles(folder.Path() + "/Outbox/*.*");
  ASSERT_EQ(files.size(), 1U);
  EXPECT_NE(ReadFile(folder.Path() + "/Outbox/" + files[0]).find("\r\nSubject: Hello\r\n"), std::string::npos);
  EXPECT_EQ(session.Taker(), "the outbox folder " + folder.Path() + "/Outbox");
  Profile("Transport=outbox\r\nFolder=" + folder.File("file", "") + "/sub\r\n");
  EXPECT_EQ(Send(), kMailFailed);
}

TEST_F(MailTest, NothingThatIsNoAddressReachesACommand) {
  for (const char* address : {"", "a", "a@", "@b", "a@b@c", "a b@c", "a@b\r\nRCPT TO:<x@y>", "<a@b>", "a@b,c@d"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
  EXPECT_TRUE(IsMailAddress("o'neill+lease@mail.example.com"));
  EXPECT_EQ(ParseMailAddress("\"Lease, Team\" <team@example.com>").name, "Lease, Team");
  Profile("Transport=outbox\r\nFrom=\"Lease, Team\" <team@example.com>\r\n");
  session.SignOn(ini, "work");
  session.Compose();
  EXPECT_THROW(session.AddRecipient("x", "SMTP:a@b\nc@d"), RuntimeError);
  EXPECT_THROW(session.Attach(folder.Path() + "/none", "none"), RuntimeError);
}

TEST_F(MailTest, ProfilesAreKeptAndMistakesInThemNamed) {
  MailProfile profile;
  profile.name = "Büro";
  profile.security = MailSecurity::Tls;
  profile.server = "mail.example.com:465";
  profile.passwordCommand = R"(pass "mail lease")";
  SaveMailProfile(ini, profile);
  EXPECT_EQ(DefaultMailProfileName(ini), "Büro");
  EXPECT_EQ(MailProfileNames(ini), std::vector<std::string>{"Büro"});
  profile.name = "büro";
  EXPECT_EQ(LoadMailProfile(ini, "büro"), profile);
  ForgetDefaultMailProfile(ini);
  EXPECT_EQ(DefaultMailProfileName(ini), "");
  Profile("Transport=pigeon\r\nServer=here\r\n[other]\r\nTransport=outbox\r\n");
  EXPECT_EQ(Send(), kMailLoginRefused);
  std::string mistake;
  EXPECT_EQ(LoadMailProfile(ini, "work", &mistake).server, "here");
  EXPECT_NE(mistake.find("\"pigeon\" is none of smtp"), std::string::npos);
  RemoveMailProfile(ini, "WORK");
  EXPECT_EQ(MailProfileNames(ini), std::vector<std::string>{"other"});
  EXPECT_EQ(DefaultMailProfileName(ini), "");
  Profile("Transport=smtp\r\n");
  EXPECT_EQ(Send(), kMailLoginRefused);
  EXPECT_THROW(LoadMailProfile(ini, "none"), RuntimeError);
}

}  // namespace tarvolinex
