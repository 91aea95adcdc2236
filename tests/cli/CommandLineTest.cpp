// The program itself, run as another program would run it.
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "core/Records.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "support/Fixture.h"

namespace tarvolinex {

class CommandLineTest : public ::testing::Test {
 protected:
  struct Run {
    int status;
    std::string out, err;
  };
  Run Program(const std::string& arguments, const std::string& input = "") {
    const std::string in = folder.File("stdin", input), out = folder.Path() + "/stdout",
                      err = folder.Path() + "/stderr";
    const std::string command = PROGRAM " --app-folder " + folder.Path() + "/app " +
                                (OnServer() ? "--database '" + shared + "' " : "") + arguments + " <" + in + " >" +
                                out + " 2>" + err;
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), ReadFile(out), ReadFile(err)};
  }
  ~CommandLineTest() override {
    if (OnServer()) SharedServer::The().Remove(shared);
  }
  TemporaryFolder folder;
  std::string shared = OnServer() ? SharedServer::The().NewSample() : "";  // where the rows are then
};

TEST_F(CommandLineTest, HelpTouchesNoFileAndMistakesExitWithTwo) {
  for (const char* words : {"--help", "--version", "quote --help", "record --help", "suppliers --help"}) {
    const Run run = Program(words);
    EXPECT_EQ(run.status, 0) << words;
    EXPECT_TRUE(!run.out.empty() && run.err.empty()) << words;
  }
  EXPECT_FALSE(FolderExists(folder.Path() + "/app"));
  for (const char* words : {"--none", "none", "quote --none", "quote a b", "quote --supplier", "record", "record show",
                            "record erase x", "suppliers x", "publish", "live --supplier 1 x.txt", "--app-folder"}) {
    EXPECT_EQ(Program(words).status, 2) << words;
  }
}

TEST_F(CommandLineTest, QuotesRowForRow) {
  SupplierCalcSettingsRecord record;
  record.Yield.fill(10);
  record.Com.fill(2);
  WriteRecord(folder.Path() + "/Supplier.dat", record);
  const Run run = Program("quote --supplier " + folder.Path() + "/Supplier.dat -",
                          "numberofpayments,Mode,CapitalCost,Yield\r\n36,0,10000,0\r\n36,1,\"10,000.00\",8.1\r\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "CapitalCost,DepositValue,ResidualValue,ResidualPercent,Yield,CommissionPercent,CommissionValue,Payment,"
            "PaymentIncTax,NetCapital,DepositIncTax,ResidualIncTax,PremiumYield\n"
            "10000.0000,0.0000,0.0000,0,10,2,200.0000,329.1253,394.9504,10000.0000,0.0000,0.0000,0\n"
            "10000.0000,0.0000,0.0000,0,8.1,0,0.0000,313.8252,376.5902,10000.0000,0.0000,0.0000,0\n");
  EXPECT_NE(
      Program("quote --supplier 1", "Mode,CapitalCost,NumberOfPayments\n0,12500,36\n").out.find("415.4400,498.5280"),
      std::string::npos);
  EXPECT_EQ(Program("quote --supplier 99", "Mode\n0\n").status, 1);
  const std::string general = folder.Path() + "/General.dat";
  Program("record write " + general, R"({"TaxRate": 50})");
  EXPECT_NE(Program("quote --supplier 1 --general " + general, "Mode,CapitalCost,NumberOfPayments\n0,12500,36\n")
                .out.find("415.4400,623.1600"),
            std::string::npos);
  const Run missing = Program("quote --supplier " + folder.Path() + "/none.dat", "Mode\n0\n");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("none.dat"), std::string::npos);
}

TEST_F(CommandLineTest, ABadCellIsNamedAndNothingIsWritten) {
  const std::pair<const char*, const char*> cases[] = {
      {"Mode,CapitalCost\n0,1\n0,12x\n", "line 3, column CapitalCost"},
      {"Mode,CapitalCost\n0,\n", "line 2, column CapitalCost"},
      {"Mode,Yield\n1,nan\n", "line 2, column Yield"},
      {"Mode\n7\n", "line 2, column Mode"},
      {"Mode,Quarterly\n0,2\n", "line 2, column Quarterly"},
      {"Mode,NumberOfPayments\n0,40000\n", "line 2, column NumberOfPayments"},
      {"Mode,NumberOfPayments\n0,36.5\n", "line 2, column NumberOfPayments"},
      {"Mode,CapitalCost\n0\n", "line 2 has 1 cells"},
      {"Mode,Nonsense\n0,1\n", "Nonsense"},
      {"Mode,mode\n0,1\n", "twice"},
      {"", "no header"},
  };
  for (const auto& [input, named] : cases) {
    const Run run = Program("quote --output " + folder.Path() + "/out.csv", input);
    EXPECT_EQ(run.status, 1) << input;
    EXPECT_NE(run.err.find(named), std::string::npos) << run.err;
    EXPECT_FALSE(FileExists(folder.Path() + "/out.csv"));
  }
}

