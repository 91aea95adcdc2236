// What happens on the window while something is built and sent.
#pragma once

#include <string>

#include "platform/Transfer.h"

namespace tarvolinex {

// Blocks the window's commands and the controls of the send tab while it lives. Escape and closing the window then set
// `StopRequested`.
class LongWork {
 public:
  LongWork();
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

 private:
  static void Block(bool blocked);
};

// Shows a transfer's progress with this text on the status line, lets the windows live, and stops when the user asks.
TransferProgress ShowProgress(std::string text);

// Leaves the reason of a reported failure on the status line, where it stays until the next step; without a window it
// goes to standard error.
void ShowDetail(const std::string& reason);

}  // namespace tarvolinex
