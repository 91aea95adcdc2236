// Boxes for numbers with their arrows, and what is locked; shared by the windows.
#pragma once

#include "calc/InputRules.h"
#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

// Says on the status line what was wrong with a box that has been left, and what it holds now. Without a fault the
// line is cleared.
void SayFault(Run& run, std::string_view fault, const TextBox& box);
// Says there that a box took nothing else than a number.
void SayNumbersOnly(Run& run);

// One click of an up-down, as SteppedNumber.
void StepInput(TextBox& box, bool up, double limit, const NumberRule& rule);

// Gives the up-down the range and step of its kind, its value the minimum, and pairs it with the box, whose text stays.
void AttachUpDown(int kind, UpDown& upDown, TextBox& box);

// Text boxes and lists are locked, with the button-face colour, or unlocked; up-downs and check boxes are disabled or
// enabled. Other kinds are left alone.
void SetControlLocked(Control& control, bool locked);

// Writes a result into the control of that name and index (-1 for none): the text of a text box, the caption of a
// label. Other kinds, and a control that the window lacks, are left alone.
void SetControlText(Window& form, std::string_view control, int index, std::string_view text);

}  // namespace tarvolinex
