// How typed numbers are read, shown and stepped; shared by the quote panel, the rate card and the options.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// Kinds of input. Each function knows the ones that concern it.
enum InputKind {
  kInputAmount = 0,
  kInputPercent = 1,
  kInputCount = 2,
  kInputWholeAmount = 3,
  kInputFreeText = 4,
  kInputPayments = 5,
};

inline constexpr double kLargestAmount = 99'999'999;
inline constexpr double kMostPayments = 1000;

// kInputAmount, kInputPercent: the leading number as "#0.00"; above `largest` (when that is above 0) it becomes
//   99,999,999 for an amount and `largest` for a percentage.
// kInputCount, kInputWholeAmount: the leading number, at least 0, as "#0".
// kInputFreeText: apostrophes become grave accents, then trimmed.
// Any other kind: the value as it is.
std::string FormatNumberInput(int kind, std::string_view value, double largest = 0);

// The number that a box's text gives: as LeadingNumber, whatever currency symbol or percent sign stands beside it.
double TypedNumber(std::string_view text, std::string_view currencySymbol);

// What a box may hold.
struct NumberRule {
  int kind = kInputAmount;
  double largest = 0;
  std::string name;      // of the box, for reports
  std::string otherWay;  // the choice beside the box that takes the other unit; empty = none
  std::string symbol;    // of the currency
};

// What is wrong with a text for such a box, as a sentence that names the box and the text; empty = nothing. The least
// value is 0, of a number of payments 1. An empty text is no fault, except for a number of payments.
std::string FaultOf(const NumberRule& rule, std::string_view text);

// What the box shows when it is left: the text formatted, or `before`, the last that it held with good reason, when the
// text is none of its numbers (another unit, no digits, no payments at all).
std::string TextWhenLeft(const NumberRule& rule, std::string_view text, std::string_view before);

// What one click of an up-down makes of a number: it moves by the kind's step (100, 0.25 for a percentage, 1 for a
// count) and stops at the limit.
double SteppedNumber(double number, bool up, double limit, int kind);

// The range and step of an up-down's arrows.
struct InputRange {
  double min, max, step;
};
InputRange RangeOf(int kind);

}  // namespace tarvolinex
