// Puts a new, empty-of-own-data database into a folder of the user's choice.
#pragma once

#include <functional>
#include <string>

#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FRmCreateDB : public Window {
 public:
  // open: opens the data folder's database; true when it is open.
  using OpenDatabase = std::function<bool(bool& askUser)>;
  FRmCreateDB(Run& run, OpenDatabase open);

  Frame FraFolder;
  TextBox TxtFolder;
  CommandButton CmdBrowse;
  ControlArray<CommandButton> cmdaction;  // create, cancel, help

 private:
  void CmdBrowse_Click();
  void Create();
  // Asks before it makes a missing one; false keeps the dialog open.
  bool HaveFolder(const std::string& folder);
  Run& run_;
  OpenDatabase open_;
};

// The folder that the user chooses, at most 260 characters; empty when cancelled. The title is "Select A Directory"
// when none is given; the choice starts at the start folder when that exists.
std::string BrowseForFolder(const std::string& title, const std::string& startFolder);

}  // namespace tarvolinex
