// Binds a window's controls to the widgets that draw them, by name.
#pragma once

#include <QHash>
#include <QObject>
#include <string>
#include <vector>

#include "controls/Controls.h"

class QKeyEvent;
class QWidget;

namespace tarvolinex {

// While a binder lives, every change of a control is painted into the widget of the same name inside `root`, and what
// the user does to a widget reaches its control as a test would reach it. Menus need no widget: they are made in the
// menu bar of `root`. A timer needs none either.
//
// The window may be destroyed first when Abandon is called then; the root must outlive the binder. A window has one
// binder at a time.
class Binder : public QObject {
 public:
  Binder(Window& window, QWidget& root);
  ~Binder() override;

  // What does not fit, one sentence each: controls without a widget, widgets that cannot draw the control of their
  // name, named widgets without a control and names that two widgets have. Empty when all is well. Containers named
  // "lay..." or "page..." and the toolkit's own widgets need no control.
  std::vector<std::string> Mismatches() const;

  // nullptr for a control that has none.
  QWidget* WidgetOf(const Control& control) const;

  // The window and its controls no longer exist: nothing of them is touched any more.
  void Abandon();

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void BindAll();
  bool BindWidget(Control& control, QWidget& widget);
  void BindAllMenus();
  void NameUpDowns();
  void RepaintColours();

  bool FilterRoot(QEvent* event);
  bool FilterControl(Control& control, QObject* object, QEvent* event);
  bool FilterKeyPress(Control& control, const QKeyEvent& event);
  void OnKeyRelease(Control* control, const QKeyEvent& event);
  void OnClose();
  void DeliverSize();

  Window* window_;  // nullptr once abandoned
  QWidget& root_;
  QWidget& inner_;  // the part whose size the window is told
  QHash<const Control*, QWidget*> widgets_;
  QHash<const QObject*, Control*> controls_;
  std::vector<std::string> misfits_;
  int keyDown_ = 0;  // the key that was pressed in this window and not yet released
};

}  // namespace tarvolinex
