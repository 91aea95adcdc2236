// A server of a test's own.
#pragma once

#include <vector>

#include "support/Process.h"

namespace tarvolinex {

class LoopbackServer {
 public:
  // kind: "smtp" or "http"; what it receives goes into the folder.
  LoopbackServer(const std::string& kind, const std::string& folder, const std::vector<std::string>& behaviour = {})
      : process_(Command(kind, folder, behaviour)) {}

  std::string Host() const { return "127.0.0.1:" + process_.FirstLine(); }
  // The same server under a name, which a certificate can be made for.
  std::string NamedHost() const { return "localhost:" + process_.FirstLine(); }

 private:
  static std::string Command(const std::string& kind, const std::string& folder,
                             const std::vector<std::string>& behaviour) {
    std::string command = "exec /usr/bin/python3 " SERVER_SCRIPT " " + kind + " " + folder;
    for (const std::string& word : behaviour) command += " '" + word + "'";
    return command;
  }
  Process process_;
};

}  // namespace tarvolinex
