// Programs that start, write and are killed beside each other, in a folder with an awkward name.
#include <algorithm>
#include <chrono>
#include <random>

#include "core/Records.h"
#include "platform/files/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

class TwoProgramsTest : public ::testing::Test {
 protected:
  std::string Folder(const std::string& name) { return folder.Path() + "/" + name; }
  // The words of a command with its app folder; what it says goes to a file of this name.
  std::string Program(const std::string& app, const std::string& words, const std::string& output) {
    return PROGRAM " --app-folder '" + Folder(app) + "' " + words + " >'" + Folder(output) + "' 2>&1";
  }
  // Runs them all at once; each has to end well.
  static void RunBeside(const std::vector<std::string>& programs) {
    std::string all, ends;
    for (const std::string& program : programs) {
      all += program + " & p" + std::to_string(ends.size()) + "=$!; ";
      ends += "wait $p" + std::to_string(ends.size()) + " && ";
    }
    EXPECT_EQ(std::system((all + ends + "true").c_str()), 0) << all;
  }
  TemporaryFolder folder;
};

TEST_F(TwoProgramsTest, AFirstStartThatWasCutOffIsMadeGoodByTwoAtOnce) {
  constexpr int kKills = 8;
  const std::string awkward = "Büro & Łódź 100% " + std::string(180, 'x');
  std::mt19937 random(20261125);
  const auto begin = std::chrono::steady_clock::now();
  RunBeside({Program(awkward, "suppliers", "list")});
  const double whole = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  std::uniform_real_distribution<double> moment(whole / 4, whole);
  int cutOff = 0;
  for (int kill = 0; kill < kKills && !HasFailure(); ++kill) {
    const std::string name = awkward + std::to_string(kill), app = Folder(name);
    std::system(
        ("timeout -s KILL " + std::to_string(moment(random)) + " " + Program(name, "suppliers", "killed")).c_str());
    const bool done = FileExists(app + "/Tarvolinex.mdb") && !FileExists(app + "/Database.zip");
    cutOff += FolderExists(app) && !done;
    RunBeside({Program(name, "suppliers", "one"), Program(name, "suppliers", "other")});
    for (const char* said : {"one", "other"}) {
      const std::string list = ReadFile(Folder(said));
      EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 13) << list;
    }
    EXPECT_TRUE(FileExists(app + "/Database.Bak") && !FileExists(app + "/Database.zip"));
  }
  // The kills must have come in the middle.
  EXPECT_GT(cutOff, 1);
}

TEST_F(TwoProgramsTest, PackagesThatAreMadeAtOnceHoldTheirOwnSupplier) {
  RunBeside({Program("app", "suppliers", "list")});
  for (int round = 0; round < 3; ++round) {
    std::vector<std::string> programs;
    for (const std::string id : {"1", "2", "3"}) {
      programs.push_back(Program("app", "--yes package --supplier " + id + " --output " + Folder(id) + ".zip", id));
    }
    RunBeside(programs);
    for (int id = 1; id <= 3; ++id) {
      ZipComponent zip;
      zip.ZipFileName = Folder(std::to_string(id)) + ".zip";
      zip.UnzipToFolder = Folder("unpacked" + std::to_string(id));
      zip.Unzip();
      SupplierCalcSettingsRecord record;
      ReadRecord(zip.UnzipToFolder + "/Supplier.dat", record);
      EXPECT_EQ(record.ID, id);
    }
  }
}

TEST_F(TwoProgramsTest, ABatchThatIsCutOffOrStoppedLeavesWholeFilesAlone) {
  constexpr int kSuppliers = 300;
  RunBeside({Program("app", "suppliers", "list")});
  Connection database;
  database.Open("dbq=" + Folder("app") + "/Tarvolinex.mdb");
  database.Begin();
  for (int i = 13; i <= kSuppliers; ++i) {
    database.Execute("INSERT INTO suppliers (ID,CompanyName) VALUES (" + std::to_string(i) + ",'Dealer')");
  }
  database.Commit();
  database.Close();
  const std::string out = Folder("out");
  // Once the first is there.
  const auto endWith = [&](const std::string& signal) {
    return std::system((Program("app", "package --all --as zip --output '" + out + "'", "said") + " & p=$!; " +
                        "until ls 2>&1 '" + out + "' | grep -q zip; do sleep 0.02; done; kill -" + signal +
                        " $p; wait $p")
                           .c_str());
  };
  EXPECT_NE(endWith("KILL"), 0);
  for (const std::string& made : ListFiles(out + "/*.zip")) std::filesystem::remove(out + "/" + made);
  EXPECT_NE(endWith("TERM"), 0);
  const std::string report = ReadFile(out + "/report.csv");
  const auto made = std::count(report.begin(), report.end(), '\n') - 1;
  EXPECT_LT(made, kSuppliers);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(out), {}), made + 1) << report;
}

}  // namespace tarvolinex
