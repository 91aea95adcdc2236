// Logo, background and icon of the options window.
#include "support/OptionsFixture.h"

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
      names += (names.empty() ? "" : " ") + file.path().filename().string();
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
  const std::string jpg = ReadFile(folder.Path() + "/logo/background.JPG"), large = folder.File("large.jpg", jpg);
  std::filesystem::resize_file(large, 100 << 20);
  const std::string unsupported =
      "The File type Selected is not supported.\r\n\r\n(.BMP  .JPG  .PNG  .GIF) Supported|Logo Import";
  const std::pair<std::string, std::string> cases[] = {
      {folder.Path() + "/none.gif", "Selected graphic could not be found.\r\n\r\nNot Imported|Graphic Import"},
      {folder.File("photo.jpeg", jpg), unsupported},
      {folder.File("text.gif", "no picture"), "Importing Graphic Failed.|Graphic Import"},
      {large, "Importing Graphic Failed.|Graphic Import"},
      {folder.File("empty.png", ""), "Importing Graphic Failed.|Graphic Import"}};
  for (const auto& [path, said] : cases) {
    Import("GRAPHICS2", path);
    EXPECT_EQ(desktop.boxes.back().text + "|" + desktop.boxes.back().title, said);
    EXPECT_EQ(ReadFile(folder.Path() + "/logo/logo.GIF"), gif);
  }
  std::filesystem::remove_all(folder.Path() + "/logo");
  folder.File("logo", "a file where the folder should be");
  Select("GRAPHICS2");
  options.TxtLogo.SetText(folder.File("brand.gif", gif));
  options.Cmd(1).Press();  // Cancel imports too
  EXPECT_EQ(desktop.boxes.back().text, "Importing Logo");
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
  const std::string coins = ReadFile(DataFolder + "\\icons\\COINS.ICO"), longName(26, 'A');
  ASSERT_EQ(coins.size(), 766U);
  folder.File("icons/LONG.ICO", coins + std::string(2238 - 766, '\0'));
  folder.File("icons/NOISE.ICO", std::string(766, 'x'));
  folder.File("icons/WIDE.ICO", gif.substr(0, 766));
  folder.File("icons/DEPTH.ICO", coins.substr(0, 36) + "\x08" + coins.substr(37));
  folder.File("icons/TWO.ICO", coins + std::string(1078 - 766, '\0'));
  folder.File("icons/" + longName + ".ICO", coins);  // the record cannot hold its name
  options.Load();
  for (const std::string& icon : {std::string("LONG"), std::string("NOISE"), std::string("WIDE"), longName}) {
    EXPECT_EQ(Choose("TWO"), DataFolder + "\\icons\\TWO.ICO");
    desktop.boxes.clear();
    EXPECT_EQ(Choose(icon), "") << icon;
    ASSERT_EQ(desktop.boxes.size(), 1U) << icon;
    EXPECT_EQ(desktop.boxes[0].text == "Invalid or unsupported file format.", icon != longName);
  }
  EXPECT_EQ(desktop.boxes.back().title, "Icon Selection");
  Select("ICON");
  EXPECT_EQ(Choose("DEPTH"), "");  // no install file takes it
  options.Cmd(0).Press();
  EXPECT_EQ(CalculatorPreferences.IconName.Trimmed(), "COINS");
}

TEST_F(OptionsGraphicsTest, AFolderThatCannotBeListedIsReported) {
  std::filesystem::rename(folder.Path() + "/icons", folder.Path() + "/kept");
  folder.File("icons", "a file where the folder should be");
  options.Load();
  EXPECT_EQ(desktop.boxes.back().text + desktop.boxes.back().title, "Error Loading IconsError");
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
