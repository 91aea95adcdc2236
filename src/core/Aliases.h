// The organisation's own words for the key terms, and the tags that controls carry.
#pragma once

#include <string>
#include <string_view>

#include "controls/Controls.h"
#include "core/Records.h"

namespace tarvolinex {

// Whose words stand for the placeholders.
struct Words {
  const CalculatorPreferencesRecord& own;
  const SupplierCalcSettingsRecord& supplier;
};

// Replaces "<DEPOSIT>", "<RESIDUAL>", "<MAINT>", "<VAT>", "<CAPEQUIP>", "£", "<SUPPLIER>", "<CALCNAME>",
// "<ADDRATEMSG>" and "<SUPPLIERNAME>", matching case exactly, one pass each in this order: a placeholder that a word
// brings in is replaced when its own turn comes later.
std::string ReplaceAliases(std::string_view text, const Words& words);

// The same for what carries a caption: an "&" of the caption marks its access key, one that a word brings in is shown
// as it stands.
std::string CaptionWithAliases(std::string_view caption, const Words& words);

// The supplier's caption of the premium, or "Additional Rate Premium" when it has none.
std::string PremiumCaption(const SupplierCalcSettingsRecord& supplier);

// The value of the first part of "KEY=value;KEY=value" whose key matches without regard to case, trimmed; empty when
// no part does. Keys are not trimmed.
std::string GetTagValue(std::string_view tag, std::string_view key);

// Captions of labels, frames, buttons, menus and check boxes, and tooltips of toolbar buttons, from their "ALAIS="
// tags; every "£" of a caption becomes the currency symbol.
void ApplyCaptions(Window& window, const Words& words);

}  // namespace tarvolinex
