// Days as texts.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvolinex {

// A day of the Gregorian calendar.
using CalendarDay = std::chrono::year_month_day;
CalendarDay LocalDay(std::chrono::system_clock::time_point when);
// "5 March 2003".
std::string LongDay(CalendarDay day);
// YYYY-MM-DD. REQUIRES: a year from 0 to 9999.
std::string DayText(CalendarDay day);
// The day of such a text; nullopt when it is none.
std::optional<CalendarDay> DayFromText(std::string_view text);

// The local day as YYYY-MM-DD.
std::string IsoDate(std::chrono::system_clock::time_point when);

// "2003-03-05 14:07:09", local time.
std::string IsoMoment(std::chrono::system_clock::time_point when);

// "05 March 2003 14:07:09", local time.
std::string LongDateTime(std::chrono::system_clock::time_point when);

// "2003-03-05 14:07:09" in that form; every other text stays as it is.
std::string LongMoment(std::string_view text);

// Whole seconds between 1 January 1999 00:00 and the moment, both as the clock on the wall shows them.
std::int64_t LocalSecondsSince1999(std::chrono::system_clock::time_point when);

}  // namespace tarvolinex
