#include "platform/text/Clock.h"

#include <array>
#include <charconv>
#include <cstdio>
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

// In English on every machine, like all texts of the program.
constexpr std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};

}  // namespace

CalendarDay LocalDay(std::chrono::system_clock::time_point when) {
  const std::tm local = LocalTime(when);
  return std::chrono::year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
}

std::string LongDay(CalendarDay day) {
  return std::to_string(static_cast<unsigned>(day.day())) + " " + kMonths.at(static_cast<unsigned>(day.month()) - 1) +
         " " + std::to_string(static_cast<int>(day.year()));
}

std::string DayText(CalendarDay day) {
  // A schedule writes many: no format is read for each.
  std::string text = "0000-00-00";
  const auto write = [&](std::size_t at, std::size_t digits, unsigned number) {
    for (std::size_t i = at + digits; i-- > at; number /= 10) text[i] = static_cast<char>('0' + number % 10);
  };
  write(0, 4, static_cast<unsigned>(static_cast<int>(day.year())));
  write(5, 2, static_cast<unsigned>(day.month()));
  write(8, 2, static_cast<unsigned>(day.day()));
  return text;
}

std::optional<CalendarDay> DayFromText(std::string_view text) {
  constexpr std::size_t kLength = 10;
  if (text.size() != kLength || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto number = [&](std::size_t at, std::size_t length) {
    unsigned value = 0;
    const char* end = text.data() + at + length;
    const auto read = std::from_chars(text.data() + at, end, value);
    return read.ec == std::errc() && read.ptr == end ? value : 0U;
  };
  const CalendarDay day = std::chrono::year(static_cast<int>(number(0, 4))) / std::chrono::month(number(5, 2)) /
                          std::chrono::day(number(8, 2));
  if (!day.ok() || static_cast<int>(day.year()) == 0) return std::nullopt;
  return day;
}

std::string IsoDate(std::chrono::system_clock::time_point when) {
  return Formatted(when, "%Y-%m-%d");
}

std::string IsoMoment(std::chrono::system_clock::time_point when) {
  return Formatted(when, "%Y-%m-%d %H:%M:%S");
}

std::string LongDateTime(std::chrono::system_clock::time_point when) {
  const std::string month = kMonths.at(static_cast<std::size_t>(LocalTime(when).tm_mon));
  return Formatted(when, "%d ") + month + Formatted(when, " %Y %H:%M:%S");
}

std::string LongMoment(std::string_view text) {
  constexpr std::size_t kDayLength = 10, kMomentLength = 19;
  const auto day = text.size() >= kMomentLength ? DayFromText(text.substr(0, kDayLength)) : std::nullopt;
  if (!day) return std::string(text);
  const std::string moment = LongDay(*day) + " " + std::string(text.substr(kDayLength + 1, 8));
  return moment[1] == ' ' ? "0" + moment : moment;
}

std::int64_t LocalSecondsSince1999(std::chrono::system_clock::time_point when) {
  std::tm local = LocalTime(when), start{};
  start.tm_year = 1999 - 1900;
  start.tm_mday = 1;
  return timegm(&local) - timegm(&start);
}

}  // namespace tarvolinex
