// What desks that share a database have in common beside its rows.
#include "store/SharedFiles.h"

#include "support/Fixture.h"

namespace tarvolinex {

class SharedFilesTest : public ProgramTest {
 protected:
  void SetUp() override {
    if (!OnServer()) GTEST_SKIP() << "a file has them beside it";
    UseSampleRows();
    for (int i = 0; i < 2; ++i) {
      std::filesystem::create_directories(Of(i));
      desks[i].Open(Of(i), run.SharedDatabase);
    }
    desks[0].Plain().Execute("DELETE FROM OfficeFiles");
  }
  std::string Of(int desk) { return folders[desk].Path() + "/data"; }
  void Write(int desk, const std::string& name, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(Of(desk) + "/" + name).parent_path());
    WriteFile(Of(desk) + "/" + name, text);
  }
  std::string Read(int desk, const std::string& name) {
    return FileExists(Of(desk) + "/" + name) ? ReadFile(Of(desk) + "/" + name) : "(none)";
  }
  // "fetched|stored|set aside"
  std::string Bring(int desk) {
    const FileNews news = BringFilesTogether(desks[desk]);
    return std::to_string(news.fetched.size()) + "|" + std::to_string(news.stored.size()) + "|" +
           std::to_string(news.setAside.size());
  }
  TemporaryFolder folders[2];
  Database desks[2] = {Database(run), Database(run)};
};

TEST_F(SharedFilesTest, TheFirstDeskGivesThemAndTheNextTakesThem) {
  const std::string bytes("\0\xFF'\n", 4);
  Write(0, "logo/logo.gif", bytes);
  Write(0, "Forms/1.html", "<html>");
  Write(1, "Forms/1.html", "another page");
  Write(1, "logo/logo.png", "a logo that must not win");
  EXPECT_EQ(Bring(0), "0|2|0");
  EXPECT_EQ(Bring(1), "3|0|2");
  EXPECT_EQ(Read(1, "logo/logo.gif"), bytes);
  EXPECT_EQ(Read(1, "Forms/1.html") + Read(1, "logo/logo.png"), "<html>(none)");
  EXPECT_EQ(Read(1, "Set Aside/Forms/1.html"), "another page") << "nothing is lost";
  EXPECT_EQ(Bring(0) + " " + Bring(1), "0|0|0 0|0|0");
}

TEST_F(SharedFilesTest, WhatOneChangesReachesTheOtherAndWhatBothChangeIsKept) {
  Write(0, "Forms/1.html", "one");
  Write(0, "icons/a.ico", "icon");
  Bring(0);
  Bring(1);
  Write(1, "Forms/1.html", "two");
  Write(1, "Forms/2.html", "new");
  std::filesystem::remove(Of(1) + "/icons/a.ico");
  EXPECT_EQ(Bring(1), "0|3|0");
  EXPECT_EQ(Bring(0), "3|0|0");
  EXPECT_EQ(Read(0, "Forms/1.html") + Read(0, "Forms/2.html") + Read(0, "icons/a.ico"), "twonew(none)");
  Write(0, "Forms/1.html", "mine");
  Write(1, "Forms/1.html", "theirs");
  Bring(1);
  EXPECT_EQ(Bring(0), "1|0|1");
  EXPECT_EQ(Read(0, "Forms/1.html") + " " + Read(0, "Set Aside/Forms/1.html"), "theirs mine");
}

TEST_F(SharedFilesTest, ANameLeadsOutOfNoFolder) {
  Write(0, "Forms/1.html", "one");
  Bring(0);
  desks[0].Plain().Execute("UPDATE OfficeFiles SET Name='forms/../../1.html'");
  EXPECT_EQ(Bring(1), "0|0|0");
  EXPECT_FALSE(FileExists(folders[1].Path() + "/1.html"));
}

TEST_F(SharedFilesTest, WhatCannotBeStoredIsStillThisDesksOwn) {
  Write(0, "Forms/1.html", "one");
  Bring(0);
  Write(0, "Forms/1.html", "two");
  Connection other;
  other.Open(run.SharedDatabase);
  other.Begin();
  other.Execute("UPDATE suppliers SET Town='x' WHERE ID=1");
  other.Flush();
  desks[0].Open(Of(0), run.SharedDatabase + ";wait=1");
  EXPECT_THROW(BringFilesTogether(desks[0]), RuntimeError);
  other.Rollback();
  EXPECT_EQ(Bring(0), "0|1|0");
  EXPECT_EQ(Bring(1), "1|0|0");
  EXPECT_EQ(Read(1, "Forms/1.html"), "two");
}

}  // namespace tarvolinex
