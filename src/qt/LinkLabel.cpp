#include "qt/LinkLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace tarvolinex {

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
}

void LinkLabel::enterEvent(QEnterEvent* event) {
  QLabel::enterEvent(event);
  emit Entered();
}

void LinkLabel::leaveEvent(QEvent* event) {
  QLabel::leaveEvent(event);
  emit Left();
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  update();
}

void LinkLabel::focusOutEvent(QFocusEvent* event) {
  QLabel::focusOutEvent(event);
  update();
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit Clicked();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space) {
    emit Clicked();
  } else {
    QLabel::keyPressEvent(event);
  }
}

void LinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  QStyleOptionFocusRect frame;
  frame.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

}  // namespace tarvolinex
