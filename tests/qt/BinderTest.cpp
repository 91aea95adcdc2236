#include "qt/Binder.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include "ShownWindow.h"
#include "core/Globals.h"
#include "qt/Designs.h"
#include "qt/Look.h"
#include "qt/UpDownButtons.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FRmCreateDB.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmLeaseOrgDetails.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/FrmSearch.h"
#include "ui/options/FrmOptions.h"
#include "ui/options/frmFormEditWarning.h"

namespace tarvolinex {
namespace {

using Names = std::vector<std::string>;

using Binding = ShownWindow;

// What takes the focus says to a screen reader what it is. Swatches and boxes may get their names when they are shown.
Names Nameless(const Window& window, const Binder& binder) {
  Names found;
  for (const Control* control : window.Controls()) {
    QWidget* widget = binder.WidgetOf(*control);
    if (!widget || widget->focusPolicy() == Qt::NoFocus || dynamic_cast<const TabStrip*>(control)) continue;
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(widget);
    if (!read || read->text(QAccessible::Name).isEmpty()) found.push_back(window.Name() + "." + control->WidgetName());
  }
  return found;
}

TEST_F(Binding, EveryControlHasItsWidgetAndEveryWidgetItsControlAndAName) {
  EXPECT_EQ(desktop_.BinderOf(form_)->Mismatches(), Names());
  EXPECT_EQ(Nameless(form_, *desktop_.BinderOf(form_)), Names());
  WebServer = "www.example.com";
  FrmAbout about;
  FrmLeaseOrgDetails details;
  FrmSearch search;
  FrmIconEdit editor;
  FrmOptions options;
  frmFormEditWarning warning("");
  FRmCreateDB create;
  FrmMailSettings mail;
  editor.SetLoadPic("");
  for (Frame* frame : {&options.FraTextString, &options.FraValue, &options.FraColour, &options.FraYesNo,
                       &options.FraDepOptions, &options.FraLogo}) {
    frame->SetCaption("What is edited");
  }
  options.ChkYesNo.SetCaption("On");
  options.ChkdepSelect(1).SetCaption("Percentage");
  for (Window* window :
       std::initializer_list<Window*>{&about, &details, &search, &editor, &options, &warning, &create, &mail}) {
    const auto root = MakeDesign(window->Name());
    const Binder binder(*window, *root);
    EXPECT_EQ(binder.Mismatches(), Names()) << window->Name();
    EXPECT_EQ(Nameless(*window, binder), Names());
  }
}

// Those of the menus, the tabs and the filter hold on every tab.
TEST_F(Binding, AnAccessKeyLeadsToOneThingOnEachTab) {
  const QString twice = "OE";  // of the contact buttons, beside a menu and a tab
  QStringList outside;
  for (const char* menu : {"MnuFile", "MnuEdit", "MnuOptions", "MnuHelp"}) {
    outside.append(Find<QMenu>(menu).title());
  }
  auto& tabs = Find<QTabWidget>("TabMain");
  for (int i = 0; i < tabs.count(); ++i) outside.append(tabs.tabText(i));
  outside.append(Find<QLabel>("LblFilter").text());
  for (int i = 0; i < tabs.count(); ++i) {
    QStringList captions = outside;
    for (const QLabel* label : tabs.widget(i)->findChildren<QLabel*>()) {
      if (label->buddy()) captions.append(label->text());
    }
    for (const auto* button : tabs.widget(i)->findChildren<QAbstractButton*>()) captions.append(button->text());
    QString keys;
    for (const QString& caption : captions) {
      const QString key = QKeySequence::mnemonic(caption).toString().right(1);
      EXPECT_FALSE(!key.isEmpty() && keys.contains(key) && !(i == kTabDetails && twice.contains(key)))
          << Held(caption) << " on tab " << i;
      keys += key;
    }
    EXPECT_GE(keys.size(), 9);
  }
}

TEST_F(Binding, TypingFiresChangeAtEachKeyAndPaintsWhatTheHandlerSets) {
  Names changes;
  TextBox& cost = form_.quote.TxtProCalc(kBoxCapitalCost);
  cost.Change = [&] {
    changes.push_back(cost.Text());
    form_.quote.LblResult(kResultPayment).SetCaption("for " + cost.Text());
  };
  auto& line = Find<QLineEdit>("TxtProCalc_0");
  line.setFocus();
  QTest::keyClicks(&line, "12");
  EXPECT_EQ(changes, Names({"1", "12"}));
  EXPECT_EQ(Find<QLabel>("LblResult_0").text(), "for 12");

  cost.SetText("7");  // by program: once, and the widget does not answer
  EXPECT_EQ(changes, Names({"1", "12", "7"}));
  EXPECT_EQ(line.text(), "7");
}

TEST_F(Binding, ABoxForANumberTakesNothingElseAndAltWritesNothing) {
  TextBox& yield = form_.quote.TxtProCalc(kBoxYield);
  yield.SetForNumber("£");
  int refused = 0;
  yield.Refused = [&] { ++refused; };
  auto& line = Find<QLineEdit>("TxtProCalc_5");
  line.setFocus();
  QTest::keyClicks(&line, "1a2 .x5£%");
  EXPECT_EQ(yield.Text(), "12.5£%");
  EXPECT_GE(refused, 2);
  for (const char* pasted : {" 1,234.5\n", "1234 x"}) {
    line.selectAll();
    QGuiApplication::clipboard()->setText(pasted);
    QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(yield.Text(), "1,234.5");
  }
  yield.SetText("12.5abc");  // by program: whatever it is
  EXPECT_EQ(line.text(), "12.5abc");
  Click(Find<QWidget>("TxtProCalc_0"));
  Click(line, line.rect().center());
  Settle();
  EXPECT_EQ(line.selectedText(), "12.5abc");
  yield.SetFault("Yield: too much");
  EXPECT_EQ(line.toolTip(), "Yield: too much");
  EXPECT_NE(line.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));
  yield.SetFault("");
  EXPECT_TRUE(line.actions().isEmpty());

