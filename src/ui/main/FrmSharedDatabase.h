// Which database the desk works on: its own file, or one on a server that several desks share.
#pragma once

#include <functional>
#include <string>

#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "core/Run.h"

namespace tarvolinex {

// What is typed counts once OK is pressed and the database can be opened. The password goes into the desktop's key
// store and nowhere else.
class FrmSharedDatabase : public Window {
 public:
  // open: opens the run's database anew; true when it is open.
  using OpenDatabase = std::function<bool()>;
  FrmSharedDatabase(Run& run, OpenDatabase open);

  CheckBox ChkShared;            // else the file in the data folder
  ControlArray<Label> LblField;  // captions of the boxes below, in their order
  TextBox TxtServer, TxtPort, TxtDatabase, TxtUser;
  TextBox TxtPassword;  // as it is typed now; empty when the one that is kept stays
  ComboBox CboSecurity;
  CommandButton CmdTest, CmdMove, CmdHome;
  Label LblSaid;                          // what the last of these came to
  ControlArray<CommandButton> cmdaction;  // OK, Cancel

 private:
  void ShowStored();
  void EnableFields();
  std::string Entered() const;
  std::string WithPassword() const;
  void CmdTest_Click();
  void CmdMove_Click();
  void CmdHome_Click();
  void Accept();
  // What is said of a try: what the action says, or in plain words why it failed, which gives false.
  bool Try(const std::function<std::string()>& action);
  Run& run_;
  OpenDatabase open_;
};

}  // namespace tarvolinex
