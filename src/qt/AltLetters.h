// Alt with a letter is an access key or nothing: it writes no text and searches no list.
#pragma once

#include <QObject>

namespace tarvolinex {

// While it lives, for the whole application.
// REQUIRES: a QApplication.
class AltLetters : public QObject {
 public:
  AltLetters();
  bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace tarvolinex
