#include "platform/network/Mail.h"

#include "platform/RuntimeError.h"
#include "platform/text/Json.h"
#include "platform/text/Text.h"
#include "support/Fixture.h"
#include "support/KeyRing.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

class MailTest : public ProgramTest {
 protected:
  MailTest() {
    session.DefaultSender = {"Ann Whitlöck", "ann@example.com"};
    session.Patience = {std::chrono::milliseconds(2000), std::chrono::milliseconds(1000)};
    folder.File("CalcInstall.exe", attachment);
  }
  std::string Ini() const { return folder.Path() + "/Mail.INI"; }
  void Profile(const std::string& keys) {
    folder.File("Mail.INI", "[PROFILES]\r\nDefaultProfile=work\r\n[work]\r\n" + keys);
  }
  void Write(const std::string& subject, const std::string& text) {
    session.SignOn(Ini(), DefaultMailProfileName(Ini()));
    session.Compose();
    session.AddRecipient("Jörg \"J\" Müller, GmbH", "SMTP:joerg@example.com");
    session.AddRecipient("Bo", "SMTP:bo@example.com");
    session.SetSubject(subject);
    session.SetNoteText(text);
    session.Attach(folder.Path() + "/CalcInstall.exe", "CalcInstall.exe");
  }
  // 0 when the message was taken.
  int Send() {
    try {
      Write("Hello", "text");
      session.Send();
      session.SignOff();
      return 0;
    } catch (const RuntimeError& failure) {
      reason = failure.Description();
      EXPECT_NE(reason, "");
      return failure.Number();
    }
  }
  std::string Received(const std::string& name) {
    for (const auto& [key, value] : ParseJsonObject(ReadFile(folder.Path() + "/message.json"))) {
      if (key != name) continue;
      if (const auto* number = std::get_if<JsonNumber>(&value)) return number->text;
      if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "yes" : "no";
      return std::get<std::string>(value);
    }
    return "(none)";
  }
  void MakeCertificate(const std::string& host) {
    const std::string command = "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=" + host +
                                " -addext subjectAltName=DNS:" + host + " -keyout " + folder.Path() + "/key.pem -out " +
                                folder.Path() + "/cert.pem 2>/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  std::string TlsProfile(const LoopbackServer& server, const std::string& password) {
    return "Transport=smtp\r\nServer=" + server.NamedHost() + "\r\nUser=ann\r\nPasswordCommand=echo '" + password +
           "'; echo more\r\nCaFile=" + folder.Path() + "/cert.pem\r\n";
  }
  const std::string attachment = "MZ\0\r\n.\r\n\n\xFF" + std::string(1000, 'x');
  MailSession session;
  std::string reason;
};

TEST_F(MailTest, AServerGetsTheWholeMessage) {
  const LoopbackServer server("smtp", folder.Path());
  Profile("Transport=smtp\r\nSecurity=none\r\nServer=" + server.Host() + "\r\n");
  const std::string text = "Grüße\r\n.\r\nFrom here\r\n" + std::string(2000, 'l') + "\r\n";
  Write("Ihr Rechner – für Sie\r\nBcc: evil@example.com", text);
  session.Send();
  session.SignOff();
  EXPECT_EQ(Received("sender"), "ann@example.com");
  EXPECT_EQ(Received("recipients"), "joerg@example.com,bo@example.com");
  EXPECT_EQ(Received("from"), "Ann Whitlöck <ann@example.com>");
  EXPECT_EQ(Received("to"), R"("Jörg \"J\" Müller, GmbH" <joerg@example.com>, Bo <bo@example.com>)");
  EXPECT_EQ(Received("subject"), "Ihr Rechner – für Sie  Bcc: evil@example.com");
  EXPECT_EQ(Received("headers"), "Content-Type,Date,From,MIME-Version,Message-Id,Subject,To");
  EXPECT_EQ(ReplaceAll(Received("text"), "\r\n", "\n"), ReplaceAll(text, "\r\n", "\n"));
  EXPECT_EQ(Received("attachment"), "CalcInstall.exe");
  EXPECT_EQ(ReadFile(folder.Path() + "/attachment"), attachment);
  EXPECT_EQ(Received("defects"), "");
  EXPECT_LE(std::stoi(Received("longest")), 78);
}

