#include "platform/Clock.h"

#include <ctime>

namespace tarvolinex {

std::string IsoDate(std::chrono::system_clock::time_point when) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
  std::tm day{};
  localtime_r(&seconds, &day);
  char text[16];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &day)};
}

}  // namespace tarvolinex
