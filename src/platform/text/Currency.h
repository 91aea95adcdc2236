// Money: a signed 64-bit count of ten-thousandths of the currency unit.
#pragma once

#include <cmath>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvolinex {

class Currency {
 public:
  constexpr Currency() = default;

  // units: the amount times 10,000, as stored on disk.
  static constexpr Currency FromUnits(std::int64_t units) {
    Currency c;
    c.units_ = units;
    return c;
  }

  // Rounded to four decimals, halves to even; nullopt when it is no number or does not fit (922,337,203,685,477.58).
  static std::optional<Currency> FromDouble(double amount) { return FromScaled(amount * 10000.0); }

  // The amount times a factor, rounded likewise; the amount itself is not rounded on the way.
  std::optional<Currency> Times(double factor) const { return FromScaled(static_cast<double>(units_) * factor); }

  // A plain decimal ("-12.3456789"), exactly, rounded as above; nullopt when it is none or does not fit.
  static std::optional<Currency> FromText(std::string_view decimal);

  constexpr std::int64_t Units() const { return units_; }
  constexpr double ToDouble() const { return static_cast<double>(units_) / 10000.0; }
  // Always four decimals: "12345.6700".
  std::string ToText() const;
  // Writes the same at `out` (room for 24 characters) and returns the end.
  char* WriteText(char* out) const;

  // The amount in hundredths as it is shown with two decimals, halves away from zero.
  constexpr std::int64_t Hundredths() const {
    return units_ >= 0 ? units_ / 100 + (units_ % 100 >= 50) : units_ / 100 - (units_ % 100 <= -50);
  }

  constexpr auto operator<=>(const Currency&) const = default;

  // nullopt on overflow.
  std::optional<Currency> Plus(Currency other) const {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(units_, other.units_, &sum)) return std::nullopt;
    return FromUnits(sum);
  }
  std::optional<Currency> Minus(Currency other) const {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(units_, other.units_, &difference)) return std::nullopt;
    return FromUnits(difference);
  }

 private:
  static std::optional<Currency> FromScaled(double units) {
    if (!(units >= -9223372036854775808.0 && units < 9223372036854775808.0)) return std::nullopt;
    return FromUnits(std::llrint(units));
  }
  std::int64_t units_ = 0;
};

}  // namespace tarvolinex