// The first cell of each line that holds the text.
std::string FirstCells(const std::string& lines, const std::string& holds) {
  std::string cells;
  std::istringstream input(lines);
  for (std::string line; std::getline(input, line);) {
    if (line.find(holds) != std::string::npos) cells += line.substr(0, line.find(',')) + "\n";
  }
  return cells;
}

TEST_F(CommandLineTest, LongInputsAreWorkedOnTogetherAndStayInOrder) {
  std::string rows = "CapitalCost,NumberOfPayments,Yield,Mode\n\n", expected, expectedRows;
  for (int i = 1; i <= 20000; ++i) {
    rows += std::to_string(i) + ",12,5,1\n";
    expected += std::to_string(i) + ".0000\n";
    expectedRows += std::to_string(i) + "\n";
  }
  EXPECT_TRUE(FirstCells(Program("quote", rows).out, "") == "CapitalCost\n" + expected);
  EXPECT_TRUE(FirstCells(Program("schedule --start 2026-01-31", rows).out, ",3,2026-04-30,payment,") == expectedRows);
  // The first bad row is the one that is named, however far others have come.
  for (const char* command : {"schedule", "compare --terms 12,24"}) {
    const Run failed = Program(std::string(command) + " --output " + folder.Path() + "/out.csv",
                               rows + "0,12,5,1\n" + rows.substr(rows.find("\n\n") + 2) + "1,x,5,1\n");
    EXPECT_EQ(failed.status, 1);
    EXPECT_NE(failed.err.find("line 20003 cannot be priced"), std::string::npos) << failed.err;
    EXPECT_FALSE(FileExists(folder.Path() + "/out.csv"));
  }
}

TEST_F(CommandLineTest, OddRowsAndTextsAreNamedAndATableTakesWhatIsStored) {
  const std::string header = "CapitalCost,NumberOfPayments,Yield,Mode\n";
  const std::pair<const char*, const char*> refused[] = {
      {"schedule", "line 3: The amounts of the schedule are too large"},
      {"schedule --start 9999-12-01", "line 2: The last payment would fall due after the year 9999"},
      {"compare --terms 12,24", "line 3: The amounts of the schedule are too large"},
      {"quotes keep --supplier 1", "line 3: AskedCapitalCost of 900000000000000"},
      {"quotes keep --supplier 1 --customer $(printf 'A\\377B')", "--customer is no text in UTF-8"}};
  for (const auto& [words, named] : refused) {
    const Run run = Program(words, header + "1000,12,5,1\n900000000000000,12,5,1\n");
    EXPECT_NE(run.status, 0) << words;
    EXPECT_NE(run.err.find(named), std::string::npos) << words << ": " << run.err;
  }
  Connection database;
  database.Open(OnServer() ? shared : "dbq=" + folder.Path() + "/app/Tarvolinex.mdb");
  database.Execute("UPDATE suppliers SET CompanyName='=A\nB' WHERE ID=1");
  database.Close();
  // A mark of UTF-8 on a line of its own is no row.
  EXPECT_EQ(Program("quotes keep --supplier 1", "\xEF\xBB\xBF\n" + header + "1000,12,5,1\n").out, "1\n");
  const std::string sheet = folder.Path() + "/quotes.xlsx";
  EXPECT_EQ(Program("quotes list --output " + sheet).status, 0);
  ASSERT_EQ(std::system(("unzip -qo " + sheet + " -d " + folder.Path()).c_str()), 0);
  const std::string cells = ReadFile(folder.Path() + "/xl/worksheets/sheet1.xml");
  for (const char* part : {"<t>=A B</t>", "<v>1000</v>", "<f>SUM(G2:G2)</f>"}) {
    EXPECT_NE(cells.find(part), std::string::npos) << part;
  }
}

