// Draws a grid of cells, crisp at every scale of the screen, and tells where it is pressed.
#pragma once

#include <QWidget>

#include "controls/PaintControls.h"

namespace tarvolinex {

// A cell takes a whole number of the screen's own pixels, as many as the widget has room for. The grid stands in the
// middle of the widget.
//
// With the keyboard focus the arrow keys, Home and End move a cursor; Space is the left button there for as long as it
// is held, Return a click with the right one.
class PixelGridView : public QWidget {
  Q_OBJECT

 public:
  explicit PixelGridView(QWidget* parent = nullptr);
  // What it draws; not owned.
  void SetGrid(const PixelGrid& grid);
  void RepaintCell(int index);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

  // The unit of the grid at a position of the widget, and the middle of a cell in the widget.
  QPoint UnitsAt(QPointF position) const;
  QPointF MiddleOf(int x, int y) const;

 signals:
  void Pressed(tarvolinex::MouseButton button, int unitX, int unitY);
  void Moved(int unitX, int unitY);
  void Released(tarvolinex::MouseButton button);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  // In the screen's pixels, from the widget's corner.
  struct Layout {
    int cell = 1, line = 0, left = 0, top = 0;
  };
  // ratio: pixels of the screen a pixel of the widget's size.
  Layout Place(double ratio) const;
  void DrawCells(class QPainter& painter, const Layout& place, QRect cells) const;
  void DrawCursor(class QPainter& painter, const Layout& place) const;
  bool MoveCursor(int key);
  void SetCursor(QPoint cell);
  void ShowCursor(bool shown);
  void ReleaseSpace();
  QPoint CursorUnits() const;

  const PixelGrid* grid_ = nullptr;
  QPoint cursor_;  // a cell
  bool cursorShown_ = false;
  bool spaceDown_ = false;
};

}  // namespace tarvolinex
