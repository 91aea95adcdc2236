#include "ui/NumberBoxes.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void SayFault(Run& run, std::string_view fault, const TextBox& box) {
  if (fault.empty() || !box.Fault().empty()) return run.SetNote(fault.empty() ? "" : box.Fault());
  run.SetNote(Tr("%1. It is %2 now.", {fault, box.Text()}), true);
}

void SayNumbersOnly(Run& run) {
  run.SetNote(Tr("Only a number goes here"));
}

void StepInput(TextBox& box, bool up, double limit, const NumberRule& rule) {
  const double next = SteppedNumber(TypedNumber(box.Text(), rule.symbol), up, limit, rule.kind);
  box.SetText(FormatNumberInput(rule.kind, FormatFixed(next, 4)));
}

void AttachUpDown(int kind, UpDown& upDown, TextBox& box) {
  const InputRange range = RangeOf(kind);
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
