#include "qt/ColourSwatch.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

namespace tarvolinex {

namespace {
constexpr int kSide = 28, kRoom = 4;  // of the box, and for the frame around it
}  // namespace

ColourSwatch::ColourSwatch(QWidget* parent) : QRadioButton(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ColourSwatch::SetColour(const QColor& colour) {
  colour_ = colour;
  update();
}

QSize ColourSwatch::sizeHint() const {
  const int wanted = text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text()) + 4 * kRoom;
  return {std::max(kSide, wanted), kSide};
}

void ColourSwatch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect box = rect().adjusted(kRoom, kRoom, -kRoom, -kRoom);
  const QColor edge = palette().color(QPalette::WindowText);
  QColor faint = edge;
  faint.setAlphaF(0.5F);
  painter.fillRect(box.adjusted(-1, -1, 1, 1), faint);
  painter.fillRect(box, colour_);
  if (isChecked()) {
    painter.setPen(QPen(edge, 2));
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(QRectF(rect()).adjusted(3, 3, -3, -3));
  }
  if (text().isEmpty()) return;
  painter.setPen(qGray(colour_.rgb()) > 140 ? Qt::black : Qt::white);
  painter.drawText(box, Qt::AlignCenter, text());
}

}  // namespace tarvolinex
