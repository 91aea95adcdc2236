// Building and packing a calculator, beside the same folder through zip -9 and a copy of the self-extractor.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "distribute/InstallPackage.h"
#include "publish/CalculatorFolder.h"
#include "publish/Preferences.h"
#include "support/ScriptedDesktop.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {
namespace {

// The sample database and the delivered files in an app folder of its own, the first supplier shown.
class Sample {
 public:
  Sample() {
    UseDesktop(&desktop_);
    std::filesystem::copy(DELIVERED_FOLDER, folder_, std::filesystem::copy_options::recursive);
    run_.AppFolder = run_.DataFolder = folder_;
    run_.CalculatorPreferences.OrgEmail = "leases@example.com";
    form_ = std::make_unique<FrmMain>(run_);
    form_->Load();
    LoadCalculatorPreferences(run_.Places(), run_.CalculatorPreferences, run_);
    SaveCalculatorPreferences(form_->OwnBranding(), run_);
  }
  ~Sample() {
    form_.reset();
    std::filesystem::remove_all(folder_);
  }
  const std::string& Folder() const { return folder_; }
  void Build() { BuildCalculatorFolder(form_->Calculator(), run_); }
  bool Pack() { return BuildDistFiles(form_->OwnBranding(), kSendProgram, std::nullopt, run_); }

 private:
  // On the disk, or in the folder that TMPDIR names.
  static std::string MakeFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "package-bench-XXXXXX").string();
    return mkdtemp(name.data());
  }
  std::string folder_ = MakeFolder();
  ScriptedDesktop desktop_;
  Run run_;
  std::unique_ptr<FrmMain> form_;
};

Sample& TheSample() {
  static Sample sample;
  return sample;
}

void BuildAndPack(benchmark::State& state) {
  Sample& sample = TheSample();
  for (auto _ : state) {
    sample.Build();
    if (!sample.Pack()) state.SkipWithError("not packed");
  }
}
BENCHMARK(BuildAndPack)->Unit(benchmark::kMillisecond);

void ZipAndCopy(benchmark::State& state) {
  const std::string folder = TheSample().Folder();
  TheSample().Build();
  const std::string command = "cd " + folder +
                              " && rm -f z.zip && zip -9 -q z.zip calculator/* -x 'calculator/calc_test*' && "
                              "cat Xcdsfx32.bin z.zip > z.exe && sync z.exe";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("zip failed");
  }
}
BENCHMARK(ZipAndCopy)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolinex
