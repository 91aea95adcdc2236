// What happens on the window while something is built and sent.
#pragma once

#include <string>

#include "controls/Window.h"
#include "platform/network/Transfer.h"

namespace tarvolinex {

// Blocks the window's commands and the controls of the send tab while it lives; afterwards the focus is where it was.
// Escape and closing the window then set `StopRequested`.
class LongWork {
 public:
  LongWork();
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

 private:
  static void Block(bool blocked);
  Control* focused_;
};

// Shows a transfer's progress with this text on the status line, lets the windows live, and stops when the user asks.
TransferProgress ShowProgress(std::string text);

// Reports a failure: the report's own text, then why it came and what the user can do, each after an empty line. The
// reason also stays on the status line until the next step.
void ReportFailure(const char* report, const std::string& reason, const std::string& remedy = {});

// Leaves on the status line, where it stays until the next step, why something that is no failure has ended; without a
// window it goes to standard error.
void ShowDetail(const std::string& reason);

}  // namespace tarvolinex
