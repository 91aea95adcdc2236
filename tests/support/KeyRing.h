// A session of the desktop of a test's own: its bus and, on that, a real key store that is open.
#pragma once

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "platform/RuntimeError.h"
#include "platform/network/KeyStore.h"
#include "support/Process.h"

namespace tarvolinex {

class KeyRing {
 public:
  // Everything that it keeps lies in the folder.
  explicit KeyRing(const std::string& folder) : session_(Command(folder)) {
    setenv("DBUS_SESSION_BUS_ADDRESS", session_.FirstLine().c_str(), 1);
    for (int tries = 0; !Answers() && tries < 500; ++tries) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_TRUE(Answers()) << "the key store did not start";
  }
  ~KeyRing() { setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1); }
  KeyRing(const KeyRing&) = delete;
  KeyRing& operator=(const KeyRing&) = delete;

 private:
  static std::string Command(const std::string& folder) {
    std::ofstream(folder + "/bus.conf")
        << "<busconfig><type>session</type><listen>unix:tmpdir=" + folder +
               "</listen><auth>EXTERNAL</auth><policy context='default'><allow send_destination='*'/>"
               "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
    return "cd '" + folder +
           "' && mkdir -m 700 run && export HOME=$PWD XDG_RUNTIME_DIR=$PWD/run XDG_DATA_HOME=$PWD/data && exec "
           "2>/dev/null dbus-run-session --config-file=bus.conf -- sh -c 'echo $DBUS_SESSION_BUS_ADDRESS; printf test "
           "| "
           "exec gnome-keyring-daemon --foreground --unlock --components=secrets >/dev/null'";
  }
  static bool Answers() {
    try {
      HasStoredPassword({"server", "user"});
      return true;
    } catch (const RuntimeError&) {
      return false;
    }
  }
  Process session_;
};

}  // namespace tarvolinex
