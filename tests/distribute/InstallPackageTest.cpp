#include "distribute/InstallPackage.h"

#include "publish/CalculatorFolder.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"

namespace tarvolinex {

class InstallPackageTest : public SampleTest {
 protected:
  InstallPackageTest() {
    CalculatorPreferences.AliasCalcName = "Lease Tool";
    SaveCalculatorPreferences(OwnBranding(), run);
    BuildCalculatorFolder(form->Calculator(), run);
  }
  // Lines that the program adds to the set-up list.
  std::string Added() {
    const std::string list = ReadFile(CalculatorFolder() + "Setup.lst");
    const auto at = list.find("File7=");
    return at == std::string::npos ? "" : list.substr(at);
  }
  void RemoveFromFolder(const std::string& pattern) {
    for (const auto& name : ListFiles(CalculatorFolder() + pattern)) DeleteFile(CalculatorFolder() + name);
  }
  // Names in the archive, as another program reads them.
  std::string Listed(const std::string& archive) {
    const std::string names = folder.Path() + "/names.txt";
    const std::string read =
        "/usr/bin/python3 -W error -c \"import sys, zipfile; z = zipfile.ZipFile(sys.argv[1]); "
        "assert z.testzip() is None; print(' '.join(sorted(z.namelist())))\" '";
    EXPECT_EQ(std::system((read + NativePath(archive) + "' > " + names).c_str()), 0);
    return ReadFile(names);
  }
  bool Pack(const std::optional<std::string>& chosen = {}) {
    return BuildDistFiles(OwnBranding(), form->send.SendType, chosen, run);
  }
  std::string BoxPath(const std::string& path) {
    form->send.TxtCalcCreate.SetText(path);
    return path;
  }
};

TEST_F(InstallPackageTest, TheSetUpListHoldsTheTitleAndEveryFileOfTheFolder) {
  RemoveFromFolder("*!*.html");
  folder.File("calculator/Größe!0.html", std::string(2345, 'x'));
  ASSERT_TRUE(Pack());
  EXPECT_EQ(Added(),
            "File7=logo.GIF,$(AppPath),,,3/4/3000 6:35:34 PM,6000,0.0.0.0\r\n"
            "File8=background.JPG,$(AppPath),,,3/4/3000 6:35:34 PM,6000,0.0.0.0\r\n"
            "File9=GR\xD6\xDF"
            "E!0.HTML,$(AppPath),,,3/24/3000 12:00:00 PM,2345,0.0.0.0\r\n");
  const std::string list = ReadFile(CalculatorFolder() + "Setup.lst");
  EXPECT_EQ(list.substr(0, 2), "\r\n");
  EXPECT_NE(list.find("Title=Lease Tool               \r\n"), std::string::npos) << list;
  RemoveFromFolder("logo.*");
  RemoveFromFolder("background.*");
  CalculatorPreferences.AliasCalcName = "";
  ASSERT_TRUE(Pack());
  EXPECT_NE(ReadFile(CalculatorFolder() + "Setup.lst").find("Title=Lease calculator "), std::string::npos);
  EXPECT_EQ(Added().substr(0, 6 + 5),
            "File7=GR\xD6\xDF"
            "E");
}

TEST_F(InstallPackageTest, AnIconThatNoProgramCanBearGivesWayToTheUsualOne) {
  CalculatorPreferences.IconName = "";
  form->send.SendType = kSendProgram;
  ASSERT_TRUE(Pack());
  const std::string usual = ReadFile(AppFolder + "\\CalcInstall.exe");
  folder.File("icons/DEEP.ICO", std::string(2238, 'x'));
  CalculatorPreferences.IconName = "DEEP";
  desktop.boxes.clear();
  ASSERT_TRUE(Pack());
  ASSERT_EQ(desktop.boxes.size(), 1U);
  EXPECT_NE(desktop.boxes[0].text.find("\"DEEP\" holds no picture"), std::string::npos);
  EXPECT_EQ(desktop.boxes[0].icon, BoxIcon::Exclamation);
  EXPECT_TRUE(ReadFile(AppFolder + "\\CalcInstall.exe").starts_with(usual.substr(0, 60'000)));
  form->send.SendType = kSendZip;
  ASSERT_TRUE(Pack());
  EXPECT_EQ(desktop.boxes.size(), 1U);  // a plain archive bears none
}

TEST_F(InstallPackageTest, WhatTravelsDependsOnTheWayAndOnThePreferences) {
  RemoveFromFolder("*!*.html");
  folder.File("calculator/CalcInstall.CAB", "cab");
  const std::string data = " Setup.lst Supplier.dat", pages = " calc.html calcdata.txt general.dat";
  CalculatorPreferences.ShowHeaderLogo = CalculatorPreferences.ShowBackground = true;
  CalculatorPreferences.IconName = "COINS";
  form->send.SendType = kSendProgram;
  ASSERT_TRUE(Pack());
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.exe"),
            "CalcInstall.CAB Setup.lst Supplier.dat background.JPG calc.html calc.ico "
            "calcdata.txt general.dat logo.GIF setup.exe\n");
  CalculatorPreferences.ShowHeaderLogo = false;
  form->send.SendType = kSendZip;
  ASSERT_TRUE(Pack());
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.zip"),
            "Setup.lst Supplier.dat background.JPG calc.html calc.ico calcdata.txt general.dat\n");
  CalculatorPreferences.ShowBackground = false;
  form->send.SendType = kSendLink;
  ASSERT_TRUE(Pack());
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.exe"),
            "Setup.lst Supplier.dat calc.html calc.ico calcdata.txt general.dat\n");
  // A file made by hand after a link was sent is whole.
  ASSERT_TRUE((BoxPath(folder.Path() + "/mine.exe"), Pack(form->send.TxtCalcCreate.Text())));
  EXPECT_NE(Listed(folder.Path() + "/mine.exe").find("setup.exe"), std::string::npos);
}

TEST_F(InstallPackageTest, NoInstallFileIsPackedIntoAnother) {
  for (const char* name : {"one.exe", "two.zip", "one.exe", "three.bin", "three.bin"}) {
    desktop.answers = {Answer::Yes};
    BoxPath(CalculatorFolder() + name);
    ASSERT_TRUE(Pack(form->send.TxtCalcCreate.Text()));
    EXPECT_EQ(Listed(CalculatorFolder() + name).find(name), std::string::npos);
    EXPECT_EQ(Listed(CalculatorFolder() + name).find("one.exe"), std::string::npos);
  }
}

TEST_F(InstallPackageTest, ACalculatorFolderThatIsReadOnlyIsReported) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  const AnotherUser user;
  if (!FolderExists(folder.Path())) GTEST_SKIP() << "no other user can reach " << folder.Path();
  BoxPath(folder.Path() + "/none.exe");
  form->send.CmdCalcGo(2).Press();
  EXPECT_TRUE(desktop.boxes.back().text.starts_with("Install File Creation Failed\r\n\r\nThe folder "));
  CalculatorPreferences.IconName = "COINS";
  EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
  EXPECT_TRUE(desktop.boxes.back().text.starts_with("Install File Creation Failed\r\n\r\nWriting "));
}