  form_.TabMain.SelectTab(kTabDetails);
  auto& town = Find<QLineEdit>("TxtSupplier_3");
  town.setFocus();
  QTest::keyClicks(&town, "q", Qt::AltModifier);
  EXPECT_EQ(town.text(), "");
}

TEST_F(Binding, ResultsAreDrawnWithThousandsApart) {
  form_.quote.LblResult(kResultPayment).SetCaption("-1234567.89");
  auto& drawn = Find<QLabel>("LblResult_0");
  EXPECT_EQ(drawn.text(), "-1,234,567.89");
  for (const Colour ink : {Colour{0x0000C0}, kSystemWindowText}) {
    form_.quote.LblResult(kResultPayment).SetForeColour(ink);
    const QColor text = QApplication::palette().color(QPalette::WindowText);
    EXPECT_EQ(drawn.palette().color(QPalette::WindowText) == text, ink == kSystemWindowText);
  }
  EXPECT_FALSE(Find<QWidget>("ProgressBar1").isVisible());
  form_.ProgressBar1.SetValue(5);
  EXPECT_TRUE(Find<QWidget>("ProgressBar1").isVisible());
}

TEST_F(Binding, TheCursorStaysWhereTheUserTypes) {
  TextBox& name = form_.supplier.TxtSupplier(kSupplierName);
  form_.TabMain.SelectTab(kTabDetails);
  name.SetText("Brwn");
  auto& line = Find<QLineEdit>("TxtSupplier_0");
  line.setFocus();
  line.setCursorPosition(2);
  QTest::keyClicks(&line, "o");
  EXPECT_EQ(name.Text(), "Brown");
  EXPECT_EQ(line.cursorPosition(), 3);
  name.Change = [&] {
    if (!name.Text().ends_with('!')) name.SetText(name.Text() + "!");
  };
  QTest::keyClick(&line, Qt::Key_Backspace);
  EXPECT_EQ(line.text(), "Brwn!");
  EXPECT_EQ(line.cursorPosition(), 2);
}

TEST_F(Binding, LimitsAndLocksHoldForTheUserOnly) {
  form_.TabMain.SelectTab(kTabDetails);
  TextBox& name = form_.supplier.TxtSupplier(kSupplierName);
  auto& line = Find<QLineEdit>("TxtSupplier_0");
  name.SetMaxLength(3);
  QTest::keyClicks(&line, "abcd");
  EXPECT_EQ(name.Text(), "abc");
  name.SetText("longer");
  EXPECT_EQ(line.text(), "longer");
  name.SetLocked(true);
  QTest::keyClicks(&line, "x");
  EXPECT_EQ(name.Text(), "longer");
  EXPECT_EQ(line.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Button));
  name.SetLocked(false);
  EXPECT_EQ(line.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));

  form_.TabMain.SelectTab(kTabSend);
  TextBox& message = form_.send.TxtEmail(1);
  auto& edit = Find<QPlainTextEdit>("TxtEmail_1");
  message.SetMaxLength(4);
  QTest::keyClicks(&edit, "a");
  QTest::keyClick(&edit, Qt::Key_Return);
  QTest::keyClicks(&edit, "bc");  // a line's end is two characters
  EXPECT_EQ(message.Text(), "a\r\nb");
  EXPECT_EQ(edit.toPlainText(), "a\nb");
}

