#include "distribute/InstallPackage.h"

#include "publish/CalculatorFolder.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"

namespace tarvolinex {

class InstallPackageTest : public ProgramTest {
 protected:
  InstallPackageTest() {
    DeliverInto(folder.Path());
    for (const char* picture : {"logo/logo.GIF", "logo/background.JPG"}) folder.File(picture, "picture");
    folder.File("icons/COINS.ICO", ReadFile(ICONS_FOLDER "/COINS.ICO"));
    CalculatorPreferences.AliasCalcName = "Lease Tool";
    SaveCalculatorPreferences(OwnBranding(), run);
    BuildCalculatorFolder({OwnBranding(), {}, {}}, run);
  }
  // Lines that the program adds to the set-up list.
  std::string Added() {
    const std::string list = ReadFile(CalculatorFolder() + "Setup.lst");
    const auto at = list.find("File7=");
    return at == std::string::npos ? "" : list.substr(at);
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
  bool Pack(const std::optional<std::string>& chosen = {}, int way = kSendProgram) {
    return BuildDistFiles(OwnBranding(), way, chosen, run);
  }
  bool Said(const std::string& begin) { return desktop.boxes.back().text.starts_with(begin); }
};

TEST_F(InstallPackageTest, TheSetUpListHoldsTheTitleAndEveryFileOfTheFolder) {
  folder.File("calculator/Größe!0.html", std::string(2345, 'x'));
  ASSERT_TRUE(Pack());
  const std::string form = "=GR\xD6\xDF\x45!0.HTML,$(AppPath),,,3/24/3000 12:00:00 PM,2345,0.0.0.0\r\n";
  EXPECT_EQ(Added(),
            "File7=logo.GIF,$(AppPath),,,3/4/3000 6:35:34 PM,6000,0.0.0.0\r\n"
            "File8=background.JPG,$(AppPath),,,3/4/3000 6:35:34 PM,6000,0.0.0.0\r\nFile9" +
                form);
  const std::string list = ReadFile(CalculatorFolder() + "Setup.lst");
  EXPECT_EQ(list.substr(0, 2), "\r\n");
  EXPECT_NE(list.find("Title=Lease Tool               \r\n"), std::string::npos) << list;
  for (const char* picture : {"logo.GIF", "background.JPG"}) DeleteFile(CalculatorFolder() + picture);
  CalculatorPreferences.AliasCalcName = "";
  ASSERT_TRUE(Pack());
  EXPECT_NE(ReadFile(CalculatorFolder() + "Setup.lst").find("Title=Lease calculator "), std::string::npos);
  EXPECT_EQ(Added(), "File7" + form);
}

TEST_F(InstallPackageTest, AnIconThatNoProgramCanBearGivesWayToTheUsualOne) {
  ASSERT_TRUE(Pack());
  const std::string usual = ReadFile(AppFolder + "\\CalcInstall.exe");
  folder.File("icons/DEEP.ICO", std::string(2238, 'x'));
  CalculatorPreferences.IconName = "DEEP";
  ASSERT_TRUE(Pack());
  ASSERT_EQ(desktop.boxes.size(), 1U);
  EXPECT_NE(desktop.boxes[0].text.find("\"DEEP\" holds no picture"), std::string::npos);
  EXPECT_TRUE(ReadFile(AppFolder + "\\CalcInstall.exe").starts_with(usual.substr(0, 60'000)));
  ASSERT_TRUE(Pack({}, kSendZip));
  EXPECT_EQ(desktop.boxes.size(), 1U);  // a plain archive bears none
}

TEST_F(InstallPackageTest, WhatTravelsDependsOnTheWayAndOnThePreferences) {
  folder.File("calculator/CalcInstall.CAB", "cab");
  CalculatorPreferences.ShowHeaderLogo = CalculatorPreferences.ShowBackground = true;
  CalculatorPreferences.IconName = "COINS";
  ASSERT_TRUE(Pack());
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.exe"),
            "CalcInstall.CAB Setup.lst Supplier.dat background.JPG calc.html calc.ico "
            "calcdata.txt general.dat logo.GIF setup.exe\n");
  CalculatorPreferences.ShowHeaderLogo = false;
  ASSERT_TRUE(Pack({}, kSendZip));
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.zip"),
            "Setup.lst Supplier.dat background.JPG calc.html calc.ico calcdata.txt general.dat\n");
  CalculatorPreferences.ShowBackground = false;
  ASSERT_TRUE(Pack({}, kSendLink));
  EXPECT_EQ(Listed(AppFolder + "\\CalcInstall.exe"),
            "Setup.lst Supplier.dat calc.html calc.ico calcdata.txt general.dat\n");
  ASSERT_TRUE(Pack(folder.Path() + "/mine.exe", kSendLink));
  EXPECT_EQ(Listed(folder.Path() + "/mine.exe").find("setup.exe"), std::string::npos) << "one of many, for its link";
}

TEST_F(InstallPackageTest, NoMessageIsLargerThanIsSaidBefore) {
  folder.File("calculator/CalcInstall.CAB", std::string(50'000, 'c'));
  const Publication publication = {OwnBranding(), {}, {{1, "Form", "Form", true}}};
  BuildCalculatorFolder(publication, run);
  for (const int way : {kSendProgram, kSendZip}) {
    ASSERT_TRUE(Pack({}, way));
    const auto packed = FileLength(InstallFilePath(AppFolder, way));
    EXPECT_GT(LargestMessage(way, publication, 0), packed * 4 / 3) << way;
  }
  EXPECT_LT(LargestMessage(kSendLink, publication, 1000), 20'000);
}

TEST_F(InstallPackageTest, NoInstallFileIsPackedIntoAnother) {
  for (const char* name : {"one.exe", "two.zip", "one.exe", "three.bin", "three.bin"}) {
    desktop.answers = {Answer::Yes};
    ASSERT_TRUE(Pack(CalculatorFolder() + name));
    EXPECT_EQ(Listed(CalculatorFolder() + name).find(name), std::string::npos);
    EXPECT_EQ(Listed(CalculatorFolder() + name).find("one.exe"), std::string::npos);
  }
}

TEST_F(InstallPackageTest, ACalculatorFolderThatIsReadOnlyIsReported) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  const AnotherUser user;
  if (!FolderExists(folder.Path())) GTEST_SKIP() << "no other user can reach " << folder.Path();
  EXPECT_FALSE(CanPack(OwnBranding(), run));
  EXPECT_TRUE(Said("Install File Creation Failed\r\n\r\nThe folder "));
  CalculatorPreferences.IconName = "COINS";
  EXPECT_FALSE(Pack(folder.Path() + "/none.exe"));
  EXPECT_TRUE(Said("Install File Creation Failed\r\n\r\nWriting "));
}

TEST_F(InstallPackageTest, AnExistingFileIsReplacedOnlyWhenTheUserAgrees) {
  const std::string path = folder.File("report.EXE", "old");
  EXPECT_FALSE(Pack(path));
  ASSERT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(desktop.boxes[0].text, "A file of this name already exists.\n\nOverwrite?");
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_FALSE(FileExists(CalculatorFolder() + "Setup.lst"));
  desktop.answers = {Answer::Yes};
  EXPECT_TRUE(Pack(path));
  EXPECT_EQ(ReadFile(path).substr(0, 2), "MZ");
}

TEST_F(InstallPackageTest, AFailureIsReportedAndLeavesNoHalfFile) {
  const std::string app = folder.Path();
  const auto fails = [&](const std::string& path, const std::string& report) {
    EXPECT_FALSE(Pack(path));
    EXPECT_TRUE(Said(report)) << desktop.boxes.back().text;
  };
  fails("", "Invalid File Name");
  fails(app, "Invalid File Name");
  fails(app + "/none/x.zip", "Install file creation failed.\n\n");
  fails(app + "/none/x.exe", "Install file creation failed.\n\n");
  std::filesystem::remove(app + "/Xcdsfx32.bin");
  fails(app + "/x.exe", "Install file creation failed.\n\n");
  EXPECT_NE(desktop.boxes.back().text.find("Xcdsfx32.bin"), std::string::npos);
  std::filesystem::remove(app + "/Setup.lst");
  fails(app + "/x.exe", "Install File Creation Failed\r\n\r\nReading ");
  EXPECT_TRUE(ListFiles(AppFolder + "\\x.*").empty());
}

using SendTabTest = SampleTest;

TEST_F(SendTabTest, TheFileTypeFollowsThePathAndThePathTheType) {
  SendPanel& panel = form->send;
  panel.TxtCalcCreate.SetText("report.EXE");
  EXPECT_EQ(panel.cmboFileType.ListIndex(), 0);
  for (const auto& [type, path] : {std::pair{1, "report.Zip"}, {0, "report.Exe"}}) {
    panel.cmboFileType.Choose(type);
    EXPECT_EQ(panel.TxtCalcCreate.Text(), path);
  }
  panel.TxtCalcCreate.SetText(" a.zip ");
  EXPECT_EQ(panel.cmboFileType.ListIndex(), 1);
}

TEST_F(SendTabTest, MakesAnInstallFileAndRemembersItsPath) {
  SendPanel& panel = form->send;
  SaveCalculatorPreferences(OwnBranding(), run);
  form->TabMain.Choose(kTabSend);
  EXPECT_TRUE(panel.FraCalCreate(0).Visible());
  panel.OpCalcCreate(1).SetValue(true);
  EXPECT_TRUE(panel.FraCalCreate(1).Visible() && !panel.FraCalCreate(0).Visible());
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
  panel.TxtCalcCreate.SetText(folder.Path() + "/bare");
  panel.cmboFileType.Choose(1);
  panel.CmdCalcGo(2).Press();
  EXPECT_EQ(ReadFile(folder.Path() + "/bare.zip").substr(0, 2), "PK");
}

}  // namespace tarvolinex
