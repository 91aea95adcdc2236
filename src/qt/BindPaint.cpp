// The grid of cells, the boxes of colour and the bars.
#include <QCursor>
#include <QIcon>
#include <QLabel>
#include <QSignalBlocker>

#include "platform/text/Translation.h"
#include "qt/BarChartView.h"
#include "qt/BindControls.h"
#include "qt/ColourSwatch.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"
#include "qt/PixelGridView.h"

namespace tarvolinex {

namespace {

QCursor CursorOf(Pointer shape, const QWidget& widget) {
  if (shape == Pointer::UpArrow) return Qt::UpArrowCursor;
  if (shape == Pointer::Arrow) return Qt::ArrowCursor;
  constexpr int kSide = 24, kTipX = 3, kTipY = 21;  // of the picture at 100 %
  return QCursor(QIcon(":/pictures/PAINT.svg").pixmap(QSize(kSide, kSide), widget.devicePixelRatioF()), kTipX, kTipY);
}

void PaintSwatch(const ColourBox& box, ColourSwatch& swatch) {
  const QSignalBlocker blocker(swatch);
  PaintShared(box, swatch);
  swatch.setAccessibleName(Shown(box.ToolTip()));
  swatch.setText(Shown(box.Text()));
  swatch.SetColour(ToQColor(box.BackColour()));
  // An exclusive button refuses to be switched off, and the control decides which of them is on.
  swatch.setAutoExclusive(false);
  swatch.setChecked(box.Marked());
  swatch.setAutoExclusive(true);
  // Tab stops at the chosen one, and the arrow keys go on from there.
  swatch.setFocusPolicy(box.Marked() ? Qt::StrongFocus : Qt::ClickFocus);
}

void PaintColour(const ColourBox& box, QLabel& label) {
  PaintShared(box, label);
  label.setAccessibleName(Shown(box.ToolTip()));
  QPalette palette;
  palette.setColor(QPalette::Window, ToQColor(box.BackColour()));
  label.setPalette(palette);
  label.setAutoFillBackground(true);
}

}  // namespace

bool BindPixelGrid(PixelGrid& grid, QWidget& widget, QObject& owner) {
  auto* view = qobject_cast<PixelGridView*>(&widget);
  if (!view) return false;
  view->SetGrid(grid);
  grid.Painter = [&grid, view](Aspect aspect, int row) {
    if (aspect == Aspect::Focus) return view->setFocus();
    if (aspect == Aspect::Row) return view->RepaintCell(row);
    if (aspect == Aspect::Items) return view->update();
    PaintShared(grid, *view);
    view->setCursor(CursorOf(grid.PointerShape(), *view));
    view->update();
  };
  grid.Painter(Aspect::State, -1);
  QObject::connect(view, &PixelGridView::Pressed, &owner, [&grid](MouseButton button, int x, int y) {
    Deliver([&] {
      if (grid.MouseDown) grid.MouseDown(button, x, y);
    });
  });
  QObject::connect(view, &PixelGridView::Moved, &owner, [&grid](int x, int y) {
    Deliver([&] {
      if (grid.MouseMove) grid.MouseMove(x, y);
    });
  });
  QObject::connect(view, &PixelGridView::Released, &owner, [&grid](MouseButton button) {
    Deliver([&] {
      if (grid.MouseUp) grid.MouseUp(button);
    });
  });
  return true;
}

bool BindColourBox(ColourBox& box, QWidget& widget, QObject& owner) {
  if (auto* label = qobject_cast<QLabel*>(&widget)) {
    box.Painter = [&box, label](Aspect, int) { PaintColour(box, *label); };
    box.Painter(Aspect::State, -1);
    return true;
  }
  auto* swatch = qobject_cast<ColourSwatch*>(&widget);
  if (!swatch) return false;
  box.Painter = [&box, swatch](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return swatch->setFocus();
    PaintSwatch(box, *swatch);
  };
  box.Painter(Aspect::State, -1);
  QObject::connect(swatch, &ColourSwatch::clicked, &owner, [&box] {
    Deliver([&] { box.Press(); });
    box.Painter(Aspect::State, -1);
  });
  return true;
}

bool BindBarChart(BarChart& chart, QWidget& widget) {
  auto* view = qobject_cast<BarChartView*>(&widget);
  if (!view) return false;
  view->SetChart(chart);
  chart.Painter = [&chart, view](Aspect, int) {
    PaintShared(chart, *view);
    view->setToolTip({});  // each bar has its own
    view->setAccessibleDescription(Shown(chart.ToolTip()));
    view->update();
  };
  chart.Painter(Aspect::State, -1);
  return true;
}

}  // namespace tarvolinex
