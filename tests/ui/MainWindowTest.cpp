// The window itself: size, tabs, what it remembers, new databases.
#include "support/Fixture.h"
#include "ui/main/FRmCreateDB.h"

namespace tarvolinex {

using MainWindowTest = SampleTest;

TEST_F(MainWindowTest, PartsFollowTheEdgesDownToTheSmallestSize) {
  form->Resized(18000, 11000);
  EXPECT_EQ(form->TabMain.Position(), (Control::Place{18000 - 150 - 10200, 1300, 10200, 11000 - 1850}));
  EXPECT_EQ(form->LvwSuppliers.Position().width, 18000 - 10200 - 200);
  form->Resized(100, 100);
  EXPECT_EQ(form->TabMain.Position().height, 8700 - 1850);
  EXPECT_EQ(form->LvwSuppliers.Position().width, 0);
  EXPECT_EQ(FrmMain::SmallestWidth(), 10200 + 200);
}

TEST_F(MainWindowTest, LeavingATabKeepsWhatTheUserTypedLast) {
  Type(Box(kBoxCapitalCost), "10000");
  Type(Box(kBoxYield), "8.5");
  form->TabMain.Choose(kTabSend);
  form->TabMain.Choose(kTabQuote);
  EXPECT_EQ(Box(kBoxYield).Text(), "8.50");
}

TEST_F(MainWindowTest, SizeColumnsAndSortAreRemembered) {
  form->Resized(20000, 12000);
  form->LvwSuppliers.Columns()[2].width = 4321;
  form->LvwSuppliers.ClickColumn(4);
  form->LvwSuppliers.ClickColumn(4);
  form->Close();
  form.reset();
  form = std::make_unique<FrmMain>();
  form->Load();
  EXPECT_EQ(form->StartWidth, 20000);
  EXPECT_EQ(form->StartHeight, 12000);
  EXPECT_EQ(form->LvwSuppliers.Columns()[2].width, 4321);
  EXPECT_EQ(form->LvwSuppliers.At(11).cells[3], "Birmingham");
}

TEST_F(MainWindowTest, ANewDatabaseIsMadeFromThePristinePackage) {
  TheStore->connection.Execute("DELETE FROM suppliers WHERE ID>5");
  const std::string target = folder.Path() + "/new/place";
  FRmCreateDB create;
  EXPECT_EQ(create.TxtFolder.Text(), "c:\\");
  desktop.files = {target};
  create.CmdBrowse.Press();
  EXPECT_EQ(create.TxtFolder.Text(), target);
  create.cmdaction(0).Press();
  EXPECT_EQ(desktop.boxes.at(0).text, "folder does not exist, Create?");
  EXPECT_FALSE(FolderExists(target) || create.Closed());
  desktop.answers = {Answer::Yes};
  create.cmdaction(0).Press();
  EXPECT_EQ(desktop.boxes.at(2).text, "New Database successfully created");
  EXPECT_TRUE(create.Closed());
  EXPECT_EQ(DataFolder, target);
  EXPECT_EQ(form->LvwSuppliers.Count(), 12);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE email<>'leases@example.com'"), "0");
  EXPECT_FALSE(FileExists(target + "\\Database.zip"));
}

TEST_F(MainWindowTest, AFolderWithADatabaseIsRefused) {
  FRmCreateDB create;
  create.TxtFolder.SetText(DataFolder);
  create.cmdaction(0).Press();
  EXPECT_EQ(desktop.boxes.at(0).text,
            "A database already exists in this folder:\n\n" + DataFolder + "\\\n\nPlease select another folder");
  EXPECT_FALSE(create.Closed());
  DeleteFile(AppFolder + "\\Database.Bak");
  create.TxtFolder.SetText(folder.Path() + "/other/");
  desktop.answers = {Answer::Yes};
  create.cmdaction(0).Press();
  EXPECT_EQ(desktop.boxes.at(2).title, "Error");
  EXPECT_FALSE(create.Closed());
  EXPECT_TRUE(ListFiles(folder.Path() + "/other/*.*").empty());
}

}  // namespace tarvolinex
