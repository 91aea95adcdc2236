// What is paid when: every line of a quote's schedule from a start that the user chooses.
#pragma once

#include "calc/Schedule.h"
#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FrmSchedule : public Window {
 public:
  // quote: priced. start: what the lease begins with.
  FrmSchedule(Run& run, const QuoteRecord& quote, CalendarDay start);

  Label LblStart;
  TextBox TxtStart;  // YYYY-MM-DD
  CheckBox ChkInternal;
  ListView LvwLines;
  Label LblTotals;
  CommandButton CmdCopy, CmdSave, CmdClose;

 private:
  void TxtStart_Change();
  void ShowLines();
  void Save();
  Run& run_;
  const QuoteRecord quote_;
  Schedule schedule_;  // from the last start that there is one for
};

}  // namespace tarvolinex
