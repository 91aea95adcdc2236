#include "fuzz/Targets.h"

#include <cstdio>
#include <cstdlib>

#include "support/ScriptedDesktop.h"
#include "support/TemporaryFolder.h"

namespace tarvolinex::fuzz {

namespace {

// A desktop that nobody answers, and a folder that is quick to write to.
struct Surroundings {
  ScriptedDesktop desktop;
  Run run;
  TemporaryFolder folder{TemporaryFolder::Quick()};
  Surroundings() {
    UseDesktop(&desktop);
    run.AppFolder = run.DataFolder = folder.Path();
  }
};

Surroundings& Around() {
  static Surroundings around;
  around.desktop.boxes.clear();
  return around;
}

}  // namespace

Run& TheRun() {
  return Around().run;
}

std::vector<Target> AllTargets() {
  std::vector<Target> all;
  for (const auto& targets :
       {DatabaseTargets(), PageTargets(), PackageTargets(), ServerTargets(), TextTargets(), WindowsTargets()}) {
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
  return Around().folder.Path();
}

std::string Put(const std::string& name, std::string_view bytes) {
  return Around().folder.File(name, std::string(bytes));
}

}  // namespace tarvolinex::fuzz
