// The desktop of a run with windows.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <map>
#include <memory>
#include <vector>

#include "controls/Desktop.h"
#include "qt/AltLetters.h"

class QEventLoop;
class QWidget;

namespace tarvolinex {

class Binder;

// REQUIRES: a QApplication that outlives it.
//
// Every call that waits for the user (boxes, dialogs, ShowModal) and DoEvents throws ProgramEnded when the program has
// ended meanwhile. A window may be destroyed at any time; what drew it goes with it.
class QtDesktop : public Desktop {
 public:
  QtDesktop();
  ~QtDesktop() override;

  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& initial) override;
  std::string OpenFile(const FileDialog& dialog) override;
  std::string SaveFile(const FileDialog& dialog) override;
  std::string ChooseFolder(const std::string& title, const std::string& startFolder) override;
  std::optional<Colour> ChooseColour(Colour initial) override;

  void SetBusyPointer(bool busy) override;
  void DoEvents() override;
  void Repaint() override;
  int ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                   const std::string& folder, int showCommand) override;
  int OpenWith(const std::string& file) override;
  void CopyText(const std::string& text) override;
  void CopyTable(const std::string& text, const std::string& html) override;

  // A window that was closed before is reopened. Throws RuntimeError when it has no design.
  bool Print(const RichDocument& document) override;
  void Show(Window& window) override;
  void Hide(Window& window) override;
  void BringToFront(Window& window) override;
  void ShowModal(Window& window) override;
  bool Waits() const override;

  // Runs the event loop until the last window is closed or the program ends; at once when no window is shown. Returns
  // the exit status.
  int Run();

  // The widget and the binder that draw the window; nullptr while it has not been shown.
  QWidget* WidgetOf(Window& window) const;
  Binder* BinderOf(Window& window) const;

 private:
  struct Drawn {
    // The binder goes before the widgets that it binds.
    std::unique_ptr<QWidget> widget;
    std::unique_ptr<Binder> binder;
    QEventLoop* loop = nullptr;  // of a window that is shown modally; not owned
  };
  class PlainPointer;

  Drawn& Draw(Window& window);
  void Forget(Window& window);
  void OnClosed(Window& window);
  void Present(Window& window, QWidget& widget);
  bool AnyShown() const;
  QWidget* TopWidget() const;

  std::map<Window*, Drawn> drawn_;
  std::vector<Window*> modal_;  // the innermost last
  bool busy_ = false;
  QElapsedTimer sincePainting_;
  AltLetters altLetters_;
  QObject listener_;      // to the event loop, for as long as the desktop lives
  bool running_ = false;  // a request to quit before that would stop the next box instead
};

}  // namespace tarvolinex