TEST_F(Binding, ChoicesFireClickOnceAndFollowTheControl) {
  int clicks = 0;
  CheckBox& lock = form_.quote.ckCapLock;
  lock.Click = [&] { ++clicks; };
  auto& check = Find<QCheckBox>("ckCapLock");
  check.click();
  EXPECT_TRUE(lock.Value());
  EXPECT_EQ(clicks, 1);
  lock.Click = [&] { lock.SetValue(false); };  // a handler that takes it back
  lock.SetValue(false);
  check.click();
  EXPECT_FALSE(check.isChecked());

  auto &mail = Find<QRadioButton>("OpCalcCreate_0"), &file = Find<QRadioButton>("OpCalcCreate_1");
  mail.click();
  file.click();
  EXPECT_FALSE(form_.send.OpCalcCreate(0).Value());
  EXPECT_TRUE(form_.send.OpCalcCreate(1).Value());
  form_.send.OpCalcCreate(0).SetValue(true);
  EXPECT_TRUE(mail.isChecked());
  EXPECT_FALSE(file.isChecked());
}

TEST_F(Binding, ListsOfChoicesFireClickAndKeepStillWhenLocked) {
  ComboBox& term = form_.quote.CboProCalc(kListTerm);
  int clicks = 0;
  term.Click = [&] { ++clicks; };
  auto& combo = Find<QComboBox>("CboProCalc_1");
  EXPECT_EQ(combo.currentIndex(), -1);
  term.SetListIndex(2);
  EXPECT_EQ(combo.currentText(), "3 Years");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(term.ListIndex(), 3);
  EXPECT_EQ(clicks, 2);
  term.SetLocked(true);
  QTest::keyClick(&combo, Qt::Key_Down);
  QTest::keyClicks(&combo, "1");
  Click(combo);
  EXPECT_FALSE(combo.view()->isVisible());
  EXPECT_EQ(term.ListIndex(), 3);
  EXPECT_EQ(combo.currentIndex(), 3);
}

TEST_F(Binding, ArrowsAndArrowKeysStepTheBoxWithoutTakingTheFocus) {
  UpDown& upDown = form_.quote.UpDNew(kBoxYield);
  upDown.Buddy = &form_.quote.TxtProCalc(kBoxYield);
  std::string steps;
  upDown.UpClick = [&] { steps += "u"; };
  upDown.DownClick = [&] { steps += "d"; };
  auto& line = Find<QLineEdit>("TxtProCalc_5");
  auto& arrows = Find<UpDownButtons>("UpDNew_5");
  line.setFocus();
  Click(arrows, {5, 3});
  Click(arrows, {5, arrows.height() - 3});
  QTest::keyClick(&line, Qt::Key_Up);
  QTest::keyClick(&line, Qt::Key_Down);
  EXPECT_EQ(steps, "udud");
  EXPECT_TRUE(line.hasFocus());
  QTest::mousePress(&arrows, Qt::LeftButton, {}, {5, 3});
  EXPECT_TRUE(QTest::qWaitFor([&] { return steps.size() >= 8; }));  // held: it repeats
  QTest::mouseRelease(&arrows, Qt::LeftButton, {}, {5, 3});
  form_.quote.TxtProCalc(kBoxYield).SetLocked(true);
  const std::string before = steps;
  Click(arrows, {5, 3});
  EXPECT_EQ(steps, before);
}

TEST_F(Binding, KeysCountOnlyWhenTheyWentDownInTheWindow) {
  Names keys;
  form_.KeyUp = [&](Key key) { keys.push_back("window " + std::to_string(static_cast<int>(key))); };
  form_.LvwSuppliers.KeyUp = [&](Key key) { keys.push_back("list " + std::to_string(static_cast<int>(key))); };
  auto& list = Find<QWidget>("LvwSuppliers");
  list.setFocus();
  QTest::keyRelease(&list, Qt::Key_Escape);
  EXPECT_EQ(keys, Names());
  QTest::keyClick(&list, Qt::Key_Delete);
  QTest::keyClick(&list, Qt::Key_Escape);
  EXPECT_EQ(keys, Names({"list 46", "window 46", "list 27", "window 27"}));
}

}  // namespace
}  // namespace tarvolinex
