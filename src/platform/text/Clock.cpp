#include "platform/text/Clock.h"

#include <array>
#include <ctime>

namespace tarvolinex {

namespace {

std::tm LocalTime(std::chrono::system_clock::time_point when) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
  std::tm local{};
  localtime_r(&seconds, &local);
  return local;
}

std::string Formatted(std::chrono::system_clock::time_point when, const char* format) {
  const std::tm local = LocalTime(when);
  char text[64];
  return {text, std::strftime(text, sizeof text, format, &local)};
}

}  // namespace

std::string IsoDate(std::chrono::system_clock::time_point when) {
  return Formatted(when, "%Y-%m-%d");
}

std::string LongDateTime(std::chrono::system_clock::time_point when) {
  // In English on every machine, like all texts of the program.
  constexpr std::array<const char*, 12> kMonths = {"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};
  const std::string month = kMonths.at(static_cast<std::size_t>(LocalTime(when).tm_mon));
  return Formatted(when, "%d ") + month + Formatted(when, " %Y %H:%M:%S");
}

std::int64_t LocalSecondsSince1999(std::chrono::system_clock::time_point when) {
  std::tm local = LocalTime(when), start{};
  start.tm_year = 1999 - 1900;
  start.tm_mday = 1;
  return timegm(&local) - timegm(&start);
}

}  // namespace tarvolinex
