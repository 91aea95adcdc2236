// A session of the desktop of a test's own: its bus and, on that, a real key store that is open.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "platform/RuntimeError.h"
#include "platform/network/KeyStore.h"

namespace tarvolinex {

class KeyRing {
 public:
  // Everything that it keeps lies in the folder.
  explicit KeyRing(const std::string& folder) {
    std::ofstream(folder + "/bus.conf")
        << "<busconfig><type>session</type><listen>unix:tmpdir=" + folder +
               "</listen><auth>EXTERNAL</auth><policy context='default'><allow send_destination='*'/>"
               "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
    const std::string script =
        "cd '" + folder +
        "' && mkdir -m 700 run && export HOME=$PWD XDG_RUNTIME_DIR=$PWD/run XDG_DATA_HOME=$PWD/data && " +
        "exec 2>/dev/null dbus-run-session --config-file=bus.conf -- sh -c 'echo $DBUS_SESSION_BUS_ADDRESS; printf "
        "test | exec "
        "gnome-keyring-daemon --foreground --unlock --components=secrets >/dev/null'";
    int ends[2];
    if (pipe(ends) != 0) return;
    session_ = fork();
    if (session_ == 0) {
      setpgid(0, 0);
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
      execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
      _exit(127);
    }
    close(ends[1]);
    std::string address;
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) address += c;
    close(ends[0]);
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!Answers() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(kTick);
    EXPECT_TRUE(Answers()) << "the key store did not start";
  }
  ~KeyRing() {
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    kill(-session_, SIGTERM);
    waitpid(session_, nullptr, 0);
  }
  KeyRing(const KeyRing&) = delete;
  KeyRing& operator=(const KeyRing&) = delete;

 private:
  static bool Answers() {
    try {
      HasStoredPassword({"server", "user"});
      return true;
    } catch (const RuntimeError&) {
      return false;
    }
  }
  static constexpr std::chrono::milliseconds kTick{20};
  pid_t session_ = -1;
};

}  // namespace tarvolinex
