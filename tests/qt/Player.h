// What a user does with a real window: looks for things, clicks, types and answers.
#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "qt/QtDesktop.h"
#include "support/Fixture.h"

namespace tarvolinex {

class Player : public testing::Test {
 protected:
  explicit Player(FrmMain& window) : window_(window) {
    ResetGlobals();
    UseDesktop(&desktop);
  }
  ~Player() override {
    ResetGlobals();
    UseDesktop(nullptr);
  }

  QWidget& Root() { return *desktop.WidgetOf(window_); }
  template <typename Widget = QLineEdit>
  Widget& Find(const char* name) {
    auto* widget = Root().findChild<Widget*>(name);
    if (!widget) throw std::logic_error(std::string("no widget ") + name);
    return *widget;
  }
  QAbstractItemView& List() { return Find<QAbstractItemView>("LvwSuppliers"); }

  static void Settle() { QCoreApplication::processEvents(); }
  static void Click(QWidget& widget, QPoint at = {}) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
    Settle();
  }
  void ClickRow(int row, QAbstractItemView& list) {
    Click(*list.viewport(), list.visualRect(list.model()->index(row, 0)).center());
  }
  void ClickTab(int tab) {
    QTabBar& bar = *Find<QTabWidget>("TabMain").tabBar();
    Click(bar, bar.tabRect(tab).center());
  }
  void ClickTool(const char* key) {
    auto& bar = Find<QToolBar>("Toolbar1");
    Click(*bar.widgetForAction(bar.findChild<QAction*>(key)));
  }
  // Replaces what the field holds, as a user who selects it all.
  void Type(const char* name, const char* text) {
    auto& line = Find(name);
    Click(line, line.rect().center());
    QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, text);
  }
  void Shortcut(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : &Root(), key, modifiers);
    Settle();
  }
  // When a box or dialog of that kind is up.
  template <typename Top>
  static void WhenWaiting(std::function<void(Top&)> action) {
    QTimer::singleShot(0, qApp, [action = std::move(action)] {
      auto* top = qobject_cast<Top*>(QApplication::activeModalWidget());
      if (top && top->isVisible()) return action(*top);
      WhenWaiting<Top>(action);
    });
  }
  void AnswerWith(QMessageBox::StandardButton button) {
    WhenWaiting<QMessageBox>([this, button](QMessageBox& box) {
      said.push_back(box.text().toStdString());
      Click(*box.button(button));
    });
  }
  std::string Ask(const std::string& statement) {
    Recordset answer;
    answer.Open(statement, TheStore->connection);
    return answer.EndOfFile() ? "(none)" : ValueText(answer.Field(0));
  }
  std::string Town(int id) { return Ask("SELECT Town FROM suppliers WHERE ID=" + std::to_string(id)); }

  TemporaryFolder folder;
  QtDesktop desktop;
  std::vector<std::string> said;  // the texts of the boxes that were answered

 private:
  FrmMain& window_;
};

}  // namespace tarvolinex
