// Two small arrows, one above the other, as they stand beside a number box.
#pragma once

#include <QWidget>

namespace tarvolinex {

// Takes no focus: the box beside it keeps it. A held arrow repeats.
class UpDownButtons : public QWidget {
  Q_OBJECT

 public:
  explicit UpDownButtons(QWidget* parent = nullptr);
  // As high as a line edit.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void Stepped(bool up);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  enum class Half { None, Up, Down };
  void StartRepeat(int milliseconds);
  void StopRepeat();
  void DrawHalf(class QPainter& painter, Half half) const;

  Half pressed_ = Half::None;
  int timer_ = 0;
  bool repeating_ = false;
};

}  // namespace tarvolinex