TEST_F(CommandLineTest, ScheduleAndTermsAsTables) {
  const std::string rows = "CapitalCost,NumberOfPayments,DepositMode,DepositPercent,Yield,Mode\n10000,2,1,10,12,1\n";
  const Run schedule = Program("schedule --internal --start 2026-12-31", rows);
  EXPECT_EQ(schedule.out,
            "Row,Number,Date,Kind,Amount,Tax,AmountIncTax,Interest,Principal,Balance\n"
            "1,0,2026-12-31,deposit,1000.00,200.00,1200.00,0.00,0.00,9000.00\n"
            "1,1,2027-01-31,payment,4567.61,913.52,5481.13,90.00,4477.61,4522.39\n"
            "1,2,2027-02-28,payment,4567.61,913.52,5481.13,45.22,4522.39,0.00\n")
      << schedule.err;
  EXPECT_TRUE(Program("schedule", rows).out.starts_with("Row,Number,Date,Kind,Amount,Tax,AmountIncTax\n1,0,"));
  EXPECT_EQ(Program("compare --terms 2,1", rows).out,
            "Row,NumberOfPayments,Payment,PaymentIncTax,Total,TotalIncTax\n"
            "1,2,4567.61,5481.13,10135.22,12162.26\n"
            "1,1,9090.00,10908.00,10090.00,12108.00\n");
  for (const char* words : {"schedule --start 2026-02-30", "compare", "compare --terms 12,,24", "compare --terms 12,x",
                            "compare --terms 12,", "compare --terms 0"}) {
    EXPECT_EQ(Program(words, rows).status, 2) << words;
  }
  const std::string sheet = folder.Path() + "/Schedule.XLSX";
  EXPECT_EQ(Program("schedule --output " + sheet, rows).status, 0);
  ASSERT_EQ(std::system(("unzip -qo " + sheet + " -d " + folder.Path()).c_str()), 0);
  const std::string cells = ReadFile(folder.Path() + "/xl/worksheets/sheet1.xml");
  for (const char* part :
       {"state=\"frozen\"", "<f>SUM(E2:E4)</f><v>10135.22</v>", "<v>4567.61</v>", "<t>deposit</t>"}) {
    EXPECT_NE(cells.find(part), std::string::npos) << part;
  }
}

TEST_F(CommandLineTest, QuotesAreKeptAllOrNone) {
  const std::string header = "Mode,CapitalCost,NumberOfPayments,Payment\n";
  EXPECT_EQ(Program("quotes list").status, 0);
  const Run failed = Program("quotes keep --supplier 1", header + "0,12500,36,0\n0,12500,0,0\n");
  EXPECT_EQ(failed.status, 1);
  EXPECT_NE(failed.err.find("line 3"), std::string::npos) << failed.err;
  EXPECT_EQ(Program("quotes keep --supplier 1 --valid-until 2026-02-29", header).status, 2);
  const std::string words = "quotes keep --supplier 1 --customer \"O'Neill, Ltd\" --valid-until 2003-02-28";
  EXPECT_EQ(Program(words, header + "0,12500,36,0\n2,0,36,415.44\n").out, "1\n2\n");
  const std::string kept = Program("quotes list --supplier 1").out;
  EXPECT_NE(kept.find("12500.00,36,415.44,498.53,2003-02-28,expired\n2,"), std::string::npos) << kept;
  EXPECT_NE(kept.find(",\"O`Neill, Ltd\",,"), std::string::npos) << kept;
  EXPECT_EQ(Program("quotes list --supplier 2").out, kept.substr(0, kept.find('\n') + 1));
  const std::string shown = Program("quotes show 2").out;
  EXPECT_NE(shown.find("\"AskedPayment\": \"415.4400\""), std::string::npos) << shown;
  EXPECT_NE(shown.find("\"CapitalCost\": \"12499.9988\""), std::string::npos) << shown;
  EXPECT_EQ(Program("quotes show 3").status, 1);
}

