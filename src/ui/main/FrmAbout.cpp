#include "ui/main/FrmAbout.h"

#include "core/Launcher.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

std::string VersionText() {
  return Tr("Version %1", {TARVOLINEX_VERSION});
}

FrmAbout::FrmAbout(Run& run)
    : Window("FrmAbout", Tr("About Tarvolinex")),
      LblTitle(*this, "LblTitle", -1, Tr("Tarvolinex")),
      LblVersion(*this, "LblVersion", -1, VersionText()),
      LblText(*this, "LblText", -1,
              Tr("Quotes leases, keeps suppliers and their rate cards, and publishes lease calculators.")),
      PicLogo(*this, "PicLogo"),
      CmdOk(*this, "CmdOk", -1, Tr("&OK")),
      CmdSysInfo(*this, "CmdSysInfo", -1, Tr("&System Info...")) {
  CmdOk.Click = [this] { Close(); };
  CmdSysInfo.Click = [&run] { LaunchDocument(run, "/etc/os-release"); };
  KeyUp = [this](Key key) {
    if (key == Key::Escape) Close();
  };
}

}  // namespace tarvolinex
