// A program that a test starts, and that ends with it.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace tarvolinex {

class Process {
 public:
  // command: of the shell. Returns when it has printed its first line.
  explicit Process(const std::string& command) {
    int ends[2];
    if (pipe(ends) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      setpgid(0, 0);
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
      execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      _exit(127);
    }
    close(ends[1]);
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) line_ += c;
    close(ends[0]);
    EXPECT_FALSE(line_.empty()) << command << " did not start";
  }
  ~Process() {
    kill(-process_, SIGTERM);  // with what it has started
    waitpid(process_, nullptr, 0);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  const std::string& FirstLine() const { return line_; }

 private:
  pid_t process_ = -1;
  std::string line_;
};

}  // namespace tarvolinex
