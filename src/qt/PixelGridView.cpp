#include "qt/PixelGridView.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "qt/Look.h"

namespace tarvolinex {

namespace {

MouseButton ButtonOf(Qt::MouseButton button) {
  if (button == Qt::LeftButton) return MouseButton::Left;
  return button == Qt::RightButton ? MouseButton::Right : MouseButton::Other;
}

int FlooredDivision(int a, int b) {
  return a >= 0 ? a / b : (a + 1) / b - 1;
}

// The toolkit keeps only the last of several movements that wait; a curve that is drawn fast would become its chord.
void ReportEveryMovement(bool every) {
  QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, !every);
}

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* view = qobject_cast<PixelGridView*>(object);
  return view ? new QAccessibleWidget(view, QAccessible::Canvas) : nullptr;
}

}  // namespace

PixelGridView::PixelGridView(QWidget* parent) : QWidget(parent) {
  static const bool installed = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  Q_UNUSED(installed);
}

void PixelGridView::SetGrid(const PixelGrid& grid) {
  grid_ = &grid;
  setSizePolicy(grid.HasLines() ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                grid.HasLines() ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  updateGeometry();
}

// A pixel a unit at 100 %, and the line that closes the last cell.
QSize PixelGridView::sizeHint() const {
  if (!grid_) return {};
  const int unit = grid_->HasLines() ? PixelGrid::kUnits : 1, closing = grid_->HasLines() ? 1 : 0;
  return {grid_->Columns() * unit + closing, grid_->Rows() * unit + closing};
}

PixelGridView::Layout PixelGridView::Place(double ratio) const {
  const int width = static_cast<int>(std::floor(this->width() * ratio));
  const int height = static_cast<int>(std::floor(this->height() * ratio));
  const auto lineOf = [this](int cell) { return grid_->HasLines() ? std::max(1, cell / PixelGrid::kUnits) : 0; };
  Layout place;
  place.cell = std::max(1, std::min(width / grid_->Columns(), height / grid_->Rows()));
  const auto fits = [&](int cell) {
    return cell * grid_->Columns() + lineOf(cell) <= width && cell * grid_->Rows() + lineOf(cell) <= height;
  };
  while (place.cell > 1 && !fits(place.cell)) --place.cell;
  place.line = lineOf(place.cell);
  place.left = std::max(0, (width - place.cell * grid_->Columns() - place.line) / 2);
  place.top = std::max(0, (height - place.cell * grid_->Rows() - place.line) / 2);
  return place;
}

// What is drawn as a line counts as a line.
QPoint PixelGridView::UnitsAt(QPointF position) const {
  const Layout place = Place(devicePixelRatioF());
  const auto unit = [&](double at, int from) {
    const int pixel = static_cast<int>(std::floor(at * devicePixelRatioF())) - from;
    const int cell = FlooredDivision(pixel, place.cell), inside = pixel - cell * place.cell;
    if (inside < place.line) return cell * PixelGrid::kUnits;
    const int room = place.cell - place.line;
    return cell * PixelGrid::kUnits + 1 + std::min(8, (inside - place.line) * 9 / std::max(1, room));
  };
  return {unit(position.x(), place.left), unit(position.y(), place.top)};
}

QPointF PixelGridView::MiddleOf(int x, int y) const {
  const Layout place = Place(devicePixelRatioF());
  const auto middle = [&](int from, int cell) {
    return (from + cell * place.cell + (place.cell + place.line) / 2.0) / devicePixelRatioF();
  };
  return {middle(place.left, x), middle(place.top, y)};
}

void PixelGridView::RepaintCell(int index) {
  if (!grid_) return;
  const double ratio = devicePixelRatioF();
  const Layout place = Place(ratio);
  const int x = index % grid_->Columns(), y = index / grid_->Columns();
  const QRectF cell((place.left + x * place.cell) / ratio, (place.top + y * place.cell) / ratio, place.cell / ratio,
                    place.cell / ratio);
  update(cell.toAlignedRect().adjusted(-1, -1, 1, 1));
}

void PixelGridView::paintEvent(QPaintEvent* event) {
  if (!grid_) return;
  QPainter painter(this);
  // Drawing counts in the screen's pixels; the widget's corner may lie between two of them.
  const QTransform screen = painter.deviceTransform();
  const double ratio = screen.m11();
  painter.scale(1 / ratio, 1 / ratio);
  painter.translate(std::round(screen.dx()) - screen.dx(), std::round(screen.dy()) - screen.dy());
  const Layout place = Place(ratio);
  const auto column = [&](double at) {
    return FlooredDivision(static_cast<int>(std::floor(at * ratio)) - place.left, place.cell);
  };
  const auto row = [&](double at) {
    return FlooredDivision(static_cast<int>(std::floor(at * ratio)) - place.top, place.cell);
  };
  const QRect dirty = event->rect();
  QRect cells(QPoint(column(dirty.left() - 1), row(dirty.top() - 1)),
              QPoint(column(dirty.right() + 2), row(dirty.bottom() + 2)));
  cells &= QRect(0, 0, grid_->Columns(), grid_->Rows());
  if (place.line > 0) {
    painter.fillRect(place.left, place.top, place.cell * grid_->Columns() + place.line,
                     place.cell * grid_->Rows() + place.line, ToQColor(grid_->LineColour()));
  }
  DrawCells(painter, place, cells);
  if (cursorShown_) DrawCursor(painter, place);
}

void PixelGridView::DrawCells(QPainter& painter, const Layout& place, QRect cells) const {
  const int side = place.cell - place.line;
  for (int y = cells.top(); y <= cells.bottom(); ++y) {
    for (int x = cells.left(); x <= cells.right(); ++x) {
      painter.fillRect(place.left + x * place.cell + place.line, place.top + y * place.cell + place.line, side, side,
                       ToQColor(grid_->Cell(x, y)));
    }
  }
}

// White around black, so that it is seen on every colour.
void PixelGridView::DrawCursor(QPainter& painter, const Layout& place) const {
  const int width = std::max(1, place.cell / PixelGrid::kUnits);
  QRect frame(place.left + cursor_.x() * place.cell, place.top + cursor_.y() * place.cell, place.cell + place.line,
              place.cell + place.line);
  for (const QColor& colour : {QColor(Qt::white), QColor(Qt::black)}) {
    painter.fillRect(QRect(frame.left(), frame.top(), frame.width(), width), colour);
    painter.fillRect(QRect(frame.left(), frame.bottom() + 1 - width, frame.width(), width), colour);
    painter.fillRect(QRect(frame.left(), frame.top(), width, frame.height()), colour);
    painter.fillRect(QRect(frame.right() + 1 - width, frame.top(), width, frame.height()), colour);
    frame.adjust(width, width, -width, -width);
  }
}

void PixelGridView::mousePressEvent(QMouseEvent* event) {
  ReleaseSpace();
  const QPoint units = UnitsAt(event->position());
  const QPoint cell(FlooredDivision(units.x(), PixelGrid::kUnits), FlooredDivision(units.y(), PixelGrid::kUnits));
  if (grid_ && QRect(0, 0, grid_->Columns(), grid_->Rows()).contains(cell)) cursor_ = cell;
  ShowCursor(false);
  ReportEveryMovement(true);
  emit Pressed(ButtonOf(event->button()), units.x(), units.y());
}

void PixelGridView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint units = UnitsAt(event->position());
  emit Moved(units.x(), units.y());
}

