// A line of text that opens something: by mouse, and by Return or the space bar when it has the focus.
#pragma once

#include <QLabel>

namespace tarvolinex {

class LinkLabel : public QLabel {
  Q_OBJECT
 public:
  explicit LinkLabel(QWidget* parent = nullptr);

 signals:
  void Clicked();
  void Entered();  // by the pointer
  void Left();

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarvolinex
