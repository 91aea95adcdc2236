// A server process of a test's own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace tarvolinex {

class LoopbackServer {
 public:
  // kind: "smtp" or "http"; what it receives goes into the folder.
  LoopbackServer(const std::string& kind, const std::string& folder, std::vector<std::string> behaviour = {}) {
    std::vector<std::string> words = {"/usr/bin/python3", SERVER_SCRIPT, kind, folder};
    words.insert(words.end(), behaviour.begin(), behaviour.end());
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int ends[2];
    if (pipe(ends) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
      execv(arguments[0], arguments.data());
      _exit(127);
    }
    close(ends[1]);
    std::string line;
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) line += c;
    close(ends[0]);
    port_ = line;
    EXPECT_FALSE(port_.empty()) << "the server did not start";
  }
  ~LoopbackServer() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::string Host() const { return "127.0.0.1:" + port_; }
  // The same server under a name, which a certificate can be made for.
  std::string NamedHost() const { return "localhost:" + port_; }

 private:
  pid_t process_ = -1;
  std::string port_;
};

}  // namespace tarvolinex
