// The main window's controls, drawn by the real window, without the program's handlers.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QWidget>

#include "core/MainWindow.h"
#include "qt/QtDesktop.h"

namespace tarvolinex {

class ShownWindow : public testing::Test {
 protected:
  ShownWindow() {
    UseDesktop(&desktop_);
    desktop_.Show(form_);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Root()));
  }
  ~ShownWindow() override { UseDesktop(nullptr); }

  QWidget& Root() { return *desktop_.WidgetOf(form_); }

  template <typename Widget>
  Widget& Find(const char* name) {
    auto* widget = Root().findChild<Widget*>(name);
    if (!widget) throw std::logic_error(std::string("no widget ") + name);
    return *widget;
  }

  static void Click(QWidget& widget, QPoint at = {}) { QTest::mouseClick(&widget, Qt::LeftButton, {}, at); }
  // Lets the clicks that were put off reach the program.
  static void Settle() { QCoreApplication::processEvents(); }

  QtDesktop desktop_;
  MainWindow form_;
};

}  // namespace tarvolinex
