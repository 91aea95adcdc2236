// Chooses the contacts that a run of messages goes to.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "distribute/SendLetters.h"

namespace tarvolinex {

class FrmReaders : public Window {
 public:
  // letters: to everybody who may be ticked. chosen: who is, by contact; what the user leaves ticked stands there when
  // Confirmed.
  FrmReaders(Run& run, const std::vector<Letter>& letters, const std::set<int>& chosen);

  Label LblFilter;
  TextBox TxtFilter;
  ListView LvwReaders;
  Label LblCount;
  CommandButton CmdAll, CmdNone, CmdOk, CmdCancel;
  bool Confirmed = false;
  std::set<int> Chosen() const;

 private:
  void Filter();
  // Of those that are seen.
  void TickAll(bool ticked);
  void ShowCount();

  Run& run_;
};

}  // namespace tarvolinex
