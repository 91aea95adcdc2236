// What is typed into the boxes of the quote windows: lists of numbers, and days.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "platform/text/Clock.h"

namespace tarvolinex {

// The numbers of payments of a list such as "24, 36 48;60", each at least 1; empty when it holds something else.
std::vector<std::int16_t> TermsOf(std::string_view list);

// The numbers of a list such as "0, 500; 1,000": apart by blanks or semicolons, a comma before them being allowed; a
// comma within a number is its thousands separator. Empty when it holds something else, or a number below 0 or above
// `most`.
std::vector<double> NumbersOf(std::string_view list, double most);

// A day as a box for it holds it; empty for none.
std::string DayInput(const std::optional<CalendarDay>& day);

// The day in a box; a text that is none is marked.
std::optional<CalendarDay> MarkDay(TextBox& box, bool mayBeEmpty);

}  // namespace tarvolinex