TEST_F(CommandLineTest, RecordsAreShownAndChanged) {
  const std::string path = folder.Path() + "/General.dat", supplier = folder.Path() + "/S.dat";
  EXPECT_EQ(Program("record write " + path, R"({"OrgCompanyName": "Zoë Leasing", "TaxRate": 17.5})").status, 0);
  EXPECT_EQ(Program("record write " + path, R"({"MaxTerm": 60})").status, 0);
  EXPECT_EQ(FileLength(path), 824);
  const Run shown = Program("record show " + path);
  EXPECT_NE(shown.out.find("\"OrgCompanyName\": \"Zoë Leasing\""), std::string::npos);
  EXPECT_NE(shown.out.find("\"MaxTerm\": 60"), std::string::npos);
  EXPECT_EQ(Program("record write " + path, R"({"None": 1})").status, 1);
  EXPECT_EQ(Program("record write " + supplier, R"({"RangeEquipFROM0": -922337203685477.5808})").status, 0);
  EXPECT_EQ(Program("record write " + supplier, R"({"RangeEquipFROM0": "-922337203685477.5809"})").status, 1);
  EXPECT_EQ(FileLength(supplier), 555);
}

TEST_F(CommandLineTest, ARecordIsToldByItsNameAndKeepsTheBytesOfWhatIsNotNamed) {
  std::string odd;
  for (int i = 0; i < kCalculatorPreferencesSize; ++i) odd += static_cast<char>((i * 37 + 129) % 256);
  const std::string path = folder.File("General.dat", odd + "tail");
  EXPECT_EQ(Program("record write " + path, R"({"MaxTerm": 60})").status, 0);
  EXPECT_EQ(ReadFile(path), odd.replace(20, 4, "\x3c\0\0\0", 4) + "tail");
  for (const char* name : {"General.dat", "GENERAL.DAT"}) {
    const Run broken = Program("record show " + folder.File(name, odd.substr(1)));
    EXPECT_EQ(broken.status, 1);
    EXPECT_NE(broken.err.find(name), std::string::npos) << broken.err;
  }
}

TEST_F(CommandLineTest, OddOutputsAreFollowedOrRefusedNeverReplaced) {
  const std::string rows = folder.File("rows.csv", "Mode,CapitalCost,NumberOfPayments,Yield\n1,10000,36,8\n");
  const std::string link = folder.Path() + "/link.csv", dangling = folder.Path() + "/dangling.csv",
                    pipe = folder.Path() + "/pipe", general = folder.Path() + "/General.dat";
  folder.File("target.csv", "old");
  std::filesystem::create_symlink("target.csv", link);
  std::filesystem::create_symlink(folder.Path() + "/made.csv", dangling);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const auto& [output, target] : {std::pair{link, "/target.csv"}, {dangling, "/made.csv"}}) {
    EXPECT_EQ(Program("quote " + rows + " --output " + output).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(output));
    EXPECT_EQ(ReadFile(folder.Path() + target).substr(0, 11), "CapitalCost");
  }
  for (const std::string& odd : {pipe, std::string("/dev/null"), std::string("/dev/full")}) {
    EXPECT_EQ(Program("quote " + rows + " --output " + odd).status, 1) << odd;
    EXPECT_EQ(Program("record write " + odd, R"({"MaxTerm": 60})").status, 1) << odd;
    EXPECT_FALSE(std::filesystem::is_regular_file(odd)) << odd;
  }
  // What standard output does not take is a failure.
  Program("record write " + general, "{}");
  for (const std::string& words :
       {std::string("suppliers"), "record show " + general, std::string("publish --supplier 1"),
        "package --supplier 1 --yes --output " + folder.Path() + "/c.exe", "quote " + rows, std::string("--help"),
        std::string("--version")}) {
    for (const std::string where : {">/dev/full", ">&-", "| true"}) {
      const int status = WEXITSTATUS(std::system(("bash -c 'set -o pipefail; " PROGRAM " --app-folder " +
                                                  folder.Path() + "/app " + words + " 2>/dev/null " + where + "'")
                                                     .c_str()));
      // A short text may be in the pipe before its reader is gone.
      EXPECT_TRUE(status == 1 || (status == 0 && where == "| true")) << words << " " << where << " " << status;
    }
  }
}

