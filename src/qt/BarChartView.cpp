#include "qt/BarChartView.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <map>

#include "qt/Look.h"

namespace tarvolinex {

namespace {

constexpr double kGapShare = 0.2;  // of a bar's room, as long as it has any
constexpr double kGapFrom = 4;     // pixels of room

}  // namespace

QSize BarChartView::sizeHint() const {
  constexpr int kWidth = 200, kLines = 3;
  return {kWidth, fontMetrics().height() * kLines};
}

BarChartView::Scale BarChartView::Measure() const {
  Scale scale{1, 0, 0};
  std::map<int, double> sums;
  for (const BarChart::Bar& bar : chart_->Bars()) {
    const double sum = sums[bar.at] += bar.height;
    scale.periods = std::max(scale.periods, bar.at + 1);
    scale.low = std::min(scale.low, sum);
    scale.high = std::max(scale.high, sum);
  }
  if (scale.high <= scale.low) scale.high = scale.low + 1;
  return scale;
}

double BarChartView::Left(const Scale& scale, int period) const {
  return width() * static_cast<double>(period) / scale.periods;
}

void BarChartView::paintEvent(QPaintEvent*) {
  if (!chart_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Scale scale = Measure();
  const double up = (height() - 1) / (scale.high - scale.low), base = scale.high * up;
  const QColor ink = palette().color(QPalette::WindowText), plain = palette().color(QPalette::Highlight);
  std::map<int, double> reached;
  for (const BarChart::Bar& bar : chart_->Bars()) {
    const double left = Left(scale, bar.at), room = Left(scale, bar.at + 1) - left;
    const double gap = room >= kGapFrom ? room * kGapShare : 0;
    double& from = reached[bar.at];
    const QRectF box =
        QRectF(left + gap / 2, base - (from + bar.height) * up, std::max(room - gap, 1.0), bar.height * up)
            .normalized();
    from += bar.height;
    if (bar.apart) {
      // Told by its hatching, not by colour alone.
      painter.fillRect(box, QBrush(ink, Qt::BDiagPattern));
      painter.setPen(QPen(ink, 1));
      painter.drawRect(box);
    } else {
      painter.fillRect(box, plain);
    }
  }
  painter.setPen(QPen(ink, 1));
  painter.drawLine(QPointF(0, base), QPointF(width(), base));
}

bool BarChartView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !chart_) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const Scale scale = Measure();
  QString text;
  for (const BarChart::Bar& bar : chart_->Bars()) {
    if (help->pos().x() < Left(scale, bar.at) || help->pos().x() >= Left(scale, bar.at + 1)) continue;
    text += (text.isEmpty() ? "" : "\n") + Shown(bar.text);
  }
  QToolTip::showText(help->globalPos(), text, this);
  return true;
}

}  // namespace tarvolinex
