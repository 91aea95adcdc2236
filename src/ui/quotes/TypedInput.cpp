#include "ui/quotes/TypedInput.h"

#include <algorithm>
#include <charconv>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::vector<std::string_view> ItemsOf(std::string_view list, std::string_view separators) {
  std::vector<std::string_view> words;
  for (std::size_t from = 0; from < list.size();) {
    const std::size_t end = std::min(list.find_first_of(separators, from), list.size());
    if (end > from) words.push_back(list.substr(from, end - from));
    from = end + 1;
  }
  return words;
}

}  // namespace

std::vector<std::int16_t> TermsOf(std::string_view list) {
  std::vector<std::int16_t> terms;
  for (const std::string_view word : ItemsOf(list, " ,;")) {
    std::int16_t term = 0;
    const char* const end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, term);
    if (read.ec != std::errc() || read.ptr != end || term < 1) return {};
    terms.push_back(term);
  }
  return terms;
}

std::vector<double> NumbersOf(std::string_view list, double most) {
  std::vector<double> numbers;
  std::string buffer;
  for (std::string_view word : ItemsOf(list, " ;")) {
    if (word.ends_with(',')) word.remove_suffix(1);
    if (word.empty()) continue;
    const auto text = ExactNumberText(word, buffer);
    const double number = text ? LeadingNumber(*text) : -1;
    if (number < 0 || number > most) return {};
    numbers.push_back(number);
  }
  return numbers;
}

std::string DayInput(const std::optional<CalendarDay>& day) {
  return day ? DayText(*day) : std::string();
}

std::optional<CalendarDay> MarkDay(TextBox& box, bool mayBeEmpty) {
  const std::string text(Trim(box.Text()));
  const auto day = DayFromText(text);
  const bool fine = day || (text.empty() && mayBeEmpty);
  box.SetFault(fine ? "" : Tr("%1 is no day, such as 2026-12-31", {text}));
  return day;
}

}  // namespace tarvolinex