TEST_F(CommandLineTest, ACalculatorIsPublishedFromANewFolder) {
  const char* record = R"({"OrgCompanyName": "Zoë Leasing", "ShowHeaderLogo": true, "IconName": "CHART"})";
  EXPECT_EQ(Program("preferences write", record).status, 0);
  const Run run = Program("publish --supplier 3");
  const std::string calculator = folder.Path() + "/app/calculator/";
  EXPECT_EQ(run.out + run.err, calculator + "\n");
  EXPECT_NE(ReadFile(calculator + "calc.html").find("<img src=logo.GIF>"), std::string::npos);
  EXPECT_EQ(ReadFile(calculator + "general.dat").substr(202, 12), "Zo\xEB Leasing ");
  std::string icon;
  for (const auto& each : std::filesystem::recursive_directory_iterator(folder.Path() + "/app")) {
    if (each.path().filename() == "CHART.ICO") icon = ReadFile(each.path().string());
  }
  EXPECT_NE(icon, "");
  EXPECT_EQ(ReadFile(calculator + "calc.ico"), icon);
  const Run live = Program("live --supplier 3 " + folder.File("form.html", "<p>|Supplier Town|, |Calculator Term|"));
  EXPECT_EQ(live.status, 0) << live.err;
  EXPECT_EQ(ReadFile(folder.Path() + "/form_live.html"), "\r\n<p>Reading, 12 Months (1 Year)\r\n");
  std::filesystem::remove(folder.Path() + "/app/Calc.Html");
  EXPECT_EQ(Program("publish --supplier 3").status, 1);
  EXPECT_EQ(Program("package --supplier 1 --output " + folder.Path() + "/none/x.exe").status, 1);
}

TEST_F(CommandLineTest, OnASharedDatabaseThePreferencesOfOneDeskAreThoseOfAll) {
  if (!OnServer()) GTEST_SKIP() << "a file is one desk's";
  const std::string other = folder.Path() + "/other", desk = "--app-folder " + other + " ";
  EXPECT_EQ(Program("preferences write", R"({"OrgCompanyName":"Acme","OrgEmail":"a@acme.example"})").status, 0);
  const Run run = Program(desk + "publish --supplier 3");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(ReadFile(other + "/calculator/general.dat").substr(202, 5), "Acme ");
  EXPECT_EQ(Program(desk + "preferences write", R"({"TaxRate":19})").status, 0);
  EXPECT_EQ(Program("preferences write", R"({"MinTerm":150})").status, 1) << "limits are those of the office";
  const std::string row = "Mode,CapitalCost,NumberOfPayments,Yield\n1,1000,12,5\n";
  const std::string before = ReadFile(folder.Path() + "/app/General.dat");
  EXPECT_NE(Program("quote --supplier 3", row).out, Program("quote", row).out) << "beside others, by the office's tax";
  EXPECT_EQ(ReadFile(folder.Path() + "/app/General.dat"), before) << "whose copy is another program's";
  EXPECT_EQ(Program("publish --supplier 3").status, 0);
  EXPECT_EQ(ReadFile(folder.Path() + "/app/calculator/general.dat"), ReadFile(other + "/General.dat"));
}

TEST_F(CommandLineTest, LimitsThatContradictEachOtherStopEveryCommandThatStoresOrPublishesThem) {
  const std::string app = folder.Path() + "/app";
  EXPECT_EQ(Program("suppliers").status, 0);
  const std::string before = ReadFile(app + "/General.dat");
  EXPECT_EQ(Program("preferences write", R"({"MinTerm": 150})").status, 1);
  EXPECT_EQ(ReadFile(app + "/General.dat"), before);
  EXPECT_EQ(Program("record write " + app + "/General.dat", R"({"MinTerm": 150})").status, 0);
  for (const std::string& words :
       {std::string("publish --supplier 1"), "package --supplier 1 --output " + app + "/x.exe",
        std::string("send --supplier 1 --contact 1 --as zip --subject a --message b")}) {
    const Run run = Program(words);
    EXPECT_EQ(run.status, 1) << words;
    EXPECT_NE(run.err.find("the minimum of 150 is above the maximum of 60"), std::string::npos) << run.err;
  }
  EXPECT_FALSE(FileExists(app + "/calculator/Supplier.dat") || FileExists(app + "/x.exe"));
}

