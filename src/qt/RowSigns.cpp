#include "qt/RowSigns.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <array>

namespace tarvolinex {

namespace {

void DrawSign(QPainter& painter, RowMark mark, double size, const QColor& ink) {
  constexpr double kEdge = 0.2, kPen = 0.1;
  const QRectF box(size * kEdge, size * kEdge, size * (1 - 2 * kEdge), size * (1 - 2 * kEdge));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, size * kPen, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (mark == RowMark::Tick) {
    const QPointF corners[] = {
        {box.left(), box.center().y()}, {box.center().x() - size * kPen, box.bottom()}, {box.right(), box.top()}};
    painter.drawPolyline(corners, static_cast<int>(std::size(corners)));
    return;
  }
  if (mark == RowMark::Full) painter.setBrush(ink);
  painter.drawEllipse(box);
}

QPixmap SignPixmap(RowMark mark, int size, const QColor& ink) {
  const double ratio = qGuiApp->devicePixelRatio();
  QPixmap pixmap(QSize(size, size) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  DrawSign(painter, mark, size, ink);
  return pixmap;
}

}  // namespace

QIcon RowSign(RowMark mark) {
  static qint64 drawnFor = -1;
  static int drawnSize = 0;
  static std::array<QIcon, 4> signs;
  const QPalette palette = QGuiApplication::palette();
  const int size = QFontMetrics(QGuiApplication::font()).ascent();
  if (palette.cacheKey() != drawnFor || size != drawnSize) {
    drawnFor = palette.cacheKey();
    drawnSize = size;
    signs = {};
  }
  QIcon& sign = signs.at(static_cast<std::size_t>(mark));
  if (sign.isNull()) {
    sign.addPixmap(SignPixmap(mark, size, palette.color(QPalette::Text)), QIcon::Normal);
    sign.addPixmap(SignPixmap(mark, size, palette.color(QPalette::HighlightedText)), QIcon::Selected);
  }
  return sign;
}

}  // namespace tarvolinex
