#include "qt/QtProgram.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

#include "qt/Look.h"
#include "qt/QtDesktop.h"
#include "qt/Splash.h"
#include "qt/Translator.h"

namespace tarvolinex {

namespace {
constexpr int kSplashMilliseconds = 1200;
}

struct QtProgram::Parts {
  Parts(int& argc, char** argv, std::string line) : application(argc, argv), version(std::move(line)) {}
  QApplication application;
  QtDesktop desktop;
  std::string version;
  std::unique_ptr<Splash> splash;
};

bool QtProgram::CanShowWindows() {
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

QtProgram::QtProgram(int& argc, char** argv, std::string version)
    : parts_(std::make_unique<Parts>(argc, argv, std::move(version))) {
  QApplication::setApplicationName("Tarvolinex");
  QApplication::setDesktopFileName("tarvolinex");
  OutlineChoices();
  TranslateDesigns();
}

QtProgram::~QtProgram() = default;

Desktop& QtProgram::TheDesktop() {
  return parts_->desktop;
}

void QtProgram::ShowSplash() {
  parts_->splash = std::make_unique<Splash>(parts_->version);
  parts_->splash->show();
  QApplication::processEvents();
}

void QtProgram::BringSplashToFront() {
  if (!parts_->splash) return;
  parts_->splash->raise();
  QTimer::singleShot(kSplashMilliseconds, parts_->splash.get(), [this] { parts_->splash->close(); });
}

int QtProgram::Run() {
  return parts_->desktop.Run();
}

}  // namespace tarvolinex
