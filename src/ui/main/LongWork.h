// What happens on the main window while something is built and sent.
#pragma once

#include "ui/main/FrmMain.h"

namespace tarvolinex {

// Blocks the window's commands and the controls of the send tab while it lives; afterwards the focus is where it was.
// Escape and closing the window then set `StopRequested`.
class LongWork {
 public:
  explicit LongWork(FrmMain& form);
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

 private:
  void Block(bool blocked);
  FrmMain& form_;
  Control* focused_;
};

}  // namespace tarvolinex