TEST_F(MailTest, TheConnectionIsEncryptedAndThePasswordComesFromItsCommand) {
  MakeCertificate("localhost");
  const LoopbackServer server("smtp", folder.Path(), {"tls"});
  Profile(TlsProfile(server, "right word"));
  EXPECT_EQ(Send(), 0);
  EXPECT_EQ(Received("tls") + Received("user"), "yesann");
}

TEST_F(MailTest, WithoutACommandThePasswordIsTheKeyStores) {
  MakeCertificate("localhost");
  const LoopbackServer server("smtp", folder.Path(), {"tls"});
  const std::string keys = TlsProfile(server, "");
  Profile(keys.substr(0, keys.find("PasswordCommand")) + keys.substr(keys.find("CaFile")));
  EXPECT_EQ(Send(), kMailLoginRefused);  // there is no key store
  EXPECT_FALSE(FileExists(folder.Path() + "/message.json"));
  session = {};
  session.DefaultSender.address = "ann@example.com";
  session.Password = "right word";
  EXPECT_EQ(Send(), 0);
  std::filesystem::remove(folder.Path() + "/message.json");
  const KeyRing keyRing(folder.Path());
  const Login login{"LOCALHOST", "ann"};
  session = {};
  session.DefaultSender.address = "ann@example.com";
  EXPECT_EQ(Send(), kMailLoginRefused);  // it has none
  StorePassword(login, "wrong word");
  StorePassword(login, "right word");
  EXPECT_FALSE(HasStoredPassword({"localhost", "bo"}));
  EXPECT_TRUE(HasStoredPassword({server.NamedHost(), "ann"}));
  session = {};
  session.DefaultSender.address = "ann@example.com";
  EXPECT_EQ(Send(), 0);
  EXPECT_EQ(Received("tls") + Received("user"), "yesann");
  EXPECT_THROW(StoredPassword(login, [](std::int64_t, std::int64_t) { return false; }), RuntimeError);
  ForgetPassword(login);
  EXPECT_EQ(StoredPassword(login), std::nullopt);
  ForgetPassword(login);
}

TEST_F(MailTest, AWrongPasswordAndAWrongCertificateAreRefused) {
  MakeCertificate("localhost");
  const LoopbackServer server("smtp", folder.Path(), {"tls"});
  Profile(TlsProfile(server, "wrong word"));
  EXPECT_EQ(Send(), kMailLoginRefused);
  MakeCertificate("elsewhere");
  const LoopbackServer impostor("smtp", folder.Path(), {"tls"});
  session = {};
  Profile(TlsProfile(impostor, "right word"));
  session.DefaultSender.address = "ann@example.com";
  EXPECT_EQ(Send(), kMailFailed);
  EXPECT_FALSE(FileExists(folder.Path() + "/message.json"));
}

TEST_F(MailTest, APasswordCommandMayNeitherPrintWithoutEndNorTakeForEverNorWriteToTheTerminal) {
  for (const auto& [command, why] : std::vector<std::pair<std::string, std::string>>{
           {"yes", "prints without end"},
           {"yes >&2", "prints without end"},
           {"sleep 60", "took too long"},
           {R"(printf 'a\033[31m\a\302\233b' >&2; exit 1)", "The password command failed: a[31mb"}}) {
    Profile("Transport=smtp\r\nServer=127.0.0.1:1\r\nUser=ann\r\nPasswordCommand=" + command + "\r\n");
    session = {};
    session.DefaultSender.address = "ann@example.com";
    session.Patience.silent = std::chrono::milliseconds(1000);
    EXPECT_EQ(Send(), kMailLoginRefused) << command;
    EXPECT_NE(reason.find(why), std::string::npos) << reason;
  }
}

