// corpus NAME PATH...: hands every file of each path (a file, or a folder with all that is in it) to the target of that
// name. Every target must be given something.
#include <cstdio>
#include <filesystem>
#include <map>

#include "fuzz/Targets.h"
#include "platform/files/Files.h"

int main(int count, char** words) {
  using namespace tarvolinex;
  namespace fs = std::filesystem;
  std::map<std::string, void (*)(std::string_view)> targets;
  std::map<std::string, int> fed;
  for (const fuzz::Target& target : fuzz::AllTargets()) targets[target.name] = target.read;
  for (int i = 1; i + 1 < count; i += 2) {
    const auto feed = [&](const fs::path& path) {
      std::printf("%s %s\n", words[i], path.c_str());
      std::fflush(stdout);
      targets.at(words[i])(ReadFile(path.string()));
      ++fed[words[i]];
    };
    if (fs::is_regular_file(words[i + 1])) {
      feed(words[i + 1]);
    } else {
      for (const auto& entry : fs::recursive_directory_iterator(words[i + 1])) {
        if (entry.is_regular_file()) feed(entry.path());
      }
    }
  }
  for (const auto& target : targets) fuzz::Expect(fed[target.first] > 0, target.first.c_str());
}
