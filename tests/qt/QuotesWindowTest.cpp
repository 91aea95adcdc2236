// Kept quotes in the real windows.
#include "Player.h"

namespace tarvolinex {

TEST_F(SampleWindow, KeptQuotesAreWorkedOnByKeyboardAlone) {
  const auto tabs = [](QWidget& root, const char* target) {
    for (int i = 0; i < 40 && root.focusWidget() != &In<QWidget>(root, target); ++i) {
      Press(*root.focusWidget(), Qt::Key_Tab);
    }
    return root.focusWidget();
  };
  Type("TxtProCalc_0", "12500");
  for (const char* customer : {"Ash", "O'Neill"}) {
    WhenWaiting<QDialog>([customer](QDialog& dialog) {
      auto& box = In<QLineEdit>(dialog, "TxtKeep_0");
      EXPECT_TRUE(QTest::qWaitFor([&] { return box.hasFocus(); }));
      Keys(box, customer);
      Press(box, Qt::Key_Return);
    });
    Press(*tabs(Root(), "CmdKeepQuote"), Qt::Key_Space);
    Settle();
  }
  // The second time it is the quote that is shown whose details are changed.
  EXPECT_EQ(Ask("SELECT Customer FROM KeptQuotes"), "O`NeillAsh");
  const std::string payment = Find<QLabel>("LblResult_0").text().toStdString();
  Type("TxtProCalc_0", "20000");
  WhenWaiting<QDialog>([&](QDialog& dialog) {
    auto& list = In<QTreeView>(dialog, "LvwQuotes");
    auto& search = In<QLineEdit>(dialog, "TxtSearch");
    EXPECT_TRUE(QTest::qWaitFor([&] { return search.hasFocus(); }));
    Keys(search, "neill");
    Press(search, Qt::Key_Down);
    EXPECT_TRUE(list.hasFocus());
    Press(list, Qt::Key_Y, Qt::ControlModifier);
    Press(list, Qt::Key_Delete);
    Settle();
    EXPECT_EQ(list.model()->rowCount(), 0);
    Press(list, Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(list.model()->rowCount(), 1);
    Press(list, Qt::Key_Return);
  });
  Root().activateWindow();
  WaitFor(form);
  Press(Root(), Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_EQ(Ask("SELECT State FROM KeptQuotes"), "accepted");
  EXPECT_EQ(Find<QLabel>("LblResult_0").text().toStdString(), payment);
  EXPECT_TRUE(Find<QLabel>("LblKept").isVisible());
}

}  // namespace tarvolinex
