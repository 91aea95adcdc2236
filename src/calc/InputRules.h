// How typed numbers are read, shown and stepped; shared by the quote panel, the rate card and the options.
#pragma once

#include <string>
#include <string_view>

#include "platform/Controls.h"

namespace tarvolinex {

// Kinds of input. FormatNumberInput, StepInput and AttachUpDown each know the ones that concern them.
enum InputKind {
  kInputAmount = 0,
  kInputPercent = 1,
  kInputCount = 2,
  kInputWholeAmount = 3,
  kInputFreeText = 4,
  kInputPayments = 5,
};

inline constexpr double kLargestAmount = 99'999'999;

// kInputAmount, kInputPercent: the leading number as "#0.00"; above `largest` (when that is above 0) it becomes
//   99,999,999 for an amount and `largest` for a percentage.
// kInputCount, kInputWholeAmount: the leading number, at least 0, as "#0".
// kInputFreeText: apostrophes become grave accents, then trimmed.
// Any other kind: the value as it is.
std::string FormatNumberInput(int kind, std::string_view value, double largest = 0);

// One click of an up-down: the box's number moves by the kind's step (100, 0.25 for a percentage, 1 for a count) and
// stops at the limit.
void StepInput(TextBox& box, bool up, double limit, int kind = kInputAmount);

// Gives the up-down the range and step of its kind, its value the minimum, and pairs it with the box, whose text stays.
void AttachUpDown(int kind, UpDown& upDown, TextBox& box);

// Text boxes and lists are locked, with the button-face colour, or unlocked; up-downs and check boxes are disabled or
// enabled. Other kinds are left alone.
void SetControlLocked(Control& control, bool locked);

// Writes a result into the control of that name and index (-1 for none): the text of a text box, the caption of a
// label. Other kinds, and a control that the window lacks, are left alone.
void SetControlText(Window& form, std::string_view control, int index, std::string_view text);

}  // namespace tarvolinex
