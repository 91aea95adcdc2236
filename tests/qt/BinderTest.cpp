#include "qt/Binder.h"

#include "Player.h"
#include "qt/Look.h"
#include "qt/UpDownButtons.h"

namespace tarvolinex {

using Binding = ShownWindow;

QColor BaseOf(const QWidget& widget) {
  return widget.palette().color(QPalette::Base);
}

// Those of the menus, the tabs and the filter hold on every tab.
TEST_F(Binding, AnAccessKeyLeadsToOneThingOnEachTab) {
  const QString twice = "OE";  // of the contact buttons, beside a menu and a tab
  QStringList outside = {Find<QLabel>("LblFilter").text()};
  for (const QAction* menu : Root().findChild<QMenuBar*>()->actions()) outside.append(menu->text());
  auto& tabs = Find<QTabWidget>("TabMain");
  for (int i = 0; i < tabs.count(); ++i) outside.append(tabs.tabText(i));
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
  for (const QPushButton* button : Find<QWidget>("FraPlan").findChildren<QPushButton*>()) {
    EXPECT_FALSE(QKeySequence::mnemonic(button->text()).isEmpty()) << Held(button->text());
  }
}

TEST_F(Binding, TypingFiresChangeAtEachKeyAndPaintsWhatTheHandlerSets) {
  std::string changes;
  TextBox& cost = form.quote.TxtProCalc(kBoxCapitalCost);
  cost.Change = [&] {
    changes += cost.Text() + " ";
    form.quote.LblResult(kResultPayment).SetCaption("-1234567." + cost.Text());
  };
  auto& line = Find("TxtProCalc_0");
  line.setFocus();
  Keys(line, "12");
  auto& drawn = Find<QLabel>("LblResult_0");
  EXPECT_EQ(drawn.text(), "-1,234,567.12");  // thousands apart
  cost.SetText("7");                         // by program: once, and the widget does not answer
  EXPECT_EQ(changes, "1 12 7 ");
  EXPECT_EQ(line.text(), "7");
  for (const Colour ink : {Colour{0x0000C0}, kSystemWindowText}) {
    form.quote.LblResult(kResultPayment).SetForeColour(ink);
    const QColor text = QApplication::palette().color(QPalette::WindowText);
    EXPECT_EQ(drawn.palette().color(QPalette::WindowText) == text, ink == kSystemWindowText);
  }
  EXPECT_FALSE(Find<QWidget>("ProgressBar1").isVisible());
  form.ProgressBar1.SetValue(5);
  EXPECT_TRUE(Find<QWidget>("ProgressBar1").isVisible());
}

TEST_F(Binding, ABoxForANumberTakesNothingElseAndAltWritesNothing) {
  TextBox& yield = form.quote.TxtProCalc(kBoxYield);
  yield.SetForNumber("£");
  yield.LostFocus = nullptr;  // what the program makes of the text
  int refused = 0;
  yield.Refused = [&] { ++refused; };
  auto& line = Find("TxtProCalc_5");
  line.setFocus();
  Keys(line, "1a2 .x5£%");
  EXPECT_EQ(yield.Text(), "12.5£%");
  EXPECT_GE(refused, 2);
  for (const char* pasted : {" 1,234.5\n", "1234 x"}) {
    line.selectAll();
    QGuiApplication::clipboard()->setText(pasted);
    Press(line, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(yield.Text(), "1,234.5");
  }
  yield.SetText("12.5abc");  // by program: whatever it is
  Click(Find("TxtProCalc_0"));
  Click(line, line.rect().center());
  EXPECT_EQ(line.selectedText(), "12.5abc");
  yield.SetFault("Yield: too much");
  EXPECT_EQ(line.toolTip(), "Yield: too much");
  EXPECT_NE(BaseOf(line), QApplication::palette().color(QPalette::Base));
  yield.SetFault("");
  EXPECT_TRUE(line.actions().isEmpty());
  form.TxtFilter.SetFault("no such thing");
  EXPECT_EQ(Find("TxtFilter").toolTip(), "no such thing") << "a box for a text";
  form.TxtFilter.SetFault("");

  auto& filter = Find("TxtFilter");
  filter.setFocus();
  QTest::keyClicks(&filter, "q", Qt::AltModifier);
  EXPECT_EQ(filter.text(), "");
}

TEST_F(Binding, TheCursorStaysWhereTheUserTypes) {
  TextBox& name = form.supplier.TxtSupplier(kSupplierName);
  form.TabMain.SelectTab(kTabDetails);
  name.SetText("Brwn");
  auto& line = Find("TxtSupplier_0");
  line.setFocus();
  line.setCursorPosition(2);
  Keys(line, "o");
  EXPECT_EQ(name.Text(), "Brown");
  EXPECT_EQ(line.cursorPosition(), 3);
  name.Change = [&] {
    if (!name.Text().ends_with('!')) name.SetText(name.Text() + "!");
  };
  Press(line, Qt::Key_Backspace);
  EXPECT_EQ(line.text(), "Brwn!");
  EXPECT_EQ(line.cursorPosition(), 2);
}

TEST_F(Binding, LimitsAndLocksHoldForTheUserOnly) {
  auto& line = Find("TxtFilter");
  form.TxtFilter.SetMaxLength(3);
  Keys(line, "abcd");
  EXPECT_EQ(form.TxtFilter.Text(), "abc");
  form.TxtFilter.SetText("longer");
  form.TxtFilter.SetLocked(true);
  Keys(line, "x");
  EXPECT_EQ(line.text(), "longer");
  EXPECT_EQ(BaseOf(line), QApplication::palette().color(QPalette::Button));
  form.TxtFilter.SetLocked(false);
  EXPECT_EQ(BaseOf(line), QApplication::palette().color(QPalette::Base));

  form.TabMain.SelectTab(kTabSend);
  TextBox& message = form.send.TxtEmail(1);
  auto& edit = Find<QPlainTextEdit>("TxtEmail_1");
  message.SetMaxLength(4);
  Keys(edit, "a\rbc");  // a line's end is two characters
  EXPECT_EQ(message.Text(), "a\r\nb");
  EXPECT_EQ(edit.toPlainText(), "a\nb");
}

TEST_F(Binding, ChoicesFireClickOnceAndFollowTheControl) {
  int clicks = 0;
  CheckBox& lock = form.quote.ckCapLock;
  lock.Click = [&] { ++clicks; };
  auto& check = Find<QCheckBox>("ckCapLock");
  check.click();
  EXPECT_TRUE(lock.Value() && clicks == 1);
  lock.Click = [&] { lock.SetValue(false); };  // a handler that takes it back
  lock.SetValue(false);
  check.click();
  EXPECT_FALSE(check.isChecked());

  auto &mail = Find<QRadioButton>("OpCalcCreate_0"), &file = Find<QRadioButton>("OpCalcCreate_1");
  mail.click();
  file.click();
  EXPECT_TRUE(!form.send.OpCalcCreate(0).Value() && form.send.OpCalcCreate(1).Value());
  form.send.OpCalcCreate(0).SetValue(true);
  EXPECT_TRUE(mail.isChecked() && !file.isChecked());
}

TEST_F(Binding, ListsOfChoicesFireClickAndKeepStillWhenLocked) {
  ComboBox& term = form.quote.CboProCalc(kListTerm);
  int clicks = 0;
  term.Click = [&] { ++clicks; };
  auto& combo = Find<QComboBox>("CboProCalc_1");
  EXPECT_EQ(combo.currentIndex(), -1);
  term.SetListIndex(2);
  EXPECT_EQ(combo.currentText(), "3 Years");
  combo.setFocus();
  Press(combo, Qt::Key_Down);
  EXPECT_EQ(clicks, 2);
  term.SetLocked(true);
  Press(combo, Qt::Key_Down);
  Keys(combo, "1");
  Click(combo);
  EXPECT_FALSE(combo.view()->isVisible());
  EXPECT_EQ(std::pair(term.ListIndex(), combo.currentIndex()), std::pair(3, 3));
}

TEST_F(Binding, ArrowsAndArrowKeysStepTheBoxWithoutTakingTheFocus) {
  UpDown& upDown = form.quote.UpDNew(kBoxYield);
  upDown.Buddy = &form.quote.TxtProCalc(kBoxYield);
  std::string steps;
  upDown.UpClick = [&] { steps += "u"; };
  upDown.DownClick = [&] { steps += "d"; };
  auto& line = Find("TxtProCalc_5");
  auto& arrows = Find<UpDownButtons>("UpDNew_5");
  line.setFocus();
  Click(arrows, {5, 3});
  Click(arrows, {5, arrows.height() - 3});
  Press(line, Qt::Key_Up);
  Press(line, Qt::Key_Down);
  EXPECT_EQ(steps, "udud");
  EXPECT_TRUE(line.hasFocus());
  QTest::mousePress(&arrows, Qt::LeftButton, {}, {5, 3});
  EXPECT_TRUE(QTest::qWaitFor([&] { return steps.size() >= 8; }));  // held: it repeats
  QTest::mouseRelease(&arrows, Qt::LeftButton, {}, {5, 3});
  form.quote.TxtProCalc(kBoxYield).SetLocked(true);
  const std::string before = steps;
  Click(arrows, {5, 3});
  EXPECT_EQ(steps, before);
}

TEST_F(Binding, KeysCountOnlyWhenTheyWentDownInTheWindow) {
  std::string keys;
  form.KeyUp = [&](Key key) { keys += "window " + std::to_string(static_cast<int>(key)) + "; "; };
  form.LvwSuppliers.KeyUp = [&](Key key) { keys += "list " + std::to_string(static_cast<int>(key)) + ", "; };
  List().setFocus();
  QTest::keyRelease(&List(), Qt::Key_Escape);
  EXPECT_EQ(keys, "");
  Press(List(), Qt::Key_Delete);
  Press(List(), Qt::Key_Escape);
  EXPECT_EQ(keys, "list 46, window 46; list 27, window 27; ");
}

}  // namespace tarvolinex
