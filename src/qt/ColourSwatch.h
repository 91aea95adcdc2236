// A box of colour that can be chosen.
#pragma once

#include <QRadioButton>

namespace tarvolinex {

// Looks like a plain box and behaves like an option button: one of its siblings is chosen, and the arrow keys move
// among them. The chosen one has a frame. Its text stands on the colour.
class ColourSwatch : public QRadioButton {
  Q_OBJECT

 public:
  explicit ColourSwatch(QWidget* parent = nullptr);
  void SetColour(const QColor& colour);
  QColor Colour() const { return colour_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor colour_;
};

}  // namespace tarvolinex
