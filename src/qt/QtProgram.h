// The program with windows: the application object, its desktop and its splash window.
#pragma once

#include <memory>
#include <string>

#include "controls/Desktop.h"

namespace tarvolinex {

class QtProgram {
 public:
  // False when there is no display to draw on.
  static bool CanShowWindows();

  // version: the line under the name in the splash window. argc and argv must outlive the object.
  // REQUIRES: CanShowWindows().
  QtProgram(int& argc, char** argv, std::string version);
  ~QtProgram();
  QtProgram(const QtProgram&) = delete;
  QtProgram& operator=(const QtProgram&) = delete;

  Desktop& TheDesktop();
  // Shown without waiting; it goes away by itself shortly after BringSplashToFront.
  void ShowSplash();
  void BringSplashToFront();
  // Until the last window is closed or the program ends; returns the exit status.
  int Run();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tarvolinex
