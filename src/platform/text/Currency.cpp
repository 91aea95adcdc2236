#include "platform/text/Currency.h"

#include <charconv>
#include <limits>

namespace tarvolinex {

std::optional<Currency> Currency::FromText(std::string_view decimal) {
  constexpr std::uint64_t kLimit = std::uint64_t{1} << 63;
  const bool negative = !decimal.empty() && decimal.front() == '-';
  if (negative || (!decimal.empty() && decimal.front() == '+')) decimal.remove_prefix(1);
  if (decimal.empty()) return std::nullopt;
  std::uint64_t units = 0;
  int decimals = -1;    // -1 before the point
  int next = 0;         // fifth decimal
  bool beyond = false;  // anything but zeros after it
  bool digits = false;
  for (const char c : decimal) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (c < '0' || c > '9') return std::nullopt;
    digits = true;
    const int digit = c - '0';
    if (decimals >= 4) {
      if (decimals == 4) next = digit;
      if (decimals > 4 && digit != 0) beyond = true;
      ++decimals;
      continue;
    }
    if (units > (kLimit - static_cast<std::uint64_t>(digit)) / 10) return std::nullopt;
    units = units * 10 + static_cast<std::uint64_t>(digit);
    if (decimals >= 0) ++decimals;
  }
  if (!digits) return std::nullopt;
  for (int i = decimals < 0 ? 0 : decimals; i < 4; ++i) {
    if (units > kLimit / 10) return std::nullopt;
    units *= 10;
  }
  if (next > 5 || (next == 5 && (beyond || units % 2 == 1))) ++units;
  if (units > kLimit || (units == kLimit && !negative)) return std::nullopt;
  return FromUnits(static_cast<std::int64_t>(negative ? ~units + 1 : units));
}

char* Currency::WriteText(char* out) const {
  std::uint64_t magnitude = static_cast<std::uint64_t>(units_);
  if (units_ < 0) {
    *out++ = '-';
    magnitude = ~magnitude + 1;
  }
  out = std::to_chars(out, out + 20, magnitude / 10000).ptr;
  const auto decimals = static_cast<unsigned>(magnitude % 10000);
  *out++ = '.';
  *out++ = static_cast<char>('0' + decimals / 1000);
  *out++ = static_cast<char>('0' + decimals / 100 % 10);
  *out++ = static_cast<char>('0' + decimals / 10 % 10);
  *out++ = static_cast<char>('0' + decimals % 10);
  return out;
}

std::string Currency::ToText() const {
  char text[24];
  return {text, WriteText(text)};
}

}  // namespace tarvolinex
