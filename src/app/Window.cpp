#include "app/Program.h"
namespace tarvolinex {
int RunWindow(int, char**, const ProgramOptions&) {
  return 1;
}
}  // namespace tarvolinex
