// What the user should know before a form page is opened in an editor.
#pragma once

#include <string>

#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class frmFormEditWarning : public Window {
 public:
  frmFormEditWarning(Run& run, std::string pagePath);

  ControlArray<Label> LblWarning;  // 1 is a link
  CheckBox chkNotePad;
  ControlArray<CommandButton> cmdaction;  // continue, help, cancel

 private:
  void OpenEditor();
  void OpenDesignService();

  Run& run_;
  std::string pagePath_;
};

}  // namespace tarvolinex
