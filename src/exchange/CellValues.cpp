#include "exchange/CellValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

enum class Spelling { None, Plain, DecimalComma, Ambiguous };

struct Number {
  Spelling spelling = Spelling::None;
  std::string plain;  // digits with a point
};

bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "1.234.567": one to three digits and then groups of three, at least one.
bool HasGroups(std::string_view text, char separator) {
  if (text.find(separator) == std::string_view::npos) return false;
  const auto groups = Split(text, separator);
  if (groups.size() < 2 || groups[0].empty() || groups[0].size() > 3) return false;
  return AllDigits(groups[0]) && std::all_of(groups.begin() + 1, groups.end(), [](std::string_view group) {
           return group.size() == 3 && AllDigits(group);
         });
}

// Digits, perhaps with thousands separated by `thousands`, perhaps with decimals behind `decimal`.
std::optional<std::string> Plain(std::string_view text, char thousands, char decimal) {
  const std::size_t at = std::min(text.find(decimal), text.size());
  const std::string_view whole = text.substr(0, at), decimals = text.substr(std::min(at + 1, text.size()));
  if (!AllDigits(decimals) || (whole.empty() && decimals.empty())) return std::nullopt;
  const bool groups = !AllDigits(whole);
  if (groups && !HasGroups(whole, thousands)) return std::nullopt;
  if (!groups) return std::string(whole) + (decimals.empty() ? "" : "." + std::string(decimals));
  return ReplaceAll(whole, std::string_view(&thousands, 1), "") + (decimals.empty() ? "" : "." + std::string(decimals));
}

// One separator before three digits, after one to three of which the first is no 0.
bool MayBeThousands(std::string_view text, char separator) {
  return HasGroups(text, separator) && text.front() != '0' && std::count(text.begin(), text.end(), separator) == 1;
}

Number NumberIn(std::string_view text, bool decimalCommas) {
  std::string sign;
  if (text.starts_with('-') || text.starts_with('+')) {
    if (text.front() == '-') sign = "-";
    text.remove_prefix(1);
  }
  if (MayBeThousands(text, ',') || (decimalCommas && MayBeThousands(text, '.'))) return {Spelling::Ambiguous, ""};
  if (const auto plain = Plain(text, ',', '.')) return {Spelling::Plain, sign + *plain};
  if (const auto plain = Plain(text, '.', ',')) return {Spelling::DecimalComma, sign + *plain};
  return {};
}

// What a column of numbers takes.
struct Range {
  double most;
  int decimals;
};

Range RangeOf(const TableColumn& column) {
  constexpr double kLargestYield = 100, kLargestCommission = 200, kLargestAmount = 99999999;
  constexpr int kAnyDecimals = 400;
  if (column.type == ColumnType::Currency) return {kLargestAmount, 4};
  if (column.type == ColumnType::WholeNumber) return {std::numeric_limits<std::int32_t>::max(), 0};
  const bool commission = EqualNoCase(std::string_view(column.name).substr(0, 3), "Com");
  return {commission ? kLargestCommission : kLargestYield, kAnyDecimals};
}

Value ValueOf(ColumnType type, const std::string& plain) {
  double number = 0;
  float single = 0;
  const char* end = plain.data() + plain.size();
  switch (type) {
    case ColumnType::Currency:
      return Currency::FromText(plain).value_or(Currency());
    case ColumnType::Single:
      std::from_chars(plain.data(), end, single);
      return single;
    case ColumnType::WholeNumber:
      std::from_chars(plain.data(), end, number);
      return static_cast<std::int64_t>(number);
    default:
      std::from_chars(plain.data(), end, number);
      return number;
  }
}

ReadCell ReadNumber(const TableColumn& column, std::string_view cell, bool decimalCommas) {
  const std::string text(cell);
  const Number number = NumberIn(cell, decimalCommas);
  if (number.spelling == Spelling::Ambiguous) {
    return {Null{}, Tr("\"%1\" may have thousands or decimals; write it without a separator of thousands", {text})};
  }
  if (number.spelling == Spelling::None) return {Null{}, Tr("\"%1\" is no number", {text})};
  const Range range = RangeOf(column);
  double value = 0;
  std::from_chars(number.plain.data(), number.plain.data() + number.plain.size(), value);
  if (value < 0) return {Null{}, Tr("%1 is below 0", {text})};
  if (value > range.most) return {Null{}, Tr("%1 is above %2", {text, FormatFixed(range.most, 0)})};
  const std::size_t point = std::min(number.plain.find('.'), number.plain.size() - 1);
  const std::size_t last = number.plain.find_last_not_of('0');
  if (last != std::string::npos && last > point + static_cast<std::size_t>(range.decimals)) {
    return {Null{}, Tr("%1 has more than %2 decimals", {text, std::to_string(range.decimals)})};
  }
  return {ValueOf(column.type, number.plain), ""};
}

ReadCell ReadTruth(std::string_view cell) {
  static constexpr std::array<std::string_view, 5> kYes = {"yes", "true", "1", "-1", "y"};
  static constexpr std::array<std::string_view, 5> kNo = {"no", "false", "0", "n", ""};
  const auto is = [&](std::string_view word) { return EqualNoCase(cell, word); };
  if (std::any_of(kYes.begin(), kYes.end(), is)) return {true, ""};
  if (std::any_of(kNo.begin(), kNo.end(), is)) return {false, ""};
  return {Null{}, Tr("\"%1\" is neither Yes nor No", {std::string(cell)})};
}

// Days too: they are stored as whoever wrote them has written them.
ReadCell ReadText(const TableColumn& column, std::string_view cell) {
  constexpr int kLongestDay = 40;
  const int size = column.type == ColumnType::Date ? kLongestDay : column.size;
  if (cell.find('\0') != std::string_view::npos) return {Null{}, Tr("it holds a character of number 0")};
  if (cell.size() > static_cast<std::size_t>(size) && FirstCharacters(cell, size).size() < cell.size()) {
    return {Null{}, Tr("\"%1\" is longer than %2 characters", {std::string(cell), std::to_string(size)})};
  }
  return {EscapeQuotes(cell), ""};
}

}  // namespace

std::string CellText(const Value& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "Yes" : "No";
  return ValueText(value);
}

bool HasDecimalComma(std::string_view cell) {
  cell = Trim(cell);
  return cell.find(',') != std::string_view::npos && NumberIn(cell, false).spelling == Spelling::DecimalComma;
}

ReadCell ReadCellFor(const TableColumn& column, std::string_view cell, bool decimalCommas) {
  cell = Trim(cell);
  if (column.type == ColumnType::Text) return ReadText(column, cell);
  if (column.type == ColumnType::YesNo) return ReadTruth(cell);
  if (cell.empty()) return {Null{}, ""};
  return column.type == ColumnType::Date ? ReadText(column, cell) : ReadNumber(column, cell, decimalCommas);
}

}  // namespace tarvolinex
