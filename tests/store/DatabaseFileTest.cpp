#include "store/DatabaseFile.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

using FirstStartTest = SampleTest;

TEST_F(FirstStartTest, ThePackageIsUnpackedAndItsCopyStays) {
  EXPECT_TRUE(form->DatabaseUnpacked);
  EXPECT_FALSE(FileExists(AppFolder + "\\Database.zip"));
  EXPECT_TRUE(FileExists(AppFolder + "\\Database.Bak"));
  EXPECT_EQ(form->LvwSuppliers.Count(), 12);
  EXPECT_EQ(form->LvwSuppliers.At(0).key, "ID1");
  EXPECT_EQ(form->Caption(), "Tarvolinex - Aldermoor Print Finishing Ltd");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE email<>'leases@example.com'"), "0");
  EXPECT_EQ(desktop.shown, std::vector<std::string>{"FrmMain"});
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(form->TxtStatus.Text(), "");
}

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
  EXPECT_EQ(desktop.boxes[0].title, "Database Connection");
  EXPECT_EQ(desktop.boxes[0].text,
            "Database Could not be found :-\n\n" + DataFolder + "\n\nWould you like to find a database your self?");
  EXPECT_EQ(desktop.boxes[0].icon, BoxIcon::Critical);
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
  const std::string whole = ReadFile(good + "\\Tarvolinex.mdb");
  for (const char* kind :
       {"", "this is no database at all, only a text that is long enough to be read", "no contacts"}) {
    TemporaryFolder bad;
    bad.File("Tarvolinex.mdb", std::string(kind) == "no contacts" ? whole : kind);
    if (std::string(kind) == "no contacts") {
      Connection other;
      other.Open("dbq=" + bad.Path() + "\\Tarvolinex.mdb");
      other.Execute("DROP TABLE contacts");
    }
    const auto start = [&] {
      DataFolder = bad.Path();
      desktop.boxes.clear();
      bool askUser = false;
      return form->OpenDatabase(askUser);
    };
    EXPECT_THROW(start(), ProgramEnded) << kind;
    EXPECT_EQ(desktop.boxes.at(0).text.substr(0, 18), "3100 The database ") << kind;
    EXPECT_EQ(desktop.boxes.size(), 2U) << kind;
    EXPECT_EQ(ReadFile(AppFolder + "\\General.INI").find(bad.Path()), std::string::npos) << kind;
    desktop.answers = {Answer::Ok, Answer::Yes};
    desktop.files = {good + "/Tarvolinex.mdb"};
    EXPECT_TRUE(start()) << kind;
    EXPECT_EQ(DataFolder, good);
  }
}

TEST_F(FirstStartTest, AReplacedDatabaseIsKept) {
  form->database.Plain().Execute("UPDATE suppliers SET Town='Own' WHERE ID=3");
  form.reset();
  for (int n = 0; n < 2; ++n) {
    std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
    ASSERT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
  }
  const auto copies = ListFiles(folder.Path() + "\\Backup\\Replaced *.mdb");
  ASSERT_EQ(copies.size(), 2U);  // the second one is the first's fresh database
  std::string towns;
  for (const std::string& copy : copies) {
    Connection kept;
    kept.Open("dbq=" + folder.Path() + "\\Backup\\" + copy);
    Recordset town;
    town.Open("SELECT Town FROM suppliers WHERE ID=3", kept);
    towns += ValueText(town.Field(0)) + " ";
  }
  EXPECT_NE(towns.find("Own "), std::string::npos) << towns;
}

}  // namespace tarvolinex
