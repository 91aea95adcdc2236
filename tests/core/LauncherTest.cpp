#include "core/Launcher.h"

#include "support/Fixture.h"

namespace tarvolinex {

using LauncherTest = ProgramTest;

TEST_F(LauncherTest, PathsStayWholeAndRunInTheirFolder) {
  EXPECT_EQ(LaunchDocument(run, "C:\\my files\\a b.txt"), 33);
  LaunchDocument(run, "C:\\a.txt");
  LaunchDocument(run, "C:\\prog.exe\" /x y");
  EXPECT_EQ(desktop.launched[0], "open C:\\my files\\a b.txt||C:\\my files");
  EXPECT_EQ(desktop.launched[1], "open C:\\a.txt||C:\\");
  EXPECT_EQ(desktop.launched[2].substr(0, 25), "open C:\\prog.exe|/x y\"|C:");
  EXPECT_FALSE(desktop.busy);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(LauncherTest, AFileWithoutAnEditorIsOpenedWithAChosenProgram) {
  desktop.launchResults = {31, 33};
  EXPECT_EQ(LaunchDocument(run, "a.xyz", true), 33);
  EXPECT_EQ(desktop.launched[1], "openwith a.xyz");
  desktop.launchResults = {2};
  EXPECT_EQ(LaunchDocument(run, "missing", true), 2);
  EXPECT_EQ(desktop.boxes.at(0).text, "External application launch failed");
  EXPECT_EQ(desktop.launched.size(), 3U);
}

}  // namespace tarvolinex
