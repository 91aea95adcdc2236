// One target, which the build names, for libFuzzer.
#include <cstdint>

#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto targets = tarvolinex::fuzz::AllTargets();
  for (const auto& target : targets) {
    if (target.name == TARGET) target.read({reinterpret_cast<const char*>(data), size});
  }
  return 0;
}
