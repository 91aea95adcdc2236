// Version and purpose of the program.
#pragma once

#include <string>

#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FrmAbout : public Window {
 public:
  explicit FrmAbout(Run& run);

  Label LblTitle, LblVersion, LblText;
  PictureBox PicLogo;
  CommandButton CmdOk, CmdSysInfo;
};

// "Version 1.0.0"
std::string VersionText();

}  // namespace tarvolinex
