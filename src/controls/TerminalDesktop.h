// The desktop of a run without a display: texts go to standard error, questions get their safe answer.
#pragma once

#include "controls/Desktop.h"

namespace tarvolinex {

class TerminalDesktop : public Desktop {
 public:
  // yesToAll: every question is answered with Yes or OK instead of No or Cancel.
  explicit TerminalDesktop(bool yesToAll) : yesToAll_(yesToAll) {}

  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override;
  std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  std::string OpenFile(const FileDialog&) override { return {}; }
  std::string SaveFile(const FileDialog&) override { return {}; }
  std::string ChooseFolder(const std::string&, const std::string&) override { return {}; }
  std::optional<Colour> ChooseColour(Colour) override { return {}; }
  void Note(const std::string& text) override;
  void SetBusyPointer(bool) override {}
  void DoEvents() override {}
  // Nothing is opened: the path goes to standard error.
  int ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                   const std::string& folder, int showCommand) override;
  int OpenWith(const std::string& file) override;
  void CopyText(const std::string&) override {}
  void Show(Window&) override {}
  void Hide(Window&) override {}
  void BringToFront(Window&) override {}
  void ShowModal(Window& window) override { window.Close(); }

 private:
  bool yesToAll_;
};

}  // namespace tarvolinex
