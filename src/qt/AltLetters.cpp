#include "qt/AltLetters.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace tarvolinex {

AltLetters::AltLetters() {
  qApp->installEventFilter(this);
}

// Access keys have been looked for before the key reaches a widget; an open menu looks itself.
bool AltLetters::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !object->isWidgetType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  const bool alt = key.modifiers().testFlag(Qt::AltModifier) && !key.modifiers().testFlag(Qt::ControlModifier);
  const bool text = !key.text().isEmpty() && key.text().front().isPrint();
  return alt && text && !qobject_cast<QMenu*>(object) && !qobject_cast<QMenuBar*>(object);
}

}  // namespace tarvolinex
