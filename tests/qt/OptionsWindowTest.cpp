// The options window as it is drawn, played by mouse and keyboard.
#include "Player.h"
#include "qt/LinkLabel.h"
#include "ui/options/FrmOptions.h"
#include "ui/options/frmFormEditWarning.h"

namespace tarvolinex {

class OptionsWindow : public SampleWindow {
 protected:
  OptionsWindow() {
    CalculatorPreferences.TaxRate = 17.5F;
    CalculatorPreferences.IconName = "COINS";
    form.Serve(options);
    options.Load();
    Show(options);
  }
  QWidget& Shown() { return *desktop.WidgetOf(options); }
  QTreeWidget& Tree() { return In<QTreeWidget>(Shown(), "TreeOptions"); }
  void ClickItem(const char* text) {
    QTreeWidgetItem& item = *Tree().findItems(text, Qt::MatchRecursive).at(0);
    for (QTreeWidgetItem* above = item.parent(); above; above = above->parent()) above->setExpanded(true);
    Tree().scrollToItem(&item);
    Click(*Tree().viewport(), Tree().visualItemRect(&item).center());
  }
  FrmOptions options{run, form.database};
};

TEST_F(OptionsWindow, TheKeyboardAloneWalksTheTreeAndEdits) {
  Tree().setFocus();
  Press(Tree(), Qt::Key_Down);  // selects the first
  Press(Tree(), Qt::Key_End);
  Press(Tree(), Qt::Key_Up);  // the page's options are closed
  Settle();
  auto& line = In(Shown(), "TxtIncre");
  EXPECT_EQ(line.accessibleName(), "VAT/Sales Tax Percentage");
  EXPECT_EQ(line.text(), "17.5");
  Press(Tree(), Qt::Key_Tab);
  EXPECT_TRUE(line.hasFocus());
  Press(line, Qt::Key_Up);
  Tree().setFocus();
  EXPECT_EQ(line.text(), "17.75");
  Press(Tree(), Qt::Key_Up);  // the currency symbol
  Settle();
  EXPECT_FALSE(line.isVisible());
  auto& text = In(Shown(), "TxtString");
  EXPECT_EQ(text.width(), 1000 / 15);
  Press(Tree(), Qt::Key_Tab);
  Press(text, Qt::Key_A, Qt::ControlModifier);
  Keys(text, "12345");
  Press(text, Qt::Key_Return);
  EXPECT_FALSE(Shown().isVisible());
  EXPECT_EQ(CalculatorPreferences.TaxRate, 17.75F);
  EXPECT_EQ(CalculatorPreferences.CurrencySymbol.Trimmed(), "1234");
}

TEST_F(OptionsWindow, AnExplanationIsOneParagraphAndReturnIsTheWindows) {
  ClickItem("Language");
  Press(Tree(), Qt::Key_Tab);
  EXPECT_TRUE(In<QComboBox>(Shown(), "CboLanguage").hasFocus());
  ClickItem("What Advanced Payments Are");
  Press(Tree(), Qt::Key_Tab);
  auto& text = In<QPlainTextEdit>(Shown(), "TxtMeaning");
  ASSERT_TRUE(text.hasFocus());
  Keys(text, "Our money");
  Press(text, Qt::Key_Left);
  Press(text, Qt::Key_Return);
  EXPECT_FALSE(Shown().isVisible());
  EXPECT_EQ(ReadPageOptions(run.AppFolder).advance, "Our money");
}

TEST_F(OptionsWindow, AClickOnTheSelectedNodeCommits) {
  ClickItem("How leasing works");
  auto& line = In(Shown(), "txtForms_1");
  Keys(line, "x");
  const std::string typed = line.text().toStdString();
  ClickItem("How leasing works");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM Forms WHERE LinkName='" + typed + "'"), "1");
}

TEST_F(OptionsWindow, ThePreviewShowsTheIconsPresentPicture) {
  const std::string path = DataFolder + "/icons/COINS.ICO", other = ReadFile(DataFolder + "/icons/CHART.ICO");
  ClickItem("Icon");
  const auto written = std::filesystem::last_write_time(path);
  const QImage before = In<QLabel>(Shown(), "PicIcon").pixmap().toImage();
  WriteFile(path, other);
  std::filesystem::last_write_time(path, written);
  options.CboIcons.Choose(0);
  options.CboIcons.Choose(3);
  ASSERT_EQ(options.PicIcon.Picture(), DataFolder + "\\icons\\COINS.ICO");
  EXPECT_NE(In<QLabel>(Shown(), "PicIcon").pixmap().toImage(), before);
}

TEST_F(OptionsWindow, ALinkWorksByPointerAndByKey) {
  frmFormEditWarning warning(run, "");
  int opened = 0;
  warning.LblWarning(1).Click = [&] { ++opened; };
  desktop.Show(warning);
  auto& link = In<LinkLabel>(*desktop.WidgetOf(warning), "LblWarning_1");
  Click(link, link.rect().center());
  Press(link, Qt::Key_Space);
  Press(link, Qt::Key_Return);
  EXPECT_EQ(opened, 3);
  EXPECT_FALSE(warning.Closed());
  const QPointF inside(2, 2);
  QEnterEvent enter(inside, inside, inside);
  QApplication::sendEvent(&link, &enter);
  EXPECT_EQ(link.palette().color(QPalette::WindowText), QColor(0, 0, 255));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&link, &leave);
  EXPECT_EQ(link.palette().color(QPalette::WindowText), QColor(0, 0, 128));
  warning.Close();
}

}  // namespace tarvolinex
