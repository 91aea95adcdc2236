// What the program asks of the desktop around it: boxes, dialogs, pointer, documents, windows, the clock.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"

namespace tarvolinex {

struct RichDocument;

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

struct FileDialog {
  std::string title;
  std::string folder;    // where it starts
  std::string fileName;  // proposed name; may be empty
  std::string filter;    // "Text (*.txt)|*.txt|All files (*.*)|*.*"
};

// Show commands of ShellExecute.
inline constexpr int kShowNormal = 1;
inline constexpr int kShowMinimised = 6;

class Desktop {
 public:
  virtual ~Desktop() = default;

  // Waits for the answer. Closing the box is Ok, Cancel or No, whichever the buttons offer; Cancel of
  // Yes, No and Cancel.
  virtual Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) = 0;
  // nullopt when cancelled.
  virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                              const std::string& initial) = 0;
  // Chosen path; empty when cancelled. OpenFile accepts existing files only, SaveFile asks nothing about them.
  virtual std::string OpenFile(const FileDialog& dialog) = 0;
  virtual std::string SaveFile(const FileDialog& dialog) = 0;
  virtual std::string ChooseFolder(const std::string& title, const std::string& startFolder) = 0;
  virtual std::optional<Colour> ChooseColour(Colour initial) = 0;

  // Something worth knowing that needs no answer; where messages are lines of text, it is one of them.
  virtual void Note(const std::string&) {}

  virtual void SetBusyPointer(bool busy) = 0;
  // Lets pending events run: painting, clicks, timer ticks.
  virtual void DoEvents() = 0;
  // Long work calls it now and then: when the last painting is a while ago, what has changed is painted. No click, key
  // or tick reaches the program.
  virtual void Repaint() {}

  // Hands a document, program or address to the program associated with it. verb: "open" or "edit".
  // Returns 32 or more on success, 2 for a missing file, 31 when no program is associated.
  virtual int ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                           const std::string& folder, int showCommand) = 0;
  // Lets the user choose a program for the file; the same results.
  virtual int OpenWith(const std::string& file) = 0;
  virtual void CopyText(const std::string& text) = 0;
  // Both forms of one table; whoever takes it chooses.
  virtual void CopyTable(const std::string& text, const std::string& /*html*/) { CopyText(text); }

  // Asks for a printer and prints the document. False when the user cancels, or there is nothing to print on. Throws
  // RuntimeError when the printer does not take it.
  virtual bool Print(const RichDocument&) { return false; }

  virtual void Show(Window& window) = 0;
  virtual void Hide(Window& window) = 0;
  virtual void BringToFront(Window& window) = 0;
  // Returns when the window has been closed.
  virtual void ShowModal(Window& window) = 0;
  // Whether a window or a box waits for the user's answer.
  virtual bool Waits() const { return false; }

  virtual std::chrono::system_clock::time_point Now() { return std::chrono::system_clock::now(); }
};

// The desktop of this run.
// REQUIRES: UseDesktop has been called.
Desktop& TheDesktop();
// desktop is not owned and must outlive its use; nullptr takes it away.
void UseDesktop(Desktop* desktop);

}  // namespace tarvolinex
