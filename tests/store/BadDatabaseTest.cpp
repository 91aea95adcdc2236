// Databases that are damaged, held by another program, read-only or on a full disk: said, and left as they were.
#include <sys/stat.h>

#include <thread>

#include "platform/RuntimeError.h"
#include "support/Fixture.h"
#include "support/Hindrances.h"
#include "ui/main/FRmCreateDB.h"

namespace tarvolinex {

class BadDatabaseTest : public SampleTest {
 protected:
  // The program is started again; false when it ended.
  bool StartAgain() {
    form.reset();
    desktop.boxes.clear();
    form = std::make_unique<FrmMain>(run);
    try {
      form->Load();
    } catch (const ProgramEnded&) {
      return false;
    }
    return true;
  }
  void SaveTown(const std::string& town) {
    Choose("Saxonholt Dental Systems Ltd");
    Type(form->supplier.TxtSupplier(3), town);
    form->Toolbar1.Press("SAVE");
  }
  std::string Town() { return Ask("SELECT Town FROM suppliers WHERE ID=3"); }
  std::string Said() { return desktop.boxes.empty() ? "" : desktop.boxes.front().text; }

  const std::string path = folder.Path() + "/Tarvolinex.mdb";
};

TEST_F(BadDatabaseTest, ATruncatedFileIsReportedAndNotTouched) {
  form->Close();
  const std::string whole = ReadFile(path);
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{100}, std::size_t{4096}, whole.size() / 2, whole.size() - 4097, whole.size() - 1}) {
    const std::string cut = whole.substr(0, length);
    WriteFile(path, cut);
    const bool started = StartAgain();
    EXPECT_FALSE(started && length <= 4096) << length;
    EXPECT_TRUE(started || Said() != "") << length;
    for (const auto& box : desktop.boxes) {
      EXPECT_TRUE(box.text == "Database Error" || box.text == "Error Getting Dealer List" ||
                  box.text == "Listing Contacts Failed" || box.text.starts_with("3100 The database ") ||
                  box.title == "Database Connection")
          << length << ": " << box.text;
    }
    if (started) form->Close();
    EXPECT_EQ(ReadFile(path), cut) << length;
  }
}

TEST_F(BadDatabaseTest, ALockThatPassesIsWaitedForAndOneThatStaysIsReported) {
  Connection other;
  other.Open("dbq=" + path);
  other.Execute("BEGIN IMMEDIATE");
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    other.Execute("ROLLBACK");
  });
  SaveTown("Later");
  release.join();
  EXPECT_EQ(Town(), "Later");

  other.Execute("BEGIN IMMEDIATE");
  EXPECT_THROW(SaveTown("Never"), ProgramEnded);
  EXPECT_EQ(Said(), "Database update failed.\n\ndatabase is locked");
  other.Execute("ROLLBACK");
  EXPECT_EQ(Town(), "Later");

  other.Execute("BEGIN EXCLUSIVE");
  EXPECT_FALSE(StartAgain());
  EXPECT_EQ(Said(), "3100 The database " + DataFolder + "\\Tarvolinex.mdb cannot be opened: database is locked");
  other.Execute("ROLLBACK");
  EXPECT_TRUE(StartAgain());
}

TEST_F(BadDatabaseTest, AReadOnlyFileOrFolderIsShownAndASaveReported) {
  form->Close();
  const std::string before = ReadFile(path);
  {
    chmod(folder.Path().c_str(), 0755);
    const AnotherUser user;
    if (!FileExists(path)) GTEST_SKIP() << "no other user can reach " << path;
  }
  const auto refuse = [&] {
    const AnotherUser user;
    ASSERT_TRUE(StartAgain());
    EXPECT_EQ(form->LvwSuppliers.Count(), 12);
    EXPECT_EQ(Said(), "");
    EXPECT_THROW(SaveTown("Never"), ProgramEnded);
    EXPECT_EQ(Said(), "Database update failed.\n\nattempt to write a readonly database");
    EXPECT_EQ(Town(), "Reading");
  };
  chmod(path.c_str(), 0444);
  chmod(folder.Path().c_str(), 0777);
  refuse();
  chmod(path.c_str(), 0666);
  chmod(folder.Path().c_str(), 0555);
  refuse();
  EXPECT_EQ(ReadFile(path), before);
  chmod(folder.Path().c_str(), 0755);
}

TEST_F(BadDatabaseTest, ANewDatabaseOnAFullDiskCanBeTriedAgain) {
  const std::string first = DataFolder, target = folder.Path() + "/new";
  const auto package = static_cast<rlim_t>(ReadFile(AppFolder + "\\Database.Bak").size());
  std::filesystem::create_directory(target);
  FRmCreateDB create(run, [this](bool& askUser) { return form->OpenDatabase(askUser); });
  create.TxtFolder.SetText(target);
  {
    const FullDisk full(package / 2);  // not even the package fits
    create.cmdaction(0).Press();
  }
  EXPECT_NE(Said(), "");
  EXPECT_TRUE(ListFiles(target + "\\*.*").empty());
  {
    const FullDisk full(package);  // the database in it does not
    create.cmdaction(0).Press();
  }
  EXPECT_EQ(desktop.boxes.back().text,
            "Failed to create database in this folder:\n\n" + target + "\\\n\nPlease select another folder");
  EXPECT_FALSE(create.Closed() || FileExists(target + "\\Tarvolinex.mdb"));
  EXPECT_EQ(DataFolder, first);
  EXPECT_EQ(Town(), "Reading");
  create.cmdaction(0).Press();
  EXPECT_TRUE(create.Closed());
  EXPECT_EQ(DataFolder, target);
}

TEST_F(BadDatabaseTest, AMissingColumnIsReportedAndTheWindowComesUp) {
  form->database.Plain().Execute("ALTER TABLE Forms DROP COLUMN LinkName");
  ASSERT_TRUE(StartAgain());
  EXPECT_EQ(Said().substr(0, 18), "No column LinkName");
  EXPECT_EQ(form->LvwSuppliers.Count(), 12);
  EXPECT_NO_THROW(form->menus.MnuRefresh.Choose());
}

}  // namespace tarvolinex
