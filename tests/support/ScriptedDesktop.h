// A desktop that answers from a script and remembers what it was asked.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "controls/Desktop.h"

namespace tarvolinex {

class ScriptedDesktop : public Desktop {
 public:
  struct Box {
    std::string text, title;
    BoxButtons buttons;
    BoxIcon icon;
  };
  std::vector<Box> boxes;
  std::deque<Answer> answers;  // the next ones; without any: Ok, No or Cancel
  std::deque<std::string> files;
  std::deque<Colour> colours;          // without any: cancelled
  std::vector<std::string> launched;   // "verb file|parameters|folder"
  std::deque<int> launchResults;       // without any: 33
  std::vector<std::string> shown;      // window names
  std::function<void(Window&)> modal;  // plays the user in a modal window
  std::function<void()> events;        // what happens meanwhile
  std::chrono::system_clock::time_point now{};
  bool busy = false;
  std::string copied;

  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override {
    boxes.push_back({text, title, buttons, icon});
    const Answer safe = buttons == BoxButtons::YesNo ? Answer::No : Answer::Cancel;
    return Next(answers, buttons == BoxButtons::Ok ? Answer::Ok : safe);
  }
  std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
    return files.empty() ? std::nullopt : std::optional(Next(files));
  }
  std::string OpenFile(const FileDialog&) override { return Next(files); }
  std::string SaveFile(const FileDialog&) override { return Next(files); }
  std::string ChooseFolder(const std::string&, const std::string&) override { return Next(files); }
  std::optional<Colour> ChooseColour(Colour) override {
    return colours.empty() ? std::nullopt : std::optional(Next(colours));
  }
  void SetBusyPointer(bool on) override { busy = on; }
  void DoEvents() override {
    if (events) events();
  }
  int ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                   const std::string& folder, int) override {
    launched.push_back(verb + " " + file + "|" + parameters + "|" + folder);
    return Next(launchResults, 33);
  }
  int OpenWith(const std::string& file) override {
    launched.push_back("openwith " + file);
    return Next(launchResults, 33);
  }
  void CopyText(const std::string& text) override { copied = text; }
  void Show(Window& window) override { shown.push_back(window.Name()); }
  void Hide(Window&) override {}
  void BringToFront(Window&) override {}
  void ShowModal(Window& window) override {
    shown.push_back(window.Name());
    if (modal) modal(window);
    window.Close();
  }
  std::chrono::system_clock::time_point Now() override { return now; }

 private:
  template <typename T>
  static T Next(std::deque<T>& script, T otherwise = {}) {
    if (script.empty()) return otherwise;
    T next = std::move(script.front());
    script.pop_front();
    return next;
  }
};

}  // namespace tarvolinex
