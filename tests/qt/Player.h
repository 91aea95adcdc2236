// What a user does with a real window: looks for things, clicks, types and answers.
#pragma once

#include <QtTest>
#include <QtWidgets>

#include "qt/QtDesktop.h"
#include "support/Fixture.h"

namespace tarvolinex {

class Player : public testing::Test, protected WithRun {
 protected:
  explicit Player(Window& window) : window_(window) { UseDesktop(&desktop); }
  ~Player() override { UseDesktop(nullptr); }
  void Show(Window& window) {
    desktop.Show(window);
    WaitFor(window);
  }
  void WaitFor(Window& window) { EXPECT_TRUE(QTest::qWaitForWindowActive(desktop.WidgetOf(window))); }

  QWidget& Root() { return *desktop.WidgetOf(window_); }
  template <typename Widget = QLineEdit>
  static Widget& In(QWidget& root, const char* name) {
    auto* widget = root.findChild<Widget*>(name);
    if (!widget) throw std::logic_error(std::string("no widget ") + name);
    return *widget;
  }
  template <typename Widget = QLineEdit>
  Widget& Find(const char* name) {
    return In<Widget>(Root(), name);
  }
  QTreeView& List() { return Find<QTreeView>("LvwSuppliers"); }

  // Lets what was put off reach the program.
  static void Settle() { QCoreApplication::processEvents(); }
  static void Click(QWidget& widget, QPoint at = {}) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
    Settle();
  }
  static void ClickRow(int row, QAbstractItemView& list) {
    Click(*list.viewport(), list.visualRect(list.model()->index(row, 0)).center());
  }
  void ClickTab(int tab) {
    QTabBar& bar = *Find<QTabWidget>("TabMain").tabBar();
    Click(bar, bar.tabRect(tab).center());
  }
  void ClickTool(const char* key) {
    auto& bar = Find<QToolBar>("Toolbar1");
    Click(*bar.widgetForAction(&In<QAction>(bar, key)));
  }
  static void Keys(QWidget& widget, const char* text) { QTest::keyClicks(&widget, text); }
  static void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&widget, key, modifiers);
  }
  // Replaces what the field holds, as a user who selects it all.
  void Type(const char* name, const char* text) {
    auto& line = Find(name);
    Click(line, line.rect().center());
    Press(line, Qt::Key_A, Qt::ControlModifier);
    Press(line, Qt::Key_Delete);
    Keys(line, text);
  }
  void Shortcut(Qt::Key key) {
    QWidget* focus = QApplication::focusWidget();
    Press(focus ? *focus : Root(), key, Qt::ControlModifier);
    Settle();
  }
  // When a box, dialog or modal window of that kind is up.
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
  // Presses Send and, in the dialog, the way of that number; then one report is read.
  void Send(int way) {
    WhenWaiting<QDialog>([this, way](QDialog& dialog) {
      Click(In<QRadioButton>(dialog, ("OpFileType_" + std::to_string(way)).c_str()), {10, 10});
      AnswerWith(QMessageBox::Ok);
      Click(In<QPushButton>(dialog, "cmdaction_0"));
    });
    Click(Find<QPushButton>("CmdCalcGo_0"));
  }
  std::string Ask(const std::string& statement) {
    Recordset answer;
    answer.Open(statement, dynamic_cast<FrmMain&>(window_).database.Plain());
    return answer.EndOfFile() ? "(none)" : ValueText(answer.Field(0));
  }
  std::string Town(int id) { return Ask("SELECT Town FROM suppliers WHERE ID=" + std::to_string(id)); }

  TemporaryFolder folder;
  QtDesktop desktop;
  std::vector<std::string> said;  // the texts of the boxes that were answered

 private:
  Window& window_;
};

// The main window's controls, drawn by the real window, without a database.
class ShownWindow : public Player {
 protected:
  ShownWindow() : Player(form) {
    form.TxtFilter.Change = form.TabMain.Click = nullptr;  // they ask the database
    Show(form);
    Root().resize(1400, 900);
    Settle();
  }
  FrmMain form{run};
};

// The whole program on the sample database, drawn by the real window and played by mouse and keyboard.
class SampleWindow : public Player {
 protected:
  SampleWindow() : Player(form) {
    AppFolder = DataFolder = folder.Path();
    DeliverInto(folder.Path());
    CalculatorPreferences.AliasSupplier = "Dealer";
    CalculatorPreferences.OrgEmail = "leases@example.com";
    form.Load();
    WaitFor(form);
  }
  FrmMain form{run};
};

}  // namespace tarvolinex
