// Shows what was typed here beside what somebody else has stored meanwhile, and lets the user choose field by field.
#pragma once

#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "ui/main/BoundFields.h"

namespace tarvolinex {

class FrmConflict : public Window {
 public:
  // about: whose fields they are, as a sentence. The choices are made in `met`, which must outlive the window and not
  // be empty; they count when Confirmed is set.
  FrmConflict(const std::string& about, std::vector<MetField>& met);

  Label LblAbout;
  ListView LvwFields;
  CommandButton CmdMine, CmdTheirs, CmdAllMine, CmdAllTheirs;
  CommandButton CmdStore, CmdCancel;

  bool Confirmed = false;  // every field is chosen, and the user wants it stored

 private:
  void ListFields();
  void Choose(int row, MetField::Choice choice);
  void ChooseSelected(MetField::Choice choice);
  void ChooseAll(MetField::Choice choice);
  void Turn();
  void ShowChoices();
  std::vector<MetField>& met_;
};

}  // namespace tarvolinex
