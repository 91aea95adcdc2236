#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QLabel>
#include <QSet>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "qt/ColourSwatch.h"
#include "qt/Look.h"
#include "qt/PixelGridView.h"
#include "qt/QtDesktop.h"
#include "ui/iconedit/FrmIconEdit.h"

namespace tarvolinex {
namespace {

constexpr Colour kRed = 0x0000FF;

class IconWindow : public testing::Test {
 protected:
  IconWindow() {
    UseDesktop(&desktop_);
    editor_.SetLoadPic("");
    editor_.Picture2(12).Press();
    desktop_.Show(editor_);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Root()));
  }
  ~IconWindow() override { UseDesktop(nullptr); }

  QWidget& Root() { return *desktop_.WidgetOf(editor_); }
  PixelGridView& Grid() { return *Root().findChild<PixelGridView*>("Picture3"); }
  QPoint Middle(int x, int y) { return Grid().MiddleOf(x, y).toPoint(); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&Grid(), key, modifiers); }
  Colour Pixel(int x, int y) const { return editor_.Image().At(x, y); }
  // The red cells, in rows.
  std::string Red() const {
    std::string cells;
    for (int i = 0; i < kIconSide * kIconSide; ++i) {
      if (Pixel(i % kIconSide, i / kIconSide) != kRed) continue;
      cells += std::to_string(i % kIconSide) + "," + std::to_string(i / kIconSide) + " ";
    }
    return cells;
  }

  QtDesktop desktop_;
  FrmIconEdit editor_;
};

TEST_F(IconWindow, ADragPaintsTheCellsUnderIt) {
  QTest::mousePress(&Grid(), Qt::LeftButton, {}, Middle(1, 1));
  QTest::mouseMove(&Grid(), Middle(4, 1));
  QPoint line = Middle(4, 1);
  while (Grid().UnitsAt(line).y() % PixelGrid::kUnits != 0) line.ry() += 1;
  QTest::mouseMove(&Grid(), line);  // the line below
  QTest::mouseRelease(&Grid(), Qt::LeftButton, {}, Middle(4, 1));
  QTest::mouseMove(&Grid(), Middle(9, 9));
  EXPECT_EQ(Red(), "1,1 2,1 3,1 4,1 ");
  QTest::mouseClick(&Grid(), Qt::RightButton, {}, Middle(20, 20));
  EXPECT_EQ(editor_.CurrentColour(), kTransparentColour);
  EXPECT_EQ(Grid().grab().toImage().pixelColor(Middle(3, 1) * Grid().devicePixelRatio()), QColor(Qt::red));
}

TEST_F(IconWindow, TheKeyboardPaintsPicksAndMoves) {
  Grid().setFocus();
  Key(Qt::Key_Down);
  Key(Qt::Key_Right);
  Key(Qt::Key_Space);  // one cell
  Key(Qt::Key_Right);
  Key(Qt::Key_Right);
  QTest::keyPress(&Grid(), Qt::Key_Space);  // held: a stroke
  Key(Qt::Key_Down);
  Key(Qt::Key_Down);
  QTest::keyRelease(&Grid(), Qt::Key_Space);
  Key(Qt::Key_End);
  Key(Qt::Key_Right);  // no further
  EXPECT_EQ(Red(), "1,1 3,1 3,2 3,3 ");
  Key(Qt::Key_Return);
  EXPECT_EQ(editor_.CurrentColour(), kTransparentColour);
  EXPECT_EQ(Grid().accessibleName(), "Icon, column 32, row 4: Transparent");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Red(), "1,1 ");
}

TEST_F(IconWindow, AStrokeEndsWhenTheKeyboardGoesElsewhere) {
  Grid().setFocus();
  QTest::keyPress(&Grid(), Qt::Key_Space);
  Root().findChild<QWidget*>("Picture4")->setFocus();
  EXPECT_EQ(editor_.PicPreview.Cell(0, 0), kRed);
  QTest::mouseMove(&Grid(), Middle(5, 5));
  EXPECT_EQ(Red(), "0,0 ");
}

