// Programs that start, write and are killed beside each other, in a folder with an awkward name.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "core/Records.h"
#include "platform/files/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

class TwoProgramsTest : public ::testing::Test {
 protected:
  struct Running {
    pid_t process;
    std::string output;
  };
  Running Start(const std::string& app, std::vector<std::string> words) {
    const std::string output = folder.Path() + "/output" + std::to_string(++started_);
    words.insert(words.begin(), {"tarvolinex", "--app-folder", app});
    const pid_t process = fork();
    if (process == 0) {
      const int file = open(output.c_str(), O_CREAT | O_WRONLY, 0600), nothing = open("/dev/null", O_RDONLY);
      dup2(nothing, 0);
      dup2(file, 1);
      dup2(file, 2);
      std::vector<char*> given;
      for (std::string& word : words) given.push_back(word.data());
      given.push_back(nullptr);
      execv(PROGRAM, given.data());
      _exit(127);
    }
    return {process, output};
  }
  // What it said, when it ended as it should.
  static std::string Finish(const Running& running) {
    int status = 0;
    waitpid(running.process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << ReadFile(running.output);
    return ReadFile(running.output);
  }
  std::string Folder(const std::string& name) { return folder.Path() + "/" + name; }
  TemporaryFolder folder;

 private:
  int started_ = 0;
};

TEST_F(TwoProgramsTest, AFirstStartThatWasCutOffIsMadeGoodByTwoAtOnce) {
  constexpr int kKills = 8;
  const std::string awkward = "Büro & Łódź 100% " + std::string(180, 'x');
  std::mt19937 random(20261125);
  const auto begin = std::chrono::steady_clock::now();
  Finish(Start(Folder(awkward), {"suppliers"}));
  const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
  std::uniform_int_distribution<long> moment(whole.count() / 4, whole.count());
  int cutOff = 0;
  for (int kill = 0; kill < kKills && !HasFailure(); ++kill) {
    const std::string app = Folder(awkward + std::to_string(kill));
    const Running first = Start(app, {"suppliers"});
    usleep(static_cast<useconds_t>(moment(random)));
    ::kill(first.process, SIGKILL);
    waitpid(first.process, nullptr, 0);
    const bool done = FileExists(app + "/Tarvolinex.mdb") && !FileExists(app + "/Database.zip");
    cutOff += FolderExists(app) && !done;

    const Running one = Start(app, {"suppliers"}), other = Start(app, {"suppliers"});
    for (const Running& running : {one, other}) {
      const std::string list = Finish(running);
      EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 13) << list;
    }
    EXPECT_TRUE(FileExists(app + "/Database.Bak") && !FileExists(app + "/Database.zip"));
  }
  // The kills must have come in the middle.
  EXPECT_GT(cutOff, 1);
}

TEST_F(TwoProgramsTest, PackagesThatAreMadeAtOnceHoldTheirOwnSupplier) {
  const std::string app = Folder("app");
  Finish(Start(app, {"suppliers"}));
  for (int round = 0; round < 3; ++round) {
    std::vector<Running> running;
    for (const char* id : {"1", "2", "3"}) {
      running.push_back(Start(app, {"--yes", "package", "--supplier", id, "--output", Folder(id) + ".zip"}));
    }
    for (const Running& program : running) Finish(program);
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

}  // namespace tarvolinex
