#include "Player.h"
#include "qt/ColourSwatch.h"
#include "qt/Look.h"
#include "qt/PixelGridView.h"
#include "ui/iconedit/FrmIconEdit.h"

namespace tarvolinex {

constexpr Colour kRed = 0x0000FF;

class IconWindow : public Player {
 protected:
  IconWindow() : Player(editor) {
    editor.SetLoadPic("");
    editor.Picture2(12).Press();
    Show(editor);
    Grid().setFocus();
  }
  PixelGridView& Grid() { return Find<PixelGridView>("Picture3"); }
  QPoint Middle(int x, int y) { return Grid().MiddleOf(x, y).toPoint(); }
  // From the keyboard.
  void Do(std::initializer_list<QKeyCombination> keys) {
    for (const QKeyCombination key : keys) Press(Grid(), key.key(), key.keyboardModifiers());
  }
  Colour Pixel(int x, int y) const { return editor.Image().At(x, y); }
  // The red cells, in rows.
  std::string Red() const {
    std::string cells;
    for (int i = 0; i < kIconSide * kIconSide; ++i) {
      if (Pixel(i % kIconSide, i / kIconSide) != kRed) continue;
      cells += std::to_string(i % kIconSide) + "," + std::to_string(i / kIconSide) + " ";
    }
    return cells;
  }
  FrmIconEdit editor{run};
};

TEST_F(IconWindow, ADragPaintsTheCellsUnderIt) {
  QTest::mousePress(&Grid(), Qt::LeftButton, {}, Middle(1, 1));
  QTest::mouseMove(&Grid(), Middle(4, 1));
  QPoint line = Middle(4, 1);
  while (Grid().UnitsAt(line).y() % PixelGrid::kUnits != 0) line.ry() += 1;
  QTest::mouseMove(&Grid(), line);           // the line below
  QTest::mouseMove(&Grid(), Middle(4, -1));  // leaves at the top and comes in again
  QTest::mouseMove(&Grid(), Middle(6, 0));
  EXPECT_EQ(editor.Picture3.Cell(6, 0), kRed);
  EXPECT_EQ(editor.PicPreview.Cell(6, 0), kTransparentColour);
  QTest::mouseRelease(&Grid(), Qt::LeftButton, {}, Middle(6, 0));
  EXPECT_EQ(editor.PicPreview.Cell(6, 0), kRed);
  QTest::mouseMove(&Grid(), Middle(9, 9));
  EXPECT_EQ(Red(), "4,0 6,0 1,1 2,1 3,1 4,1 ");
  QTest::mouseClick(&Grid(), Qt::RightButton, {}, Middle(20, 20));
  EXPECT_EQ(editor.CurrentColour(), kTransparentColour);
  EXPECT_EQ(Grid().grab().toImage().pixelColor(Middle(3, 1) * Grid().devicePixelRatio()), QColor(Qt::red));
}

TEST_F(IconWindow, TheKeyboardPaintsPicksAndMoves) {
  Do({Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_Right, Qt::Key_Right});
  QTest::keyPress(&Grid(), Qt::Key_Space);  // held: a stroke
  Do({Qt::Key_Down, Qt::Key_Down});
  QTest::keyRelease(&Grid(), Qt::Key_Space);
  Do({Qt::Key_End, Qt::Key_Right});  // no further
  EXPECT_EQ(Red(), "1,1 3,1 3,2 3,3 ");
  Do({Qt::Key_Return});
  EXPECT_EQ(editor.CurrentColour(), kTransparentColour);
  EXPECT_EQ(Grid().accessibleName(), "Icon, column 32, row 4: Transparent");
  Do({Qt::CTRL | Qt::Key_Z});
  EXPECT_EQ(Red(), "1,1 ");
}

TEST_F(IconWindow, AStrokeEndsWhenTheKeyboardGoesElsewhere) {
  QTest::keyPress(&Grid(), Qt::Key_Space);
  Find<QWidget>("Picture4").setFocus();
  EXPECT_EQ(editor.PicPreview.Cell(0, 0), kRed);
  QTest::mouseMove(&Grid(), Middle(5, 5));
  EXPECT_EQ(Red(), "0,0 ");
}

TEST_F(IconWindow, EveryToolHasItsKey) {
  Do({Qt::Key_F});
  EXPECT_EQ(Pixel(31, 31), kRed);
  Do({Qt::Key_C});
  EXPECT_EQ(Grid().cursor().shape(), Qt::UpArrowCursor);
  Do({Qt::Key_P});
  EXPECT_EQ(Grid().cursor().shape(), Qt::BitmapCursor);
  editor.Picture4.Press();
  Do({Qt::Key_F});
  editor.Picture2(12).Press();
  Do({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Space});
  const std::pair<QKeyCombination, const char*> moves[] = {{Qt::CTRL | Qt::Key_Left, "0,2 "},
                                                           {Qt::CTRL | Qt::Key_Right, "2,2 "},
                                                           {Qt::CTRL | Qt::Key_Up, "1,1 "},
                                                           {Qt::CTRL | Qt::Key_Down, "1,3 "},
                                                           {Qt::Key_R, "29,1 "},
                                                           {Qt::Key_V, "1,29 "},
                                                           {Qt::Key_H, "30,2 "}};
  for (const auto& [key, cells] : moves) {
    Do({key});
    EXPECT_EQ(Red(), cells);
    Do({Qt::CTRL | Qt::Key_Z});
    EXPECT_EQ(Red(), "1,2 ");
  }
  const Colour lines = editor.Picture3.LineColour();
  Do({Qt::Key_G});
  EXPECT_NE(editor.Picture3.LineColour(), lines);
}

TEST_F(IconWindow, ThePaletteIsAGroupOfOptions) {
  auto& swatch = Find<ColourSwatch>("Picture2_12");
  EXPECT_TRUE(swatch.isChecked());
  Do({Qt::Key_Tab});
  EXPECT_TRUE(swatch.hasFocus());
  Press(swatch, Qt::Key_Right);
  EXPECT_TRUE(editor.Picture2(13).Marked());
  EXPECT_FALSE(swatch.isChecked());
  auto& transparent = Find<ColourSwatch>("Picture4");
  Click(transparent);
  EXPECT_EQ(editor.CurrentColour(), kTransparentColour);
  EXPECT_EQ(transparent.text(), "Transparent");
  EXPECT_EQ(Find<QLabel>("Picture5").accessibleName(), "Current color: Transparent");
  QAccessibleInterface* read = QAccessible::queryAccessibleInterface(&swatch);
  EXPECT_EQ(read->role(), QAccessible::RadioButton);
  EXPECT_EQ(read->text(QAccessible::Name), "Red");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&Grid())->role(), QAccessible::Canvas);
}

