// The window that shows how far the unpacking is, with a button to stop it.
#pragma once

#include <cstdint>
#include <string>

#include "system/Failure.h"

namespace tarvolinex::windows {

struct Stopped {};  // thrown when the user stops the work

class ProgressWindow {
 public:
  // The window appears when the work takes longer than a moment; never when `silent`.
  ProgressWindow(const std::wstring& title, bool silent, std::uint64_t bytes);
  ~ProgressWindow();
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  void Say(const std::wstring& text);
  // So many bytes more are done. Lets the window answer the user; throws Stopped.
  void Advance(std::uint64_t bytes);
  // Takes the window away for good: one that nobody lets answer would hold up other programs.
  void Close();

 private:
  friend struct ProgressWindowEvents;
  void MakeControls();
  void Arrange(unsigned dots_per_inch);
  void Show();

  bool silent_, stopped_ = false, shown_ = false;
  std::uint64_t bytes_, done_ = 0, started_;
  void* window_ = nullptr;
  void* label_ = nullptr;
  void* bar_ = nullptr;
  void* button_ = nullptr;
  void* font_ = nullptr;
};

}  // namespace tarvolinex::windows
