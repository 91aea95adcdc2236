#include "distribute/Upload.h"

#include <ctime>
#include <set>

#include "platform/text/Text.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

class UploadTest : public WindowTest {
 protected:
  UploadTest() { folder.File("CalcInstall.exe", file); }
  bool Upload(const LoopbackServer& server) { return UploadFile(AppFolder + "\\CalcInstall.exe", server.Host(), run); }
  std::string Shown() {
    std::string texts;
    for (const auto& box : desktop.boxes)
      texts += box.title + "/" + box.text.substr(0, box.text.find("\r\n\r\n")) + ";";
    desktop.boxes.clear();
    return texts;
  }
  const std::string file = "MZ\0\r\n--AaB03x\xFF" + std::string(100'000, 'x');
};

TEST_F(UploadTest, TheRequestIsByteForByteAsTheServerExpectsIt) {
  const LoopbackServer server("http", folder.Path(), {"SUCCESS"});
  EXPECT_TRUE(Upload(server));
  const std::string head = ReadFile(folder.Path() + "/head");
  EXPECT_EQ(head.substr(0, head.find('\n')), "POST /download/upload.asp");
  EXPECT_NE(head.find("Content-Type: multipart/form-data, boundary=AaB03x\n"), std::string::npos) << head;
  EXPECT_EQ(head.find("Expect"), std::string::npos);
  EXPECT_EQ(ReadFile(folder.Path() + "/body"),
            "--AaB03x\r\nContent-Disposition: attachment; name=\"FILE1\"; filename=\"" + folder.Path() +
                "/CalcInstall.exe\"\r\nContent-Type: text/plain\r\n\r\n" + file + "\r\n--AaB03x--");
  EXPECT_EQ(Shown(), "");
}

TEST_F(UploadTest, AnswersOfTheServer) {
  struct Case {
    std::vector<std::string> answer;
    bool accepted;
    const char* shown;
  };
  for (const Case& c : {
           Case{{"<STATUS>File received</STATUS>", "SUCCESS"}, true, "File Upload/File received;"},
           Case{{"<STATUS>\x1b]0;x\a Bad\x1b[2J\bnews\r</STATUS>", "SUCCESS"}, true, "File Upload/]0;x Bad[2Jnews\n;"},
           Case{{"Upload success"}, true, ""},
           Case{{"success", "<STATUS>one", "error</STATUS>"}, false, "File Upload/one error;"},
           Case{{}, false, ""},
           Case{{"OK"}, false, ""},
           Case{{"SUCCESS", "</STATUS><STATUS>open"}, true, ""},
           Case{{"SUCCESS", "<STATUS></STATUS>"}, true, ""},
           Case{{"SUCCESS", "500"}, false, "Error/File Upload failed;"},
           Case{{"SUCCESS", "404"}, false, "Error/File Upload failed;"},
           Case{{"drop"}, false, "Error/File Upload failed;"},
       }) {
    const LoopbackServer server("http", folder.Path(), c.answer);
    EXPECT_EQ(Upload(server), c.accepted) << (c.answer.empty() ? "" : c.answer[0]);
    EXPECT_TRUE(c.accepted || (!desktop.busy && form->ProgressBar1.Value() == 0));
    EXPECT_EQ(Shown(), c.shown);
  }
  EXPECT_FALSE(UploadFile(AppFolder + "\\CalcInstall.exe", "127.0.0.1:1", run));
  EXPECT_NE(desktop.boxes.at(0).text.find("127.0.0.1:1"), std::string::npos);
  EXPECT_NE(desktop.boxes.at(0).text.find("\r\n\r\nPlease check"), std::string::npos);
  EXPECT_EQ(Shown(), "Error/File Upload failed;");
  EXPECT_NE(form->TxtStatus.Text().find("127.0.0.1:1"), std::string::npos);
}

TEST_F(UploadTest, AFullDiskIsNamedWithTheFileThatFoundNoRoom) {
  const FullDisk full(50'000);
  EXPECT_EQ(TransferInstallFile(AppFolder, {WebServer, CustomerReference}, run), std::nullopt);
  const std::string text = desktop.boxes.at(0).text;
  EXPECT_EQ(text.substr(0, text.find('/')), "File Upload failed\r\n\r\nWriting ");
  EXPECT_NE(text.find("/CalcInstall_" + UploadIdentifier(CustomerReference, desktop.now) + ".exe: "), std::string::npos)
      << text;
}

TEST_F(UploadTest, NothingOfATransferStaysBehind) {
  CustomerReference = "7";
  folder.File("CalcInstall_old.exe", "");
  {
    const LoopbackServer server("http", folder.Path(), {"ERROR"});
    WebServer = server.Host();
    EXPECT_EQ(TransferInstallFile(AppFolder, {WebServer, CustomerReference}, run), std::nullopt);
    EXPECT_EQ(ListFiles(AppFolder + "\\CalcInstall_*"), std::vector<std::string>{"CalcInstall_old.exe"});
  }
  const LoopbackServer server("http", folder.Path(), {"SUCCESS"});
  WebServer = server.Host();
  EXPECT_EQ(TransferInstallFile(AppFolder, {WebServer, CustomerReference}, run),
            UploadIdentifier(CustomerReference, desktop.now));
  EXPECT_TRUE(ListFiles(AppFolder + "\\CalcInstall_*").empty());
}

TEST_F(UploadTest, TheIdentifierIsTheReferenceAndTheSecondsOfLocalTime) {
  std::tm moment{};
  moment.tm_year = 103;
  moment.tm_mon = 2;
  moment.tm_mday = 14;
  moment.tm_hour = 10;
  moment.tm_isdst = -1;
  const auto now = std::chrono::system_clock::from_time_t(std::mktime(&moment));
  for (const auto& [reference, written] : std::vector<std::pair<std::string, std::string>>{
           {"123", "000123"},
           {"0007", "000007"},
           {"", "000000"},
           {"1234567", "1234567"},
           {"123456789012345678", "123456789012345678"},
           {"98765432109876543210987654321", "98765432109876543210987654321"}}) {
    CustomerReference = reference;
    EXPECT_EQ(UploadIdentifier(CustomerReference, now), written + "132487200");  // 1,533 days and ten hours
  }
}

TEST_F(UploadTest, TheVersionPageIsAskedForThisInstallation) {
  WebServer = "www.example.com";
  CustomerReference = "42";
  CalculatorPreferences.OrgCompanyName = "A & B Ltd";
  form->menus.MnuUpgrades.Choose();
  EXPECT_EQ(desktop.launched.at(0).substr(0, desktop.launched[0].find('|')),
            "open http://www.example.com\\checkversion.asp?ref=42&org=A & B Ltd&ver=" TARVOLINEX_VERSION);
}

}  // namespace tarvolinex
