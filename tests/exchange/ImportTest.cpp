// What was exported comes back; what is odd is read; what is wrong is refused.
#include <random>

#include "exchange/ImportPlan.h"
#include "exchange/OldDatabase.h"
#include "exchange/TableExport.h"
#include "platform/RuntimeError.h"
#include "store/DatabaseFile.h"
#include "store/Forms.h"
#include "support/Fixture.h"

namespace tarvolinex {

class ImportTest : public ProgramTest {
 protected:
  ImportTest() {
    std::filesystem::copy_file(DELIVERED_FOLDER "/Database.zip", folder.Path() + "/Database.zip");
    EXPECT_EQ(UnpackDatabase(run.Places(), run), Unpacked::Yes);
    UseSampleRows();
    database.Open(DataFolder, run.SharedDatabase);
  }
  ImportPlan Planned(ImportKind kind, const std::string& file) {
    auto rows = ReadTextTable(file, "in.csv");
    const ColumnChoice choice = ChoiceOf(rows.front(), KnownColumns(database, kind));
    rows.erase(rows.begin());
    return PlanImport(database, kind, rows, choice);
  }
  // "2 new Acme|3 refused ..."
  static std::string Told(const ImportPlan& plan) {
    std::string all;
    for (const PlannedRow& row : plan.rows) {
      all += (all.empty() ? "" : "|") + std::to_string(row.line) + " " + std::string(FateName(row.fate)) +
             (row.detail.empty() ? "" : " ") + row.detail;
    }
    return all;
  }
  std::string Told(ImportKind kind, const std::string& file) { return Told(Planned(kind, file)); }
  std::string Exported(ImportKind kind) {
    const std::string path = folder.Path() + "/out.csv";
    ExportTable(database, kind, path);
    return ReadFile(path);
  }
  void Execute(const std::string& statement) { database.Plain().Execute(statement); }
  Database database{run};
};

constexpr ImportKind kSuppliers = ImportKind::Suppliers, kContacts = ImportKind::Contacts;

// A quoted text of any characters, for a statement.
std::string RandomText(std::mt19937& random, std::size_t most) {
  static const std::vector<std::string> kSigns = {"=", "+",  "-",  "@",  "'",    "''",     "\"",         ",", ";",
                                                  " ", "\t", "\r", "\n", "`",    "\u20AC", "\U0001F4B7", "0", "1",
                                                  ".", "<",  "%",  "\\", "\x7F", "\u00A0", "\uFEFF",     "a", "\x01"};
  std::string text;
  for (std::size_t n = random() % most; n > 0; --n) {
    const std::string& sign = kSigns[random() % kSigns.size()];
    text += sign == "'" ? "''" : sign;
  }
  return "'" + text + "'";
}

// The next 40 characters of Unicode, for a statement; after the last comes the first.
std::string NextCharacters(int& next) {
  std::string numbers;
  for (int i = 0; i < 40; ++i, ++next) {
    if (next == 0xD800) next = 0xE000;
    if (next > 0x10FFFF) next = 1;
    numbers += (i == 0 ? "" : ",") + std::to_string(next);
  }
  return "char(" + numbers + ")";
}

TEST_F(ImportTest, WhatWasExportedChangesNothingAndFillsAnEmptyDatabase) {
  std::mt19937 random(20260101);
  const auto number = [&](unsigned most, int digits) {
    return std::to_string(random() % most) + "." +
           std::to_string(random() % static_cast<unsigned>(std::pow(10, digits)));
  };
  constexpr int kFirst = 1000, kRows = 10000;
  int next = 1;
  database.Plain().Begin();
  for (int id = kFirst; id < kFirst + kRows; ++id) {
    const auto text = [&] { return random() % 6 == 0 ? std::string("NULL") : RandomText(random, 12); };
    Execute(
        "INSERT INTO suppliers "
        "(ID,CompanyName,Address1,Address2,County,Town,PostCode,tel,RangeEquipFROM0,RangeEquipFROM3,Yield1,Com2,"
        "AdditionalPremium) VALUES (" +
        std::to_string(id) + ",'n'||" + RandomText(random, 12) + "||'n'," + NextCharacters(next) + "," +
        NextCharacters(next) + "," + NextCharacters(next) + "," + text() + "," + text() + "," + text() + "," +
        number(99999999, 4) + "," + (id % 7 == 0 ? "'=1+1'" : number(5, 2)) + "," + number(99, 6) + "," +
        (id % 5 == 0 ? "-3.5" : "NULL") + "," + (id % 2 == 0 ? "YES" : "NO") + ")");
    Execute("INSERT INTO contacts (ID,Supplierid,firstname,surname,email,DateLastSent) VALUES (" + std::to_string(id) +
            "," + std::to_string(id % 3 == 0 ? 77777 : id) + "," + text() + ",'s'||" + text() + "," + text() +
            ",'05 March 2003 14:07:09')");
  }
  database.Plain().Commit();
  for (const ImportKind kind : {kSuppliers, kContacts}) {
    const std::string file = Exported(kind);
    const ImportPlan plan = Planned(kind, file);
    EXPECT_EQ(plan.Count(Fate::Unchanged), static_cast<long>(plan.rows.size())) << Told(plan).substr(0, 2000);
    EXPECT_GE(plan.rows.size(), static_cast<std::size_t>(kRows));
    // Nothing that a spreadsheet would run.
    for (const TextRow& row : ReadTextTable(file, "in.csv")) {
      for (const std::string& cell : row.cells) {
        ASSERT_TRUE(cell.find_first_of("=+@\t\r\n") != 0 && (cell.find('-') != 0 || cell == "-3.5")) << cell;
      }
    }
  }
  // Into an empty database: the same rows, as far as they may be stored.
  Execute("DELETE FROM contacts");
  Execute("DELETE FROM suppliers WHERE CAST(RangeEquipFROM3 AS varchar(9))='=1+1' OR Com2<0");
  Execute(
      "UPDATE suppliers SET RangeEquipFROM1=5,RangeEquipFROM2=5,CompanyName=trim(replace(CompanyName,'''','`')),"
      "RangeEquipFROM0=5+RangeEquipFROM0 WHERE ID>=1000");
  for (const char* column : {"Address1", "Address2", "County", "Town", "PostCode", "tel"}) {
    Execute("UPDATE suppliers SET " + std::string(column) + "=trim(replace(" + column + ",'''','`'))");
  }
  Execute("UPDATE suppliers SET RangeEquipFROM0=99999999 WHERE RangeEquipFROM0>99999999");
  const std::string before = Exported(kSuppliers);
  Execute("DELETE FROM suppliers");
  Execute("DELETE FROM DefaultSupplier");
  const ImportPlan plan = Planned(kSuppliers, before);
  ASSERT_EQ(plan.Count(Fate::New), static_cast<long>(plan.rows.size())) << Told(plan).substr(0, 2000);
  const RemovedRows undo = StoreImport(database, plan);
  EXPECT_EQ(Exported(kSuppliers), before);
  RestoreRows(database, undo);
  EXPECT_TRUE(ReadSupplierTable(database).rows.empty());
}

TEST_F(ImportTest, OddFilesAreRead) {
  const std::pair<const char*, std::string> files[] = {
      {"semicolons, a decimal comma", "companyname;Post Code;yield1\r\nZo\xC3\xAB;A;8,25\r\n"},
      {"tabs, Windows-1252", "COMPANYNAME\tPost_Code\tYield1\rZo\xEB\tA\t8.25\r"},
      {"UTF-16, little end first", std::string("\xFF\xFE", 2) +
                                       [] {
                                         std::string wide;
                                         for (const char c :
                                              std::string("PostCode,CompanyName,Yield1\nA,Zo\xEB,8.250\n"))
                                           wide += {c, '\0'};
                                         return wide;
                                       }()},
      {"quotes, blank lines", "\xEF\xBB\xBF\n\"CompanyName\",PostCode,,Yield1\n,,,\n\n\" Zo\xC3\xAB \",'A,,8.25"},
  };
  for (const auto& [what, file] : files) {
    const ImportPlan plan = Planned(kSuppliers, file);
    ASSERT_EQ(plan.Count(Fate::New), 1) << what << Told(plan);
    const RemovedRows undo = StoreImport(database, plan);
    EXPECT_NE(Exported(kSuppliers).find(",Zo\xC3\xAB,"), std::string::npos) << what;
    EXPECT_NE(Exported(kSuppliers).find(",8.25,"), std::string::npos) << what;
    RestoreRows(database, undo);
    EXPECT_EQ(Exported(kSuppliers).find("Zo"), std::string::npos) << what;
  }
  const ImportPlan broken = Planned(kSuppliers, "ID,Address1,equipment\n3,\"two\r\nlines\",5\"\"screen\n");
  EXPECT_EQ(Told(broken).rfind("2 changed Address1 from \"Saxonholt House\" to \"two\r\nlines\"; equipment from", 0),
            0U);
  EXPECT_NE(Told(broken).find("to \"5\"\"screen\""), std::string::npos);
  EXPECT_THROW(Planned(kSuppliers, "ID,Address1\n3,\"open\n"), RuntimeError);
  EXPECT_THROW(Planned(kSuppliers, "1,Acme\n"), RuntimeError);
  EXPECT_THROW(Planned(kSuppliers, "Town,town\n1,2\n"), RuntimeError);
  EXPECT_THROW(ReadTextTable("PK\x03\x04...", "s.xlsx"), RuntimeError);
}

TEST_F(ImportTest, RowsAreFoundAndRefusedForAReason) {
  EXPECT_EQ(
      Told(kSuppliers,
           "ID,CompanyName,PostCode,Yield1,Com1,AdditionalPremium,tel\n"
           ",saxonholt dental systems LTD ,rg4 8ko,9.5,,no,0118 496 0105\n"
           "77,QUILLBECK Catering Equipment Ltd,M17 6VK,9.250,2.5,TRUE,0161 496 0340\n"),
      "2 changed CompanyName from \"Saxonholt Dental Systems Ltd\" to \"saxonholt dental systems LTD\"; PostCode "
      "from \"RG4 8KO\" to \"rg4 8ko\"; Yield1 from 7.25 to 9.5; Com1 from 1.75 to \"\"; AdditionalPremium from "
      "Yes to No|3 changed CompanyName from \"Quillbeck Catering Equipment Ltd\" to \"QUILLBECK Catering Equipment "
      "Ltd\"");
  EXPECT_EQ(Told(kSuppliers,
                 "ID,CompanyName,PostCode,Yield1,Com1,RangeEquipFROM1,RangeEquipFROM2,AdditionalPremiumMsg\n"
                 "3,Saxonholt Dental Systems Ltd,RG4 8KO,7.25,1.75,4999.9999,20000,\n"
                 "3,Other,X,9,1,1,1,\n"
                 "9000,A,X,100.5,201,-1,1e3,1234567890123456789012345678901\n"
                 "0,A,Y,12.34567,,\"1,234\",1.23456,\n"
                 ",,Z,,,,,\n"
                 ",New,Z,1,1,1,2,\n"
                 ",New,Z,1,1,,,\n"
                 "8,7\n"),
            "2 refused RangeEquipFROM2: 20000 is above the threshold before it, 5000.00|"
            "3 refused the row is about the same supplier as line 2|"
            "4 refused RangeEquipFROM1: -1 is below 0; RangeEquipFROM2: \"1e3\" is no number; Yield1: 100.5 is above "
            "100; Com1: 201 is above 200; AdditionalPremiumMsg: \"1234567890123456789012345678901\" is longer than 30 "
            "characters|"
            "5 refused ID: \"0\" is no ID; RangeEquipFROM1: \"1,234\" may have thousands or decimals; write it without "
            "a separator of thousands; RangeEquipFROM2: 1.23456 has more than 4 decimals|"
            "6 refused CompanyName: a supplier needs a name|"
            "7 refused RangeEquipFROM2: 2 is above the threshold before it, 1.00|"
            "8 refused the row is about the same supplier as line 7|"
            "9 refused the row has 2 cells, the first one has 8");
  EXPECT_EQ(Told(kContacts,
                 "ID,SupplierID,CompanyName,firstname,surname\n"
                 "1,1,,Helen,Ackroyd\n"
                 ",,Aldermoor print finishing ltd,GARETH,Evans\n"
                 "3,3,,,\n"
                 ",555,,A,B\n"
                 ",2,Aldermoor Print Finishing Ltd,A,B\n"
                 ",,Nobody,A,B\n"
                 ",,,A,B\n"
                 ",2,,A,B\n"),
            "2 unchanged|3 changed firstname from \"Gareth\" to \"GARETH\"|4 refused surname: a contact needs a name|"
            "5 refused SupplierID: there is no supplier 555|"
            "6 refused CompanyName: supplier 2 is \"Quillbeck Catering Equipment Ltd\"|"
            "7 refused CompanyName: there is no supplier \"Nobody\"|8 refused SupplierID: a new contact needs its "
            "supplier|9 new A B");
}

// Another program writes between the preview and the storing.
TEST_F(ImportTest, APlanOfAnotherStateIsNotStored) {
  const ImportPlan plan = Planned(kSuppliers, "ID,Town\n3,York\n");
  Connection other;
  other.Open(Where());
  other.Execute("UPDATE suppliers SET Town='Hull' WHERE ID=4");
  const std::string before = Exported(kSuppliers);
  EXPECT_THROW(StoreImport(database, plan), RuntimeError);
  EXPECT_EQ(Exported(kSuppliers), before);
  StoreImport(database, Planned(kSuppliers, "ID,Town\n3,York\n"));
  EXPECT_NE(Exported(kSuppliers).find(",York,Berkshire,"), std::string::npos);
}

// Programs that stand in for those of mdbtools, which write no such file.
TEST_F(ImportTest, AnOldDatabaseComesWithItsOwnIds) {
  const std::string path = getenv("PATH");
  const std::string old = folder.File("old.mdb", "");
  setenv("PATH", "/nowhere", 1);
  try {
    PlanOldDatabase(database, old);
    ADD_FAILURE();
  } catch (const RuntimeError& failure) {
    EXPECT_NE(failure.Description().find("mdbtools"), std::string::npos) << failure.Description();
  }
  folder.File("tables/suppliers",
              "ID,CompanyName,PostCode,Yield0,RangeEquipFROM0,AdditionalPremium,Other\n"
              "3,\"Old Dealer\",\"X1\",8.1000004,50000.0000,1,5\n"
              "9,\"Quillbeck Catering Equipment Ltd\",\"M17 6VK\",8.25,50000,1,\n");
  folder.File("tables/DefaultSupplier", "ID,Yield0\n88,9.5\n");
  folder.File("tables/contacts",
              "ID,Supplierid,firstname,surname,DateLastSent\n1,3,Ann,Old,1999-03-05 14:07:09\n"
              "3,9,\"New\",\"Man\",\n");
  folder.File("tables/Forms", "ID,Description,LinkName,Available\n1,\"Old form\",\"Old\",1\n");
  folder.File("tables/SupplierFormLink", "FormId,SupplierId\n1,3\n1,0\n7,3\n");
  const auto program = [&](const std::string& name, const std::string& script) {
    std::filesystem::permissions(folder.File(name, "#!/bin/sh\n" + script), std::filesystem::perms::owner_all);
  };
  program("bin/mdb-tables", "printf 'suppliers\\nDefaultSupplier\\ncontacts\\nForms\\nSupplierFormLink\\n'\n");
  program("bin/mdb-export", "for table; do :; done\ncat \"" + folder.Path() + "/tables/$table\"\n");
  setenv("PATH", (folder.Path() + "/bin:" + path).c_str(), 1);
  const std::string before = Exported(kSuppliers) + Exported(kContacts);
  const ImportPlan plan = PlanOldDatabase(database, old);
  EXPECT_EQ(Told(plan).find("refused"), std::string::npos) << Told(plan);
  EXPECT_NE(Told(plan).find("2 new suppliers: Old Dealer|3 unchanged suppliers|"), std::string::npos) << Told(plan);
  const RemovedRows undo = StoreImport(database, plan);
  const std::string suppliers = Exported(kSuppliers), contacts = Exported(kContacts);
  EXPECT_NE(suppliers.find("\r\n13,Old Dealer,"), std::string::npos);
  EXPECT_NE(suppliers.find(",50000,50000,20000,5000,,8.1,"), std::string::npos)
      << suppliers.substr(suppliers.find("Old Dealer"));
  // A server keeps the moment, not how it was written.
  const std::string sent = OnServer() ? "05 March 1999 14:07:09" : "1999-03-05 14:07:09";
  EXPECT_NE(contacts.find(",13,Old Dealer,Ann,Old,,,,," + sent), std::string::npos) << contacts;
  EXPECT_NE(contacts.find(",2,Quillbeck Catering Equipment Ltd,New,Man,"), std::string::npos);
  EXPECT_EQ(FormLinksOf(database, 13).size(), 1U);
  const ImportPlan again = PlanOldDatabase(database, old);
  EXPECT_EQ(again.Count(Fate::Unchanged), static_cast<long>(plan.rows.size())) << Told(again);
  RestoreRows(database, undo);
  EXPECT_EQ(Exported(kSuppliers) + Exported(kContacts), before);
  EXPECT_TRUE(FormLinksOf(database, 13).empty());
  setenv("PATH", path.c_str(), 1);
}

}  // namespace tarvolinex
