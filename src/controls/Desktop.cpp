#include "controls/Desktop.h"

#include <cassert>

namespace tarvolinex {

namespace {
Desktop* currentDesktop = nullptr;
}

Desktop& TheDesktop() {
  assert(currentDesktop && "a desktop must be chosen before it is asked for anything");
  return *currentDesktop;
}

void UseDesktop(Desktop* desktop) {
  currentDesktop = desktop;
}

}  // namespace tarvolinex
