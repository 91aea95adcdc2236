// The window itself: size, tabs, what it remembers, new databases.
#include "store/SharedDatabase.h"
#include "support/Fixture.h"
#include "ui/main/FRmCreateDB.h"

namespace tarvolinex {

using MainWindowTest = SampleTest;

TEST_F(MainWindowTest, TheMakersPageIsAskedForThisInstallation) {
  WebServer = "www.example.com";
  CustomerReference = "42";
  CalculatorPreferences.OrgCompanyName = "A & B Ltd";
  form->menus.MnuUpgrades.Choose();
  EXPECT_TRUE(desktop.launched.at(0).starts_with(
      "open http://www.example.com\\checkversion.asp?ref=42&org=A & B Ltd&ver=" TARVOLINEX_VERSION "|"));
}

TEST_F(MainWindowTest, SizeColumnsAndSortAreRemembered) {
  form->Resized(20000, 12000);
  form->LvwSuppliers.Columns()[2].width = 4321;
  for (const int birmingham : {0, 11}) {
    form->LvwSuppliers.ClickColumn(4);
    EXPECT_EQ(form->LvwSuppliers.At(birmingham).cells[3], "Birmingham");
  }
  form->Close();
  form.reset();
  form = std::make_unique<FrmMain>(run);
  form->Load();
  EXPECT_EQ(form->StartWidth, 20000);
  EXPECT_EQ(form->StartHeight, 12000);
  EXPECT_EQ(form->LvwSuppliers.Columns()[2].width, 4321);
  EXPECT_EQ(form->LvwSuppliers.At(11).cells[3], "Birmingham");
}

TEST_F(MainWindowTest, FromASharedDatabaseAFileIsOpenedOrMade) {
  if (!OnServer()) GTEST_SKIP() << "a file is not shared";
  const std::string shared = run.SharedDatabase, home = folder.Path() + "/home";
  RememberSharedDatabase(AppFolder, {true, shared});
  std::filesystem::rename(folder.Path() + "/Database.zip", AppFolder + "/Database.Bak");
  bool askUser = true;
  EXPECT_FALSE(form->OpenDatabase(askUser)) << "nothing was chosen";
  EXPECT_EQ(run.SharedDatabase, shared);
  EXPECT_FALSE(form->database.Plain().IsFile());
  FRmCreateDB create(run, [this](bool& ask) { return form->OpenDatabase(ask); });
  create.TxtFolder.SetText(home);
  desktop.answers = {Answer::Yes};
  create.cmdaction(0).Press();
  EXPECT_TRUE(create.Closed() && form->database.Plain().IsFile());
  run.SharedDatabase = shared;
  desktop.files = {home + "/Tarvolinex.mdb"};
  EXPECT_TRUE(form->OpenDatabase(askUser));
  EXPECT_TRUE(form->database.Plain().IsFile() && run.SharedDatabase.empty());
  EXPECT_FALSE(RememberedSharedDatabase(AppFolder).used);
  run.SharedDatabase = shared;
}

TEST_F(MainWindowTest, AFolderWithADatabaseIsRefused) {
  FRmCreateDB create(run, [this](bool& askUser) { return form->OpenDatabase(askUser); });
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