TEST_F(InstallPackageTest, AnExistingFileIsReplacedOnlyWhenTheUserAgrees) {
  BoxPath(folder.File("report.EXE", "old"));
  EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
  EXPECT_EQ(desktop.boxes.back().text, "A file of this name already exists.\n\nOverwrite?");
  EXPECT_EQ(ReadFile(folder.Path() + "/report.EXE"), "old");
  EXPECT_EQ(form->TxtStatus.Text(), "");
  EXPECT_FALSE(FileExists(CalculatorFolder() + "Setup.lst"));
  desktop.answers = {Answer::Yes};
  EXPECT_TRUE(Pack(form->send.TxtCalcCreate.Text()));
  EXPECT_EQ(ReadFile(folder.Path() + "/report.EXE").substr(0, 2), "MZ");
}

TEST_F(InstallPackageTest, AFailureIsReportedAndLeavesNoHalfFile) {
  struct Case {
    std::string path, message;
  };
  for (const Case& c : {Case{"", "Invalid File Name"}, Case{folder.Path(), "Invalid File Name"},
                        Case{folder.Path() + "/none/x.zip", "Install file creation failed.\n\n"},
                        Case{folder.Path() + "/none/x.exe", "Install file creation failed.\n\n"}}) {
    BoxPath(c.path);
    EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
    EXPECT_EQ(desktop.boxes.back().text.substr(0, c.message.size()), c.message);
  }
  BoxPath(folder.Path() + "/x.exe");
  std::filesystem::remove(folder.Path() + "/Xcdsfx32.bin");
  EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
  EXPECT_NE(desktop.boxes.back().text.find("Xcdsfx32.bin"), std::string::npos);
  std::filesystem::remove(folder.Path() + "/Setup.lst");
  EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
  EXPECT_EQ(desktop.boxes.back().text.substr(0, 40), "Install File Creation Failed\r\n\r\nReading ");
  EXPECT_TRUE(ListFiles(AppFolder + "\\x.*").empty());
}

