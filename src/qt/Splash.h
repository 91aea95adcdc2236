// The picture that is shown while the program starts.
#pragma once

#include <QSplashScreen>
#include <QString>
#include <string>

namespace tarvolinex {

// REQUIRES: a QApplication. Show with show(), take away with close() or with finish() of its base; a click hides it.
class Splash : public QSplashScreen {
  Q_OBJECT

 public:
  // version: the line under the name, such as "Version 1.0.0".
  explicit Splash(const std::string& version);

 protected:
  void drawContents(QPainter* painter) override;

 private:
  QString version_;
};

}  // namespace tarvolinex
