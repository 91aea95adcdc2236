#include "qt/Splash.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>

#include "qt/Look.h"

static void LoadSplashPicture() {
  Q_INIT_RESOURCE(pictures);
}

namespace tarvolinex {

namespace {

constexpr int kWidth = 480, kHeight = 260;
constexpr int kMargin = 28;

QPixmap SplashPicture() {
  LoadSplashPicture();
  return QIcon(":/pictures/splash.svg").pixmap(QSize(kWidth, kHeight), qGuiApp->devicePixelRatio());
}

}  // namespace

Splash::Splash(const std::string& version) : QSplashScreen(SplashPicture()), version_(Shown(version)) {}

void Splash::drawContents(QPainter* painter) {
  QFont font = painter->font();
  font.setPixelSize(36);
  font.setBold(true);
  painter->setFont(font);
  painter->setPen(Qt::white);
  painter->drawText(QRect(kMargin, 60, kWidth - 2 * kMargin, 50), Qt::AlignLeft | Qt::AlignVCenter, "Tarvolinex");
  font.setPixelSize(14);
  font.setBold(false);
  painter->setFont(font);
  painter->drawText(QRect(kMargin, 112, kWidth - 2 * kMargin, 24), Qt::AlignLeft | Qt::AlignVCenter, version_);
}

}  // namespace tarvolinex
