// The folder in which the program works while the machine fails, and what is found there afterwards.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace tarvolinex {

class Workplace {
 public:
  Workplace() { std::filesystem::create_directories(App()); }

  // The watched folder, and the app folder in it.
  std::string Work() const { return root_.Path() + "/work"; }
  std::string App() const { return Work() + "/app"; }
  // Keeps the watched folder as it is now, and puts it back.
  void Keep() const;
  void Restore() const;

  // Runs it in a process of its own, whose words go to Words(); returns its exit status, or -signal.
  int Run(const std::function<int()>& job) const;
  std::string Words() const;

  // By name below the watched folder; of a database nothing but its name.
  std::map<std::string, std::string> Files() const;
  // Everything that users have entered, a row a line; "damaged" in front when the database is not sound, empty when
  // there is none. A fresh database's contacts may have addresses of their own still.
  static std::string Business(const std::string& dataFolder, bool withAddresses = true);

 private:
  TemporaryFolder root_{TemporaryFolder::Quick()};
};

// Whether the name is one that the program, the database or the packer uses for a file that it is writing: a killed
// program may leave it, and the next one takes it away.
bool IsUnfinished(const std::string& path);

}  // namespace tarvolinex
