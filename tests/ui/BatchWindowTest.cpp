#include "ui/batch/FrmBatch.h"

#include "platform/text/Text.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"
#include "ui/batch/FrmReaders.h"
#include "ui/batch/FrmSent.h"

namespace tarvolinex {

class BatchWindowTest : public SampleTest {
 protected:
  BatchWindowTest() {
    SaveCalculatorPreferences(OwnBranding(), run);
    folder.File("Mail.INI", "[PROFILES]\nDefaultProfile=out\n[out]\nTransport=outbox\n");
    batch.Load();
  }
  std::string LastBox() { return desktop.boxes.empty() ? "(none)" : desktop.boxes.back().text; }
  std::string Results() {
    std::string all;
    for (const ListView::Row& row : batch.LvwReport.Rows()) all += row.cells[1] + " ";
    return all;
  }
  FrmBatch batch{run, form->database, OwnBranding(), {}, {3, 4}};
};

TEST_F(BatchWindowTest, ThoseFoundAreSentOneAndTheListTellsIt) {
  batch.CmdGo.Press();
  EXPECT_EQ(LastBox(), "Please tick at least one Dealer");
  batch.CmdTick(kTickFound).Press();
  batch.CmdGo.Press();
  EXPECT_EQ(LastBox(), "Please enter a subject");
  batch.TxtSubject.SetText("For <FIRSTNAME>");
  batch.TxtMessage.SetText("Hello <FIRSTNAME>");
  batch.CmdTry.Press();
  ASSERT_EQ(batch.LvwReport.Count(), 2);
  const std::string detail = batch.LvwReport.At(0).cells[2];
  EXPECT_EQ(detail.find("<FIRSTNAME>"), std::string::npos) << detail;
  EXPECT_TRUE(ListFiles(AppFolder + "\\Outbox\\*.eml").empty());
  desktop.modal = [](Window& window) {
    auto& readers = dynamic_cast<FrmReaders&>(window);
    EXPECT_EQ(readers.LblCount.Caption(), "2 of 2 contacts");
    readers.TxtFilter.SetText("saxonholt");
    readers.CmdNone.Press();
    readers.CmdOk.Press();
  };
  batch.CmdChoose.Press();
  batch.CboTo.Choose(kToChosen);
  batch.CmdChoose.Press();
  batch.CmdTry.Press();
  ASSERT_EQ(batch.LvwReport.Count(), 1);
  EXPECT_EQ(batch.LvwReport.At(0).text.substr(0, 9), "Wrenmarsh");
  batch.CboTo.Choose(kToAll);
  batch.CmdGo.Press();  // the question is answered with no
  EXPECT_EQ(LettersLeft(form->database), 0);
  desktop.answers = {Answer::Yes};
  batch.CmdGo.Press();
  EXPECT_EQ(Results(), "sent sent ");
  EXPECT_EQ(ListFiles(AppFolder + "\\Outbox\\*.eml").size(), 2U);
  int current = 0, ticked = 0;
  for (const ListView::Row& row : batch.LvwWho.Rows()) {
    current += row.cells[0] == "current" ? 1 : 0;
    ticked += row.checked ? 1 : 0;
  }
  EXPECT_EQ(current - ticked, 2) << "what is done is not ticked any more";
  batch.CmdTick(kTickNever).Press();
  EXPECT_FALSE(batch.LvwWho.At(batch.LvwWho.Find("ID3")).checked);
  EXPECT_TRUE(batch.LvwWho.At(batch.LvwWho.Find("ID1")).checked);
}

TEST_F(BatchWindowTest, StopKeepsWhatIsLeftForTheNextTime) {
  batch.CmdTick(kTickAll).Press();
  batch.TxtSubject.SetText("x");
  batch.TxtMessage.SetText("Hello");
  desktop.answers = {Answer::Yes};
  desktop.events = [&] {
    if (batch.CmdStop.Enabled()) batch.CmdStop.Press();
  };
  batch.CmdGo.Press();
  const int left = LettersLeft(form->database);
  EXPECT_GT(left, 0);
  EXPECT_NE(Results().find("left"), std::string::npos);
  EXPECT_TRUE(batch.CmdGo.Enabled());
  EXPECT_EQ(batch.CmdGo.Caption(), "&Go On");
  batch.TxtSubject.Type("y");
  EXPECT_EQ(batch.TxtSubject.Text(), "x") << "what is left goes as it was written";
  FrmBatch later{run, form->database, OwnBranding(), {}, {}};
  later.Load();
  EXPECT_EQ(later.TxtMessage.Text(), "Hello");
  later.OpWhat(kBatchPublish).SetValue(true);
  EXPECT_EQ(later.TxtMessage.Text(), "");
  batch.OpWhat(kBatchPublish).SetValue(true);
  batch.CmdGo.Press();
  EXPECT_EQ(LastBox(), "Please choose a folder") << "not what the letters are to do";
  batch.OpWhat(kBatchSend).SetValue(true);
  int looks = 0;
  desktop.events = [&] {
    if (looks == 0) batch.CmdPause.Press();
    if (++looks < 9) {
      EXPECT_EQ(LettersLeft(form->database), left) << "nothing leaves while it rests";
    }
    if (looks == 9) batch.CmdPause.Press();
  };
  desktop.answers = {Answer::Yes};
  batch.CmdGo.Press();
  EXPECT_GT(looks, 9);
  EXPECT_EQ(LettersLeft(form->database), 0);
}

TEST_F(BatchWindowTest, FoldersOfManyWithAReport) {
  form->database.ExecuteStatement("UPDATE suppliers SET Yield0='NaN' WHERE ID=3");
  batch.OpWhat(kBatchPublish).SetValue(true);
  batch.CmdTick(kTickFound).Press();
  batch.TxtFolder.SetText(folder.Path() + "\\out");
  batch.CmdGo.Press();
  const std::string report = ReadFile(folder.Path() + "/out/report.csv");
  EXPECT_NE(report.find("3,Saxonholt Dental Systems Ltd,failed,\"Saxonholt"), std::string::npos) << report;
  EXPECT_NE(report.find("4,Wrenmarsh Agricultural Plant Ltd,done,,"), std::string::npos) << report;
  EXPECT_TRUE(FileExists(folder.Path() + "/out/4 Wrenmarsh Agricultural Plant Ltd/calc.html"));
}

TEST_F(BatchWindowTest, WhatWentOutIsFoundAndSentAgain) {
  NoteDelivery(form->database, {OwnBranding(), ReadSupplier(form->database, 1).settings, {}},
               {{"2026-11-25 09:00:00", 1, "=Aldermoor", 1, "Helen", "h@x.example", "zip", "sent", "Subject", "Text"},
                {"2026-11-25 10:00:00", 2, "Quillbeck", 0, "", "", "exe", "made", "", ""}},
               run);
  form->database.ExecuteStatement("UPDATE Changes SET ChangedBy='carol' WHERE What='delivery' AND RowId=1");
  const bool tellsWho = OnServer();
  std::string opened;
  FrmSent sent(run, form->database,
               [&](int supplier, int contact) { opened = std::to_string(supplier) + "/" + std::to_string(contact); });
  sent.Load();
  EXPECT_EQ(sent.LvwSent.At(sent.LvwSent.Selected()).text, "2026-11-25 10:00:00") << "the latest first";
  EXPECT_FALSE(sent.CmdAgain.Enabled()) << "a file has no reader";
  sent.TxtSearch.SetText(tellsWho ? "HELEN zip CAROL" : "HELEN zip");
  EXPECT_EQ(sent.TxtMessage.Text(), "Subject\n\nText");
  sent.CmdAgain.Press();
  EXPECT_EQ(opened, "1/1");
  desktop.files = {folder.Path() + "/sent.csv"};
  sent.CmdSave.Press();
  EXPECT_EQ(ReadFile(folder.Path() + "/sent.csv"),
            "\xEF\xBB\xBF"
            "Date,SupplierID,CompanyName,Contact,Email,As,Result" +
                std::string(tellsWho ? ",By" : "") +
                "\r\n2026-11-25 09:00:00,1,'=Aldermoor,Helen,h@x.example,zip,sent" + (tellsWho ? ",carol" : "") +
                "\r\n");
  sent.TxtSearch.SetText("carol");
  EXPECT_EQ(sent.CmdOpen.Enabled(), tellsWho);
}

}  // namespace tarvolinex