// Rendered for screens of several scales: cells of equal size in pure colours, and where a press counts is where the
// cell is drawn.
TEST_F(IconWindow, CellsAreCrispAtEveryScale) {
  for (int i = 0; i < kIconSide; ++i) editor.Picture3.SetCell(i, i, kRed);
  const QRgb pureRed = QColor(Qt::red).rgb(), around = QColor(Qt::yellow).rgb();
  for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    QImage image((QSizeF(Grid().size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(around);
    Grid().render(&image, {}, {}, {});
    QSet<QRgb> colours;
    QMap<int, int> red;  // red pixels of a column
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        colours.insert(image.pixel(x, y));
        if (image.pixel(x, y) == pureRed) ++red[x];
      }
    }
    EXPECT_EQ(colours, QSet({around, pureRed, qRgb(0xC0, 0xC0, 0xFF), qRgb(0x40, 0x40, 0)})) << ratio;
    EXPECT_EQ(red.size() % kIconSide, 0) << ratio;
    EXPECT_EQ(QSet<int>(red.cbegin(), red.cend()).size(), 1) << ratio;
    EXPECT_GE(red.first(), static_cast<int>(9 * ratio) - 1) << ratio;
  }
  const QImage shown = Grid().grab().toImage();
  for (int y = 0; y < Grid().height(); y += 3) {
    for (int x = 0; x < Grid().width(); x += 7) {
      const QPoint units = Grid().UnitsAt(QPointF(x + 0.5, y + 0.5));
      const Colour colour = editor.Picture3.ColourAt(units.x(), units.y());
      if (colour == PixelGrid::kNoColour) continue;
      ASSERT_EQ(shown.pixel(x, y), ToQColor(colour).rgb()) << x << "," << y;
    }
  }
}

}  // namespace tarvolinex