TEST_F(IconWindow, EveryToolHasItsKey) {
  Grid().setFocus();
  Key(Qt::Key_F);
  EXPECT_EQ(Pixel(31, 31), kRed);
  Key(Qt::Key_C);
  EXPECT_EQ(editor_.Picture3.PointerShape(), Pointer::UpArrow);
  EXPECT_EQ(Grid().cursor().shape(), Qt::UpArrowCursor);
  Key(Qt::Key_P);
  EXPECT_EQ(editor_.Picture3.PointerShape(), Pointer::Pencil);
  EXPECT_EQ(Grid().cursor().shape(), Qt::BitmapCursor);
  editor_.Picture4.Press();
  Key(Qt::Key_F);
  editor_.Picture2(12).Press();
  Key(Qt::Key_Space);
  const std::pair<std::pair<Qt::Key, Qt::KeyboardModifiers>, const char*> moves[] = {
      {{Qt::Key_Left, Qt::ControlModifier}, "31,0 "},
      {{Qt::Key_Down, Qt::ControlModifier}, "31,1 "},
      {{Qt::Key_R, {}}, "30,31 "},
      {{Qt::Key_V, {}}, "30,0 "},
      {{Qt::Key_H, {}}, "1,0 "},
      {{Qt::Key_Up, Qt::ControlModifier}, "1,31 "},
      {{Qt::Key_Right, Qt::ControlModifier}, "2,31 "}};
  for (const auto& [key, cells] : moves) {
    const std::string before = Red();
    Key(key.first, key.second);
    EXPECT_EQ(Red(), cells);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Red(), before);
    Key(Qt::Key_Z, Qt::ControlModifier);
  }
  const Colour lines = editor_.Picture3.LineColour();
  Key(Qt::Key_G);
  EXPECT_NE(editor_.Picture3.LineColour(), lines);
}

TEST_F(IconWindow, ThePaletteIsAGroupOfOptions) {
  auto& swatch = *Root().findChild<ColourSwatch*>("Picture2_12");
  EXPECT_TRUE(swatch.isChecked());
  Grid().setFocus();
  QTest::keyClick(&Grid(), Qt::Key_Tab);
  EXPECT_TRUE(swatch.hasFocus());
  QTest::keyClick(&swatch, Qt::Key_Right);
  EXPECT_TRUE(editor_.Picture2(13).Marked());
  EXPECT_FALSE(swatch.isChecked());
  auto& transparent = *Root().findChild<ColourSwatch*>("Picture4");
  QTest::mouseClick(&transparent, Qt::LeftButton);
  EXPECT_EQ(editor_.CurrentColour(), kTransparentColour);
  EXPECT_EQ(transparent.text(), "Transparent");
  EXPECT_EQ(Root().findChild<QLabel*>("Picture5")->accessibleName(), "Current color: Transparent");
  QAccessibleInterface* read = QAccessible::queryAccessibleInterface(&swatch);
  EXPECT_EQ(read->role(), QAccessible::RadioButton);
  EXPECT_EQ(read->text(QAccessible::Name), "Red");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&Grid())->role(), QAccessible::Canvas);
}

// Rendered for screens of several scales: cells of equal size in pure colours, and where a press counts is where the
// cell is drawn.
TEST_F(IconWindow, CellsAreCrispAtEveryScale) {
  for (int i = 0; i < kIconSide; ++i) editor_.Picture3.SetCell(i, i, kRed);
  for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    QImage image((QSizeF(Grid().size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::yellow);
    Grid().render(&image, {}, {}, {});
    QSet<QRgb> colours;
    QMap<int, int> red;  // red pixels of a column
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        colours.insert(image.pixel(x, y));
        if (image.pixel(x, y) == QColor(Qt::red).rgb()) ++red[x];
      }
    }
    colours.remove(QColor(Qt::yellow).rgb());
    const QSet<QRgb> expected{QColor(Qt::red).rgb(), qRgb(0xC0, 0xC0, 0xFF), qRgb(0x40, 0x40, 0)};
    EXPECT_EQ(colours, expected) << ratio;
    EXPECT_EQ(red.size() % kIconSide, 0) << ratio;
    EXPECT_EQ(QSet<int>(red.cbegin(), red.cend()).size(), 1) << ratio;
    EXPECT_GE(red.first(), static_cast<int>(9 * ratio) - 1) << ratio;
  }
  for (int y = 0; y < Grid().height(); ++y) {
    for (int x = 0; x < Grid().width(); x += 7) {
      const QPoint units = Grid().UnitsAt(QPointF(x + 0.5, y + 0.5));
      const QRgb shown = Grid().grab(QRect(x, y, 1, 1)).toImage().pixel(0, 0);
      const Colour colour = editor_.Picture3.ColourAt(units.x(), units.y());
      if (colour == PixelGrid::kNoColour) continue;
      ASSERT_EQ(shown, ToQColor(colour).rgb()) << x << "," << y;
    }
    y += 2;
  }
}

}  // namespace
}  // namespace tarvolinex
