// Version and purpose of the program.
#pragma once

#include "controls/Controls.h"

namespace tarvolinex {

class FrmAbout : public Window {
 public:
  FrmAbout();

  Label LblTitle, LblVersion, LblText;
  PictureBox PicLogo;
  CommandButton CmdOk, CmdSysInfo;
};

// "Version 1.0.0"
std::string VersionText();

}  // namespace tarvolinex
