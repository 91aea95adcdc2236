// What a piece of work tells and asks while it runs, whoever runs it.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "controls/Desktop.h"

namespace tarvolinex {

// Handed down by whoever asks for work. Texts of ShowError and SetStatus are looked up in the translation.
class Reporter {
 public:
  Reporter() = default;
  virtual ~Reporter() = default;
  Reporter(const Reporter&) = delete;
  Reporter& operator=(const Reporter&) = delete;

  // Shows the message in a box titled "Error" and resets the status line. A fatal report then ends the program: it
  // throws ProgramEnded, and nothing more is saved.
  virtual void ShowError(std::string_view message, bool fatal = false) = 0;

  // The status line with its progress bar.
  //   progress 0 to 100: the text and the progress are shown, busy pointer on.
  //   progress negative, flashing: the text is shown and the bar runs by itself; pending events run before it returns.
  //   progress negative, not flashing: the line is cleared, busy pointer off.
  // A long operation finishes with SetStatus(false, "", -1).
  virtual void SetStatus(bool flashing, std::string_view text, int progress) = 0;

  // Leaves on the status line, where it stays until the next step, why something has ended.
  virtual void ShowReason(const std::string& reason) = 0;
  // The same where the reason stands in no report: without a status line it is still told.
  virtual void ShowDetail(const std::string& reason) = 0;

  // Waits for the answer.
  virtual Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) = 0;

  // Lets pending events run: painting, clicks, timer ticks.
  virtual void DoEvents() = 0;
  // Paints what has changed; no event reaches the program.
  virtual void Repaint() = 0;
  // The user wants the work to end.
  virtual bool Stopped() const = 0;
  // The user wants the work to rest: nothing is begun meanwhile.
  virtual bool Paused() const { return false; }
  virtual std::chrono::system_clock::time_point Now() const = 0;
};

// Reports a failure: the report's own text, then why it came and what the user can do, each after an empty line. The
// reason also stays on the status line until the next step.
void ReportFailure(Reporter& reporter, const char* report, const std::string& reason, const std::string& remedy = {});

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
