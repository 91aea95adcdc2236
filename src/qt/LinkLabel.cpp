#include "qt/LinkLabel.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace tarvolinex {

namespace {

// A link for those who do not see it, which can be followed.
class LinkAccess : public QAccessibleWidget {
 public:
  explicit LinkAccess(LinkLabel* label) : QAccessibleWidget(label, QAccessible::Link), label_(label) {}
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? label_->text() : QAccessibleWidget::text(kind);
  }
  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction()) emit label_->Clicked();
  }

 private:
  LinkLabel* label_;
};

QAccessibleInterface* AccessTo(const QString&, QObject* object) {
  auto* label = qobject_cast<LinkLabel*>(object);
  return label ? new LinkAccess(label) : nullptr;
}

}  // namespace

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
  [[maybe_unused]] static const bool installed = (QAccessible::installFactory(&AccessTo), true);
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