TEST_F(CommandLineTest, ARunToManyThatIsTakenUpShowsWhatIsLeft) {
  Program("preferences write", R"({"OrgCompanyName":"Acme","OrgEmail":"a@acme.example"})");
  folder.File("app/Mail.INI", "[PROFILES]\nDefaultProfile=out\n[out]\nTransport=outbox\n");
  const Run sent = Program("send --all --to all --as zip --subject Hello --message m");
  EXPECT_EQ(sent.status, 0) << sent.out << sent.err;
  Connection database;
  database.Open(OnServer() ? shared : "dbq=" + folder.Path() + "/app/Tarvolinex.mdb");
  database.Execute("UPDATE Letters SET State='waiting' WHERE ID IN (SELECT MIN(ID) FROM Letters)");
  const Run left = Program("send --resume --dry-run");
  ASSERT_NE(left.out.find("Subject: Hello"), std::string::npos) << left.err;
  EXPECT_EQ(left.out.find("Subject: Hello"), left.out.rfind("Subject: Hello")) << left.out;
}

TEST_F(CommandLineTest, ANewVersionReplacesWhatNobodyHasChanged) {
  const std::string app = folder.Path() + "/app";
  const Run run = Program("suppliers");
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')), "ID,CompanyName,Tel,Town,PostCode");
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 13) << run.err;
  EXPECT_EQ(Program("--data-folder " + folder.Path() + "/none suppliers").status, OnServer() ? 0 : 1);
  const std::string page = ReadFile(app + "/CalcTemplate.html"), list = ReadFile(app + "/Delivered.lst");
  // As an older version left them; the user has changed one of the texts.
  for (const char* name : {"CalcTemplate.html", "inst0.txt", "Help/main.HTM"}) WriteFile(app + "/" + name, "old");
  std::string older;
  for (const std::string_view line : Split(list, '\n')) {
    const bool touched = EndsWithNoCase(line, "inst0.txt");
    if (!line.empty())
      older += (touched ? std::string(64, '0') : Fingerprint("old")) + std::string(line.substr(64)) + "\n";
  }
  WriteFile(app + "/Delivered.lst", older);
  EXPECT_EQ(Program("suppliers").status, 0);
  EXPECT_EQ(ReadFile(app + "/CalcTemplate.html"), page);
  EXPECT_GT(FileLength(app + "/Calc.Html"), 1000);
  EXPECT_NE(ReadFile(app + "/Help/main.HTM"), "old");
  EXPECT_EQ(ReadFile(app + "/inst0.txt"), "old");
}

TEST_F(CommandLineTest, ASheetIsWrittenWholeOrNotAtAll) {
  const std::string pdf = folder.Path() + "/sheet.pdf", rows = "Mode,CapitalCost,NumberOfPayments\n0,12500,36\n";
  const auto text = [&] {
    EXPECT_EQ(std::system(("pdftotext -layout " + pdf + " " + folder.Path() + "/text").c_str()), 0);
    return ReadFile(folder.Path() + "/text");
  };
  const auto holds = [](const std::string& page, const std::vector<std::string>& words) {
    for (const std::string& word : words) EXPECT_NE(page.find(word), std::string::npos) << word << "\n" << page;
  };
  const std::string sheet = "sheet --supplier 1 --customer Harbour --start 2027-01-31 --output " + pdf;
  EXPECT_EQ(Program(sheet + " --start 2027-02-30", rows).status, 2);
  const Run failed = Program(sheet, rows + "0,0,36\n");
  EXPECT_EQ(failed.status, 1);
  holds(failed.err, {"line 3", "priced"});
  EXPECT_FALSE(FileExists(pdf));
  EXPECT_EQ(Program(sheet + " --schedule", rows).err, "");
  holds(text(), {"Harbour", "Aldermoor Print Finishing Ltd", "£415.44", "£498.53", "28 February 2027", "Payment 36"});
  EXPECT_EQ(Program(sheet, rows + "0,12500,24\n0,12500,48\n").err, "");
  holds(text(), {"Option 1", "Option 3", "£415.44"});

  WriteFile(folder.Path() + "/app/QuoteSheet.html", "<p>\n<NOBODY>");
  EXPECT_NE(Program(sheet, rows).err.find("QuoteSheet.html, line 2: the marker <NOBODY> is not known"),
            std::string::npos);
  WriteFile(folder.Path() + "/app/QuoteSheet.html", "<p><REFERENCE> <CUSTOMER> <PAYMENT>");
  EXPECT_EQ(Program("quotes keep --supplier 1 --customer Quay", rows).out, "1\n");
  EXPECT_EQ(Program("quotes sheet 1 --output " + pdf).err, "");
  holds(text(), {"1 Quay £415.44"});
  EXPECT_EQ(Program("quotes sheet 2 --output " + pdf).status, 1);
}

}  // namespace tarvolinex
