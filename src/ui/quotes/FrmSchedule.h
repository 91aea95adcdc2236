// What is paid when: every line of a quote's schedule from a start that the user chooses.
#pragma once

#include <optional>

#include "calc/Schedule.h"
#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FrmSchedule : public Window {
 public:
  // quote: priced. It begins today.
  FrmSchedule(Run& run, const QuoteRecord& quote);

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
  Schedule schedule_;
  std::optional<CalendarDay> start_;  // the last one that was a day
};

}  // namespace tarvolinex
