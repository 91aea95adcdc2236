// What the user should know before a form page is opened in an editor.
#pragma once

#include <string>

#include "controls/Controls.h"

namespace tarvolinex {

class frmFormEditWarning : public Window {
 public:
  explicit frmFormEditWarning(std::string pagePath);

  ControlArray<Label> LblWarning;  // 1 is a link
  CheckBox chkNotePad;
  ControlArray<CommandButton> cmdaction;  // continue, help, cancel

 private:
  void OpenEditor();
  void OpenDesignService();

  std::string pagePath_;
};

}  // namespace tarvolinex
