#include "calc/InputRules.h"

#include <algorithm>

#include "platform/Text.h"

namespace tarvolinex {

namespace {

struct Range {
  double min, max, step;
};

Range RangeOf(int kind) {
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

double ClickStep(int kind) {
  if (kind == kInputAmount || kind == kInputWholeAmount) return 100;
  return kind == kInputPercent ? 0.25 : 1;
}

}  // namespace

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

void StepInput(TextBox& box, bool up, double limit, int kind) {
  const double number = LeadingNumber(box.Text());
  const double next = up ? std::min(number + ClickStep(kind), limit) : std::max(number - ClickStep(kind), limit);
  box.SetText(FormatNumberInput(kind, FormatFixed(next, 4)));
}

void AttachUpDown(int kind, UpDown& upDown, TextBox& box) {
  const Range range = RangeOf(kind);
  upDown.Max = range.max;
  upDown.Min = upDown.Value = range.min;
  upDown.Step = range.step;
  upDown.Kind = kind;
  upDown.Buddy = &box;
}

void SetControlLocked(Control& control, bool locked) {
  const Colour colour = locked ? kSystemButtonFace : kSystemWindow;
  if (auto* box = dynamic_cast<TextBox*>(&control)) {
    box->SetLocked(locked);
    box->SetBackColour(colour);
  } else if (auto* list = dynamic_cast<ComboBox*>(&control)) {
    list->SetLocked(locked);
    list->SetBackColour(colour);
  } else if (control.TypeName() == "UPDOWN" || control.TypeName() == "CHECKBOX") {
    control.SetEnabled(!locked);
  }
}

void SetControlText(Window& form, std::string_view control, int index, std::string_view text) {
  const std::string name = index < 0 ? std::string(control) : std::string(control) + "_" + std::to_string(index);
  Control* found = form.Find(name);
  if (auto* box = dynamic_cast<TextBox*>(found)) box->SetText(text);
  if (auto* label = dynamic_cast<Label*>(found)) label->SetCaption(text);
}

}  // namespace tarvolinex