TEST_F(MailTest, FaultsOfTheServerEndTheMessage) {
  struct Case {
    const char* behaviour;
    int number;
    const char* reason;
  };
  for (const Case& c : {Case{"refuse", kMailRecipientRefused, "550 no mail today"},
                        Case{"refuse-second", kMailRecipientRefused, "550 no such user"},
                        Case{"drop", kMailFailed, "may have gone out all the same"},
                        Case{"later", kMailFailed, ": 451 try again later"}, Case{"silent", kMailFailed, "too long"},
                        Case{"chatty", kMailFailed, "the mail server"}}) {
    const LoopbackServer server("smtp", folder.Path(), {c.behaviour});
    Profile("Transport=smtp\r\nSecurity=none\r\nServer=" + server.Host() + "\r\n");
    session = {};
    session.DefaultSender.address = "ann@example.com";
    session.Patience.silent = std::chrono::milliseconds(1000);
    EXPECT_EQ(Send(), c.number) << c.behaviour;
    EXPECT_NE(reason.find(c.reason), std::string::npos) << reason;
    EXPECT_TRUE(c.behaviour == std::string("drop") || reason.find("gone out") == std::string::npos) << reason;
    EXPECT_THROW(session.SignOff(), RuntimeError);
    EXPECT_FALSE(FileExists(folder.Path() + "/message.json"));
  }
  Profile("Transport=smtp\r\nSecurity=none\r\nServer=127.0.0.1:1\r\n");
  session = {};
  session.DefaultSender.address = "ann@example.com";
  EXPECT_EQ(Send(), kNotConnected);
}

TEST_F(MailTest, TheOutboxGetsOneFileAndAnUnwritableOneFails) {
  Profile("Transport=outbox\r\n");
  EXPECT_EQ(Send(), 0);
  const auto files = ListFiles(folder.Path() + "/Outbox/*.*");
  ASSERT_EQ(files.size(), 1U);
  EXPECT_NE(ReadFile(folder.Path() + "/Outbox/" + files[0]).find("\r\nSubject: Hello\r\n"), std::string::npos);
  EXPECT_EQ(session.Taker(), "the outbox folder " + folder.Path() + "\\Outbox");
  Profile("Transport=outbox\r\nFolder=" + folder.File("file", "") + "/sub\r\n");
  EXPECT_EQ(Send(), kMailFailed);
}

TEST_F(MailTest, NothingThatIsNoAddressReachesACommand) {
  for (const char* address : {"", "a", "a@", "@b", "a@b@c", "a b@c", "a@b\r\nRCPT TO:<x@y>", "<a@b>", "a@b,c@d"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
  EXPECT_TRUE(IsMailAddress("o'neill+lease@mail.example.com"));
  Profile("Transport=outbox\r\nFrom=\"Lease, Team\" <team@example.com>\r\n");
  session.SignOn(Ini(), "work");
  session.Compose();
  EXPECT_THROW(session.AddRecipient("x", "SMTP:a@b\nc@d"), RuntimeError);
  EXPECT_EQ(ParseMailAddress("\"Lease, Team\" <team@example.com>").name, "Lease, Team");
  EXPECT_THROW(session.Attach(folder.Path() + "/none", "none"), RuntimeError);
}

TEST_F(MailTest, ProfilesAreKeptAndMistakesInThemNamed) {
  MailProfile profile;
  profile.name = "Büro";
  profile.security = MailSecurity::Tls;
  profile.server = "mail.example.com:465";
  profile.passwordCommand = R"(pass "mail lease")";
  SaveMailProfile(Ini(), profile);
  EXPECT_EQ(DefaultMailProfileName(Ini()), "Büro");
  EXPECT_EQ(MailProfileNames(Ini()), std::vector<std::string>{"Büro"});
  const MailProfile loaded = LoadMailProfile(Ini(), "büro");
  EXPECT_EQ(loaded.security, MailSecurity::Tls);
  EXPECT_EQ(loaded.server + loaded.passwordCommand, profile.server + profile.passwordCommand);
  ForgetDefaultMailProfile(Ini());
  EXPECT_EQ(DefaultMailProfileName(Ini()), "");
  Profile("Transport=pigeon\r\nServer=here\r\n[other]\r\nTransport=outbox\r\n");
  EXPECT_EQ(Send(), kMailLoginRefused);
  std::string mistake;
  EXPECT_EQ(LoadMailProfile(Ini(), "work", &mistake).server, "here");
  EXPECT_NE(mistake.find("\"pigeon\" is none of smtp"), std::string::npos);
  RemoveMailProfile(Ini(), "WORK");
  EXPECT_EQ(MailProfileNames(Ini()), std::vector<std::string>{"other"});
  EXPECT_EQ(DefaultMailProfileName(Ini()), "");
  Profile("Transport=smtp\r\n");
  EXPECT_EQ(Send(), kMailLoginRefused);
  EXPECT_THROW(LoadMailProfile(Ini(), "none"), RuntimeError);
}

}  // namespace tarvolinex