void PixelGridView::mouseReleaseEvent(QMouseEvent* event) {
  ReportEveryMovement(event->buttons() != Qt::NoButton);
  emit Released(ButtonOf(event->button()));
}

void PixelGridView::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return QWidget::keyPressEvent(event);
  const QPoint units = CursorUnits();
  switch (event->key()) {
    case Qt::Key_Space:
      if (event->isAutoRepeat() || std::exchange(spaceDown_, true)) return;
      ShowCursor(true);
      emit Pressed(MouseButton::Left, units.x(), units.y());
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      ShowCursor(true);
      emit Pressed(MouseButton::Right, units.x(), units.y());
      emit Released(MouseButton::Right);
      break;
    default:
      if (!MoveCursor(event->key())) QWidget::keyPressEvent(event);
      return;
  }
  SetCursor(cursor_);
}

void PixelGridView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) return QWidget::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) ReleaseSpace();
}

bool PixelGridView::MoveCursor(int key) {
  QPoint cell = cursor_;
  if (key == Qt::Key_Left) cell.rx() -= 1;
  if (key == Qt::Key_Right) cell.rx() += 1;
  if (key == Qt::Key_Up) cell.ry() -= 1;
  if (key == Qt::Key_Down) cell.ry() += 1;
  if (key == Qt::Key_Home) cell.setX(0);
  if (key == Qt::Key_End) cell.setX(grid_->Columns() - 1);
  const bool moves = cell != cursor_;
  cell.setX(std::clamp(cell.x(), 0, grid_->Columns() - 1));
  cell.setY(std::clamp(cell.y(), 0, grid_->Rows() - 1));
  if (!moves) return key == Qt::Key_Home || key == Qt::Key_End;
  ShowCursor(true);
  cursor_ = cell;
  if (spaceDown_) emit Moved(CursorUnits().x(), CursorUnits().y());
  SetCursor(cell);
  return true;
}

// Says where the cursor is and what is there.
void PixelGridView::SetCursor(QPoint cell) {
  cursor_ = cell;
  const QString what = grid_->Describe ? Shown(grid_->Describe(cell.x(), cell.y())) : QString();
  setAccessibleName(tr("Icon, column %1, row %2: %3").arg(cell.x() + 1).arg(cell.y() + 1).arg(what));
  update();
}

void PixelGridView::ShowCursor(bool shown) {
  if (std::exchange(cursorShown_, shown) != shown) update();
}

void PixelGridView::ReleaseSpace() {
  if (std::exchange(spaceDown_, false)) emit Released(MouseButton::Left);
}

QPoint PixelGridView::CursorUnits() const {
  return cursor_ * PixelGrid::kUnits + QPoint(PixelGrid::kUnits / 2, PixelGrid::kUnits / 2);
}

void PixelGridView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
    ShowCursor(true);
    SetCursor(cursor_);
  }
}

void PixelGridView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  ReleaseSpace();
  ShowCursor(false);
  ReportEveryMovement(false);
}

}  // namespace tarvolinex
