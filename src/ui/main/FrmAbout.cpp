#include "ui/main/FrmAbout.h"

#include "core/Launcher.h"

namespace tarvolinex {

const char* VersionText() {
  return "Version " TARVOLINEX_VERSION;
}

FrmAbout::FrmAbout()
    : Window("FrmAbout", "About Tarvolinex"),
      LblTitle(*this, "LblTitle", -1, "Tarvolinex"),
      LblVersion(*this, "LblVersion", -1, VersionText()),
      LblText(*this, "LblText", -1,
              "Quotes leases, keeps suppliers and their rate cards, and publishes lease calculators."),
      PicLogo(*this, "PicLogo"),
      CmdOk(*this, "CmdOk", -1, "&OK"),
      CmdSysInfo(*this, "CmdSysInfo", -1, "&System Info...") {
  CmdOk.Click = [this] { Close(); };
  CmdSysInfo.Click = [] { LaunchDocument("/etc/os-release"); };
  KeyUp = [this](Key key) {
    if (key == Key::Escape) Close();
  };
}

}  // namespace tarvolinex