TEST_F(InstallPackageTest, AFullDiskLeavesTheOldPackageAndNoHalfOne) {
  BoxPath(folder.File("x.exe", "old"));
  desktop.answers = {Answer::Yes};
  {
    const FullDisk full(30'000);
    EXPECT_FALSE(Pack(form->send.TxtCalcCreate.Text()));
  }
  EXPECT_EQ(desktop.boxes.back().text.substr(0, 30), "Install file creation failed.\n");
  EXPECT_EQ(ListFiles(AppFolder + "\\x.*"), std::vector<std::string>{"x.exe"});
  EXPECT_EQ(ReadFile(folder.Path() + "/x.exe"), "old");
}

TEST_F(InstallPackageTest, TheFileTypeFollowsThePathAndThePathTheType) {
  SendPanel& panel = form->send;
  BoxPath("report.EXE");
  EXPECT_EQ(panel.cmboFileType.ListIndex(), 0);
  panel.cmboFileType.Choose(1);
  EXPECT_EQ(panel.TxtCalcCreate.Text(), "report.Zip");
  panel.cmboFileType.Choose(0);
  EXPECT_EQ(panel.TxtCalcCreate.Text(), "report.Exe");
  BoxPath(" a.zip ");
  EXPECT_EQ(panel.cmboFileType.ListIndex(), 1);
}

TEST_F(InstallPackageTest, TheSendTabMakesOneAndRemembersItsPath) {
  SendPanel& panel = form->send;
  form->TabMain.Choose(kTabSend);
  EXPECT_TRUE(panel.FraCalCreate(0).Visible());
  panel.OpCalcCreate(1).SetValue(true);
  EXPECT_FALSE(panel.FraCalCreate(0).Visible());
  EXPECT_TRUE(panel.FraCalCreate(1).Visible());
  desktop.files = {folder.Path() + "/made.zip"};
  panel.CmdCalcGo(1).Press();
  EXPECT_EQ(panel.TxtCalcCreate.Text(), folder.Path() + "/made.zip");
  panel.TxtCalcCreate.SetFocus();
  panel.TxtCalcCreate.KeyUp(Key::Return);
  EXPECT_EQ(desktop.boxes.back().text, "Calculator install file created succesfully");
  EXPECT_TRUE(FileExists(folder.Path() + "/made.zip"));
  EXPECT_NE(ReadFile(folder.Path() + "/General.INI").find("LASTINSTALLFILE=" + folder.Path() + "/made.zip"),
            std::string::npos);
  EXPECT_TRUE(form->menus.MnuFile.Enabled());
  BoxPath(folder.Path() + "/bare");
  panel.cmboFileType.Choose(1);
  panel.CmdCalcGo(2).Press();
  EXPECT_EQ(ReadFile(folder.Path() + "/bare.zip").substr(0, 2), "PK");
}

}  // namespace tarvolinex
