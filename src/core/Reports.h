// Error reports, the status line and the busy pointer.
#pragma once

#include <string_view>

namespace tarvolinex {

// Shows the message in a box titled "Error" and resets the status line. A fatal report then ends the program: it
// throws ProgramEnded, and nothing more is saved.
void ShowError(std::string_view message, bool fatal = false);

// The status line of the main window with its progress bar.
//   progress 0 to 100: the text and the progress are shown, busy pointer on.
//   progress negative, flashing: the text is shown and the bar runs by itself; pending events run before it returns.
//   progress negative, not flashing: the line is cleared, busy pointer off.
// A long operation finishes with SetStatus(false, "", -1).
void SetStatus(bool flashing, std::string_view text, int progress);

// What the status line reads while nothing goes on, until the next one; empty = nothing.
void SetNote(std::string_view text);

void SetBusy(bool on);

// The hourglass for as long as it lives.
class BusyWhile {
 public:
  BusyWhile() { SetBusy(true); }
  ~BusyWhile() { SetBusy(false); }
  BusyWhile(const BusyWhile&) = delete;
  BusyWhile& operator=(const BusyWhile&) = delete;
};

}  // namespace tarvolinex
