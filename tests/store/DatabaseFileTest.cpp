#include "store/DatabaseFile.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

using FirstStartTest = SampleTest;

TEST_F(FirstStartTest, ADataFolderOfItsOwnKeepsNoCopy) {
  TemporaryFolder other;
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", other.Path() + "/database.ZIP");
  DataFolder = other.Path() + "\\";
  bool askUser = false;
  EXPECT_TRUE(form->OpenDatabase(askUser));
  EXPECT_EQ(DataFolder, other.Path());
  EXPECT_FALSE(FileExists(other.Path() + "\\Database.Bak"));
  EXPECT_NE(ReadFile(AppFolder + "\\General.INI").find("DATABASEPATH=" + other.Path()), std::string::npos);
}

TEST_F(FirstStartTest, CancellingTheOpenDialogChangesNothing) {
  const std::string before = DataFolder;
  bool askUser = true;
  EXPECT_FALSE(form->OpenDatabase(askUser));
  EXPECT_EQ(DataFolder, before);
  EXPECT_TRUE(form->database.Plain().IsOpen());
  // A package that has come meanwhile is unpacked over the file that is open: the new file is worked on.
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", before + "/Database.zip");
  askUser = true;
  EXPECT_FALSE(form->OpenDatabase(askUser));
  EXPECT_NO_THROW(form->database.Plain().Execute("UPDATE suppliers SET Town='New' WHERE ID=1"));
  desktop.files = {"/some/where/other.mdb"};
  EXPECT_THROW(form->OpenDatabase(askUser), ProgramEnded);
  EXPECT_EQ(DataFolder, "/some/where/other.mdb");
}

using MissingDatabaseTest = WindowTest;

TEST_F(MissingDatabaseTest, TheUserIsAskedToLook) {
  EXPECT_THROW(form->Load(), ProgramEnded);
  ASSERT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(desktop.boxes[0].title + "|" + desktop.boxes[0].text,
            "Database Connection|Database Could not be found :-\n\n" + DataFolder +
                "\n\nWould you like to find a database your self?");
  TemporaryFolder other;
  std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", other.Path() + "/Database.zip");
  UnpackDatabase({AppFolder, other.Path(), CalculatorFolder()}, run);
  desktop.answers = {Answer::Yes};
  desktop.files = {other.Path() + "/tarvolinex.MDB"};
  bool askUser = false;
  EXPECT_TRUE(form->OpenDatabase(askUser));
  EXPECT_TRUE(askUser);
  EXPECT_EQ(DataFolder, other.Path());
}

TEST_F(MissingDatabaseTest, ADamagedPackageIsReportedAndKept) {
  folder.File("Database.zip", "no archive");
  EXPECT_THROW(form->Load(), ProgramEnded);
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_TRUE(FileExists(folder.Path() + "/Database.zip"));
}

TEST_F(FirstStartTest, WhatCannotBeOpenedIsReportedAndAnotherOneOffered) {
  const std::string good = DataFolder;
  TemporaryFolder bad;
  const auto start = [&] {
    DataFolder = bad.Path();
    desktop.boxes.clear();
    bool askUser = false;
    return form->OpenDatabase(askUser);
  };
  const std::string path = folder.File("headless.mdb", ReadFile(good + "\\Tarvolinex.mdb"));
  {
    Connection other;
    other.Open("dbq=" + path);
    other.Execute("DROP TABLE contacts");
  }
  for (const std::string& bytes :
       {std::string(), std::string("this is no database at all, only a text that is long enough to be read"),
        ReadFile(path)}) {
    bad.File("Tarvolinex.mdb", bytes);
    EXPECT_THROW(start(), ProgramEnded) << bytes.size();
    EXPECT_EQ(desktop.boxes.at(0).text.substr(0, 18), "3100 The database ");
    EXPECT_EQ(desktop.boxes.size(), 2U);
    EXPECT_EQ(ReadFile(AppFolder + "\\General.INI").find(bad.Path()), std::string::npos);
    desktop.answers = {Answer::Ok, Answer::Yes};
    desktop.files = {good + "/Tarvolinex.mdb"};
    EXPECT_TRUE(start());
    EXPECT_EQ(DataFolder, good);
  }
}

}  // namespace tarvolinex
