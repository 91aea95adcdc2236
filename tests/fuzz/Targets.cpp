#include "fuzz/Targets.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/Globals.h"
#include "support/ScriptedDesktop.h"

namespace tarvolinex::fuzz {

namespace {

// A desktop that nobody answers, and a folder that is quick to write to where there is one.
struct Surroundings {
  ScriptedDesktop desktop;
  std::string folder;
  Surroundings() {
    const bool quick = std::filesystem::is_directory("/dev/shm");
    folder = (quick ? "/dev/shm" : std::filesystem::temp_directory_path().string()) + "/tarvolinex-fuzz-XXXXXX";
    Expect(mkdtemp(folder.data()) != nullptr, "a folder for the files");
    UseDesktop(&desktop);
    AppFolder = DataFolder = folder;
  }
  ~Surroundings() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
};

Surroundings& Around() {
  static Surroundings around;
  around.desktop.boxes.clear();
  return around;
}

}  // namespace

std::vector<Target> AllTargets() {
  std::vector<Target> all;
  for (const auto& targets : {DatabaseTargets(), PageTargets(), PackageTargets(), TextTargets(), WindowsTargets()}) {
    all.insert(all.end(), targets.begin(), targets.end());
  }
  return all;
}

void Expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

const std::string& Scratch() {
  return Around().folder;
}

std::string Put(const std::string& name, std::string_view bytes) {
  std::string path = Scratch() + "/" + name;
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return path;
}

}  // namespace tarvolinex::fuzz
