// Logo, background and icon of the options window.
#include "support/Hindrances.h"
#include "support/OptionsFixture.h"
#include "ui/iconedit/FrmIconEdit.h"

namespace tarvolinex {

class OptionsGraphicsTest : public WithOptions {
 protected:
  OptionsGraphicsTest() {
    options.Around.openIconEditor = [this](const std::string& icon, const FrmOptions::IconSaved&) {
      edited.push_back(icon);
    };
  }
  // Chooses the icon of that name; "" when the list has none.
  std::string Choose(const std::string& icon) {
    const auto& icons = options.CboIcons.Items();
    for (std::size_t i = 0; i < icons.size(); ++i) {
      if (icons[i].text == icon) options.CboIcons.Choose(static_cast<int>(i));
    }
    return options.PicIcon.Picture();
  }
  // Imports the picture by leaving its node; returns the names in the logo folder.
  std::string Import(const std::string& key, const std::string& path) {
    Select(key);
    options.TxtLogo.SetText(path);
    Select("GRAPHICS");
    std::string names;
    for (const auto& file : std::filesystem::directory_iterator(folder.Path() + "/logo")) {
      if (names.size() > 0) names += ' ';
      names += file.path().filename().string();
    }
    return names;
  }
  bool Has(const std::string& name) { return std::filesystem::exists(folder.Path() + "/logo/" + name); }
  const std::string gif = ReadFile(folder.Path() + "/logo/logo.GIF");
  std::vector<std::string> edited;
};

TEST_F(OptionsGraphicsTest, AnImportReplacesTheOldPictureAtOnce) {
  folder.File("logo/logo.old", "");
  Import("GRAPHICS2", folder.File("pics/brand.gif", gif));
  EXPECT_FALSE(Has("logo.old"));
  EXPECT_EQ(ReadFile(folder.Path() + "/logo/logo.GIF"), gif);
  std::filesystem::remove_all(folder.Path() + "/logo");
  EXPECT_EQ(Import("GRAPHICS4", folder.Path() + "/pics/brand.gif"), "background.GIF");
  EXPECT_TRUE(desktop.boxes.empty());
  // The picture that is in use survives its own import.
  EXPECT_EQ(Import("GRAPHICS4", folder.Path() + "/logo/background.GIF"), "background.GIF");
  EXPECT_EQ(ReadFile(folder.Path() + "/logo/background.GIF"), gif);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(OptionsGraphicsTest, WhatCannotBeImportedLeavesTheOldPicture) {
  const std::string jpg = ReadFile(folder.Path() + "/logo/background.JPG");
  const std::string large = folder.File("large.jpg", jpg);
  std::filesystem::resize_file(large, 100 << 20);
  struct Case {
    std::string path;
    const char *text, *title;
    BoxIcon icon;
  };
  for (const Case& c : std::initializer_list<Case>{
           {folder.Path() + "/none.gif", "Selected graphic could not be found.\r\n\r\nNot Imported", "Graphic Import",
            BoxIcon::Exclamation},
           {folder.File("photo.jpeg", jpg),
            "The File type Selected is not supported.\r\n\r\n(.BMP  .JPG  .PNG  .GIF) Supported", "Logo Import",
            BoxIcon::Exclamation},
           {folder.File("text.gif", "no picture"), "Importing Graphic Failed.", "Graphic Import", BoxIcon::Critical},
           {large, "Importing Graphic Failed.", "Graphic Import", BoxIcon::Critical},
           {folder.File("empty.png", ""), "Importing Graphic Failed.", "Graphic Import", BoxIcon::Critical}}) {
    Import("GRAPHICS2", c.path);
    EXPECT_EQ(desktop.boxes.back().text, c.text);
    EXPECT_EQ(desktop.boxes.back().title, c.title);
    EXPECT_EQ(desktop.boxes.back().icon, c.icon);
    EXPECT_EQ(ReadFile(folder.Path() + "/logo/logo.GIF"), gif);
  }
  std::filesystem::remove_all(folder.Path() + "/logo");
  folder.File("logo", "a file where the folder should be");
  Select("GRAPHICS2");
  options.TxtLogo.SetText(folder.File("brand.gif", gif));
  options.Cmd(1).Press();  // Cancel imports too
  EXPECT_EQ(desktop.boxes.back().text, "Importing Logo");
}

TEST_F(OptionsGraphicsTest, AReadOnlyDataFolderKeepsItsFiles) {
  using std::filesystem::perms;
  const auto allow = [&](unsigned bits) {
    for (const char* name : {"", "/logo", "/icons", "/Forms", "/Tarvolinex.mdb"}) {
      std::filesystem::permissions(folder.Path() + name, static_cast<perms>(bits));
    }
  };
  const std::string coins = ReadFile(DataFolder + "\\icons\\COINS.ICO"),
                    page = folder.File("page.html", "<title>New</title>");
  const std::string picture = folder.File("brand.gif", "GIF89a" + gif.substr(6));
  allow(0555);
  {
    const AnotherUser user;
    if (!std::ifstream(picture)) GTEST_SKIP() << "nobody else can come to the temporary folder";
    Import("GRAPHICS2", picture);
    EXPECT_EQ(desktop.boxes.back().text, "Importing Logo");
    desktop.files = {page};
    options.cmdForm(1).Press();
    EXPECT_EQ(desktop.boxes.back().text, "HTML import Failed");
    Select("FORMS2");
    options.txtForms(1).SetText("Renamed");
    Select("GRAPHICS");
    EXPECT_EQ(desktop.boxes.back().text, "Save form error");
    FrmIconEdit editor(run);
    editor.SavePic("COINS");
  }
  allow(0755);
  EXPECT_TRUE(Has("background.JPG"));
  EXPECT_EQ(ReadFile(folder.Path() + "/logo/logo.GIF"), gif);
  EXPECT_EQ(ReadFile(DataFolder + "\\icons\\COINS.ICO"), coins);
  EXPECT_EQ(ListFiles(DataFolder + "\\Forms\\*.*").size(), 4U);
}

TEST_F(OptionsGraphicsTest, EachPathStaysWithItsNode) {
  const std::string path = folder.File("brand.gif", gif);
  Select("GRAPHICS2");
  desktop.files = {path};
  options.CmdCoLog.Press();
  EXPECT_TRUE(FolderExists(AppFolder + "\\images"));  // where the dialog starts
  EXPECT_EQ(options.PicLogo.Picture(), path);
  options.TxtLogo.SetText(path + "x");
  EXPECT_EQ(options.PicLogo.Picture(), DataFolder + "\\logo\\logo.GIF");
  options.TxtLogo.SetText(path);
  EXPECT_EQ(options.TxtLogo.Text(), path);
  EXPECT_EQ(options.ActiveControl(), &options.TxtLogo);
  options.CmdCoLog.Press();  // cancelled
  Select("GRAPHICS4");
  EXPECT_EQ(options.TxtLogo.Text(), "");
  EXPECT_EQ(options.FraLogo.Caption(), "Import New Background Picture");
  Select("GRAPHICS2");
  EXPECT_EQ(options.TxtLogo.Text(), path);
  EXPECT_EQ(options.FraLogo.Caption(), "Import New Header Logo");
  options.Cmd(1).Press();
  EXPECT_TRUE(Has("background.JPG"));
}

TEST_F(OptionsGraphicsTest, TheStoredIconIsFoundWhateverItsLetters) {
  EXPECT_EQ(options.CboIcons.Items().front().text, "<New Icon>");
  EXPECT_EQ(options.CboIcons.Items().size(), 5U);
  EXPECT_EQ(options.PicIcon.Picture(), DataFolder + "\\icons\\COINS.ICO");
  Select("ICON");
  EXPECT_TRUE(options.FraIcon.Visible());
  EXPECT_EQ(Choose("CHART"), DataFolder + "\\icons\\CHART.ICO");
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "CHART");
  EXPECT_EQ(ReadFile(CalculatorFolder() + "calc.ico"), ReadFile(DataFolder + "\\icons\\CHART.ICO"));

  CalculatorPreferences.IconName = "Gone.ico";
  options.Load();
  EXPECT_EQ(desktop.boxes.back().text, "Your current icon [GONE] could not be found\r\n\r\nPlease select another");
  EXPECT_EQ(desktop.boxes.back().title, "Icon Selection");
  EXPECT_EQ(options.CboIcons.ListIndex(), -1);
  EXPECT_EQ(options.PicIcon.Picture(), "");
}

TEST_F(OptionsGraphicsTest, OnlyIconsOfTheTwoLengthsAndSizesAreTaken) {
  const std::string coins = ReadFile(DataFolder + "\\icons\\COINS.ICO");
  ASSERT_EQ(coins.size(), 766U);
  folder.File("icons/LONG.ICO", coins + std::string(2238 - 766, '\0'));
  folder.File("icons/NOISE.ICO", std::string(766, 'x'));
  folder.File("icons/WIDE.ICO", ReadFile(folder.Path() + "/logo/logo.GIF").substr(0, 766));
  folder.File("icons/DEPTH.ICO", coins.substr(0, 36) + "\x08" + coins.substr(37));
  folder.File("icons/TWO.ICO", coins + std::string(1078 - 766, '\0'));
  options.Load();
  for (const char* icon : {"LONG", "NOISE", "WIDE"}) {
    EXPECT_EQ(Choose("COINS"), DataFolder + "\\icons\\COINS.ICO");
    desktop.boxes.clear();
    EXPECT_EQ(Choose(icon), "") << icon;
    ASSERT_EQ(desktop.boxes.size(), 1U) << icon;
    EXPECT_EQ(desktop.boxes.back().text, "Invalid or unsupported file format.");
    EXPECT_EQ(desktop.boxes.back().icon, BoxIcon::Critical);
  }
  EXPECT_EQ(Choose("TWO"), DataFolder + "\\icons\\TWO.ICO");
  Select("ICON");
  EXPECT_EQ(Choose("DEPTH"), "");  // no install file takes it
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "COINS");
}

TEST_F(OptionsGraphicsTest, AFolderThatCannotBeListedIsReported) {
  std::filesystem::rename(folder.Path() + "/icons", folder.Path() + "/kept");
  folder.File("icons", "a file where the folder should be");
  options.Load();
  EXPECT_EQ(desktop.boxes.back().text, "Error Loading Icons");
  EXPECT_EQ(desktop.boxes.back().title, "Error");
}

TEST_F(OptionsGraphicsTest, ANameThatTheRecordCannotHoldIsNotStored) {
  const std::string longName(26, 'A');
  folder.File("icons/" + longName + ".ICO", ReadFile(DataFolder + "\\icons\\COINS.ICO"));
  options.Load();
  Select("ICON");
  EXPECT_EQ(Choose(longName), "");
  EXPECT_EQ(desktop.boxes.back().title, "Icon Selection");
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "COINS");
}

TEST_F(OptionsGraphicsTest, EditOpensTheChosenIconOrANewOne) {
  Select("ICON");
  options.CmdIcon.Press();
  Choose("<New Icon>");
  EXPECT_EQ(options.PicIcon.Picture(), "");
  options.Around.openIconEditor = [&](const std::string& icon, const FrmOptions::IconSaved& saved) {
    edited.push_back(icon);
    folder.File("icons/FRESH.ICO", ReadFile(DataFolder + "\\icons\\COINS.ICO"));
    saved("fresh");
  };
  Select("CURRENCY");
  options.Cmd(2).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "COINS");  // "<New Icon>" names none
  Select("ICON");
  options.CmdIcon.Press();
  EXPECT_EQ(edited, std::vector<std::string>({"COINS.ICO", ""}));
  EXPECT_EQ(options.PicIcon.Picture(), DataFolder + "\\icons\\FRESH.ICO");
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "FRESH");
}

}  // namespace tarvolinex
