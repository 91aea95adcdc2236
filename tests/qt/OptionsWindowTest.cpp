// The options window as it is drawn, played by mouse and keyboard.
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "SampleWindow.h"
#include "qt/Binder.h"
#include "qt/LinkLabel.h"
#include "ui/options/FrmOptions.h"
#include "ui/options/frmFormEditWarning.h"

namespace tarvolinex {
namespace {

class OptionsWindow : public SampleWindow {
 protected:
  OptionsWindow() {
    CalculatorPreferences.TaxRate = 17.5F;
    CalculatorPreferences.IconName = "COINS";
    options.Load();
    desktop.Show(options);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Shown()));
  }
  QWidget& Shown() { return *desktop.WidgetOf(options); }
  template <typename Widget>
  Widget& In(const char* name) {
    auto* widget = Shown().findChild<Widget*>(name);
    if (!widget) throw std::logic_error(std::string("no widget ") + name);
    return *widget;
  }
  QTreeWidget& Tree() { return In<QTreeWidget>("TreeOptions"); }
  QTreeWidgetItem& Item(const char* text) { return *Tree().findItems(text, Qt::MatchRecursive).at(0); }
  void ClickItem(const char* text) {
    QTreeWidgetItem& item = Item(text);
    for (QTreeWidgetItem* above = item.parent(); above; above = above->parent()) above->setExpanded(true);
    Tree().scrollToItem(&item);
    Click(*Tree().viewport(), Tree().visualItemRect(&item).center());
  }
  FrmOptions options;
};

TEST_F(OptionsWindow, TheKeyboardAloneWalksTheTreeAndEdits) {
  Tree().setFocus();
  QTest::keyClick(&Tree(), Qt::Key_Down);  // selects the first
  QTest::keyClick(&Tree(), Qt::Key_End);
  Settle();
  auto& line = In<QLineEdit>("TxtIncre");
  EXPECT_TRUE(line.isVisible());
  EXPECT_EQ(line.accessibleName(), "VAT/Sales Tax Percentage");
  EXPECT_EQ(line.text(), "17.5");
  QTest::keyClick(&Tree(), Qt::Key_Tab);
  EXPECT_TRUE(line.hasFocus());
  QTest::keyClick(&line, Qt::Key_Up);
  EXPECT_EQ(line.text(), "17.75");
  QTest::keyClick(&line, Qt::Key_End);
  QTest::keyClicks(&line, "x");
  Tree().setFocus();
  EXPECT_EQ(line.text(), "17.75");
  QTest::keyClick(&Tree(), Qt::Key_Up);  // the currency symbol
  Settle();
  EXPECT_FALSE(line.isVisible());
  auto& text = In<QLineEdit>("TxtString");
  EXPECT_EQ(text.width(), 1000 / 15);
  QTest::keyClick(&Tree(), Qt::Key_Tab);
  QTest::keyClick(&text, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&text, "12345");
  EXPECT_EQ(text.text(), "1234");
  QTest::keyClick(&text, Qt::Key_Return);
  EXPECT_FALSE(Shown().isVisible());
  EXPECT_EQ(CalculatorPreferences.TaxRate, 17.75F);
  EXPECT_EQ(CalculatorPreferences.CurrencySymbol.Trimmed(), "1234");
}

TEST_F(OptionsWindow, AClickOnTheSelectedNodeCommits) {
  ClickItem("How leasing works");
  Settle();
  auto& line = In<QLineEdit>("txtForms_1");
  QTest::keyClicks(&line, "x");
  const std::string typed = line.text().toStdString();
  ClickItem("How leasing works");
  Settle();
  Recordset row;
  row.Open("SELECT COUNT(*) FROM Forms WHERE LinkName='" + typed + "'", TheStore->connection);
  EXPECT_EQ(ValueText(row.Field(0)), "1");
}

TEST_F(OptionsWindow, ThePreviewShowsTheIconsPresentPicture) {
  const std::string path = DataFolder + "/icons/COINS.ICO", other = ReadFile(DataFolder + "/icons/CHART.ICO");
  ClickItem("Icon");
  Settle();
  const auto written = std::filesystem::last_write_time(path);
  const QImage before = In<QLabel>("PicIcon").pixmap().toImage();
  WriteFile(path, other);
  std::filesystem::last_write_time(path, written);
  options.CboIcons.Choose(0);
  options.CboIcons.Choose(3);
  ASSERT_EQ(options.PicIcon.Picture(), DataFolder + "\\icons\\COINS.ICO");
  EXPECT_NE(In<QLabel>("PicIcon").pixmap().toImage(), before);
}

TEST_F(OptionsWindow, ALinkWorksByPointerAndByKey) {
  frmFormEditWarning warning("");
  int opened = 0;
  warning.LblWarning(1).Click = [&] { ++opened; };
  desktop.Show(warning);
  auto& link = *desktop.WidgetOf(warning)->findChild<LinkLabel*>("LblWarning_1");
  Click(link, link.rect().center());
  QTest::keyClick(&link, Qt::Key_Space);
  QTest::keyClick(&link, Qt::Key_Return);
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

}  // namespace
}  // namespace tarvolinex
