#include "calc/InputRules.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

double ClickStep(int kind) {
  if (kind == kInputAmount || kind == kInputWholeAmount) return 100;
  return kind == kInputPercent ? 0.25 : 1;
}

// The text without the sign of a unit.
std::string Unmarked(std::string_view text, std::string_view symbol) {
  return std::string(Trim(ReplaceAll(ReplaceAll(text, symbol, ""), "%", "")));
}

// The text stands for another unit than the box's.
bool IsOfOtherUnit(const NumberRule& rule, std::string_view text) {
  const bool percent = text.find('%') != std::string_view::npos;
  const bool money = !rule.symbol.empty() && text.find(rule.symbol) != std::string_view::npos;
  return (percent && rule.kind != kInputPercent) || (money && rule.kind != kInputAmount);
}

bool HasDigit(std::string_view text) {
  return text.find_first_of("0123456789") != std::string_view::npos;
}

double SmallestOf(const NumberRule& rule) {
  return rule.kind == kInputPayments ? 1 : 0;
}

std::string Formatted(const NumberRule& rule, std::string_view text) {
  return FormatNumberInput(rule.kind == kInputPayments ? kInputCount : rule.kind, Unmarked(text, rule.symbol),
                           rule.largest);
}

}  // namespace

double TypedNumber(std::string_view text, std::string_view currencySymbol) {
  return LeadingNumber(Unmarked(text, currencySymbol));
}

std::string FaultOf(const NumberRule& rule, std::string_view text) {
  const std::string typed(Trim(text)), number = Unmarked(text, rule.symbol);
  if (typed.empty()) return rule.kind == kInputPayments ? Tr("%1: a number is wanted", {rule.name}) : std::string();
  if (IsOfOtherUnit(rule, text)) {
    if (!rule.otherWay.empty()) return Tr("%1: %2 goes with \"%3\" beside the box", {rule.name, typed, rule.otherWay});
    return rule.kind == kInputPercent ? Tr("%1: %2 is an amount; this is a percentage", {rule.name, typed})
                                      : Tr("%1: %2 does not belong here", {rule.name, typed});
  }
  std::string digits;
  if (!ExactNumberText(number, digits)) return Tr("%1: %2 is no number", {rule.name, typed});
  const int decimals = rule.kind == kInputAmount || rule.kind == kInputPercent ? 2 : 0;
  const double value = TypedNumber(text, rule.symbol);
  if (rule.largest > 0 && value > rule.largest) {
    return Tr("%1: %2 is more than %3", {rule.name, typed, FormatFixed(rule.largest, decimals)});
  }
  if (value < SmallestOf(rule)) {
    return Tr("%1: %2 is less than %3", {rule.name, typed, FormatFixed(SmallestOf(rule), decimals)});
  }
  return {};
}

std::string TextWhenLeft(const NumberRule& rule, std::string_view text, std::string_view before) {
  const bool empty = Trim(text).empty(), payments = rule.kind == kInputPayments;
  const bool none =
      IsOfOtherUnit(rule, text) || (!empty && !HasDigit(text)) || (payments && TypedNumber(text, rule.symbol) < 1);
  if (none && FaultOf(rule, before).empty()) return std::string(before);
  if (!payments) return Formatted(rule, none ? "" : text);
  return FormatFixed(std::clamp(TypedNumber(text, rule.symbol), SmallestOf(rule), rule.largest), 0);
}

std::string FormatNumberInput(int kind, std::string_view value, double largest) {
  double number = LeadingNumber(value);
  switch (kind) {
    case kInputAmount:
    case kInputPercent:
      if (largest > 0 && number > largest) number = kind == kInputAmount ? kLargestAmount : largest;
      return FormatFixed(number, 2);
    case kInputCount:
    case kInputWholeAmount:
      return FormatFixed(std::max(number, 0.0), 0);
    case kInputFreeText:
      return std::string(Trim(ReplaceAll(value, "'", "`")));
    default:
      return std::string(value);
  }
}

double SteppedNumber(double number, bool up, double limit, int kind) {
  return up ? std::min(number + ClickStep(kind), limit) : std::max(number - ClickStep(kind), limit);
}

InputRange RangeOf(int kind) {
  switch (kind) {
    case kInputAmount:
    case kInputWholeAmount:
      return {0, 100'000'000, 100};
    case kInputPercent:
      return {0, 100, 1};
    case kInputCount:
      return {0, 1000, 1};
    case kInputPayments:
      return {1, 1000, 1};
    default:
      return {0, 0, 0};
  }
}

}  // namespace tarvolinex
