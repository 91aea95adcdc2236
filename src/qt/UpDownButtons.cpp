#include "qt/UpDownButtons.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <QTimerEvent>
#include <utility>

namespace tarvolinex {

namespace {
constexpr int kButtonWidth = 17;
constexpr int kRepeatDelay = 400, kRepeatInterval = 60;  // milliseconds
}  // namespace

UpDownButtons::UpDownButtons(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize UpDownButtons::sizeHint() const {
  static const int height = QLineEdit().sizeHint().height();
  return {kButtonWidth, height};
}

void UpDownButtons::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.3F);
  painter.setPen(line);
  painter.setBrush(palette().color(QPalette::Button));
  painter.drawRoundedRect(frame, 2, 2);
  painter.drawLine(QPointF(frame.left(), frame.center().y()), QPointF(frame.right(), frame.center().y()));
  DrawHalf(painter, Half::Up);
  DrawHalf(painter, Half::Down);
}

void UpDownButtons::DrawHalf(QPainter& painter, Half half) const {
  const QRectF all = rect();
  const bool up = half == Half::Up;
  const QRectF area(0, up ? 0 : all.height() / 2, all.width(), all.height() / 2);
  painter.setPen(Qt::NoPen);
  if (half == pressed_) {
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRect(area.adjusted(1.5, 1.5, -1.5, -1.5));
  }
  const QPointF middle = area.center();
  const double tip = up ? -2 : 2;
  painter.setBrush(palette().color(half == pressed_ ? QPalette::HighlightedText : QPalette::ButtonText));
  painter.drawPolygon(QPolygonF({middle + QPointF(0, tip), middle + QPointF(3.5, -tip), middle + QPointF(-3.5, -tip)}));
}

void UpDownButtons::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = event->position().y() < height() / 2.0 ? Half::Up : Half::Down;
  update();
  StartRepeat(kRepeatDelay);
  emit Stepped(pressed_ == Half::Up);
}

void UpDownButtons::mouseReleaseEvent(QMouseEvent*) {
  StopRepeat();
}

void UpDownButtons::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_) return;
  if (!repeating_) {
    StartRepeat(kRepeatInterval);
    repeating_ = true;
  }
  emit Stepped(pressed_ == Half::Up);
}

void UpDownButtons::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange && !isEnabled()) StopRepeat();
  QWidget::changeEvent(event);
  update();
}

void UpDownButtons::StartRepeat(int milliseconds) {
  if (timer_) killTimer(timer_);
  timer_ = startTimer(milliseconds);
}

void UpDownButtons::StopRepeat() {
  if (const int timer = std::exchange(timer_, 0)) killTimer(timer);
  repeating_ = false;
  pressed_ = Half::None;
  update();
}

}  // namespace tarvolinex
