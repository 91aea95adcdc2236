// Draws bars of amounts over time in the desktop's colours.
#pragma once

#include <QWidget>

#include "controls/PaintControls.h"

namespace tarvolinex {

class BarChartView : public QWidget {
  Q_OBJECT

 public:
  explicit BarChartView(QWidget* parent = nullptr) : QWidget(parent) {}
  // What it draws; not owned.
  void SetChart(const BarChart& chart) { chart_ = &chart; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;  // the text of the bar under the pointer

 private:
  // How the bars lie in the widget: periods along, amounts up.
  struct Scale {
    int periods = 1;
    double low = 0, high = 1;
  };
  Scale Measure() const;
  double Left(const Scale& scale, int period) const;
  const BarChart* chart_ = nullptr;
};

}  // namespace tarvolinex
