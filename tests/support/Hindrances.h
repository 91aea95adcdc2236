// What keeps a program from writing: permissions and a full disk.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace tarvolinex {

// File permissions do not bind the superuser; while it lives the test is somebody else.
class AnotherUser {
 public:
  AnotherUser() { Become(65534); }
  ~AnotherUser() { Become(0); }

 private:
  void Become(uid_t user) { EXPECT_TRUE(getuid() != 0 || seteuid(user) == 0); }
};

// While it lives no file grows beyond the size.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signal_);
  }

 private:
  void (*signal_)(int);
  rlimit before_ = {};
};

}  // namespace tarvolinex
