// The organisation's own words for the key terms, and the tags that controls carry.
#pragma once

#include <string>
#include <string_view>

#include "controls/Controls.h"

namespace tarvolinex {

// Replaces "<DEPOSIT>", "<RESIDUAL>", "<MAINT>", "<VAT>", "<CAPEQUIP>", "£", "<SUPPLIER>", "<CALCNAME>",
// "<ADDRATEMSG>" and "<SUPPLIERNAME>", matching case exactly, one pass each in this order: a placeholder that a word
// brings in is replaced when its own turn comes later.
std::string ReplaceAliases(std::string_view text);

// The same for what carries a caption: an "&" of the caption marks its access key, one that a word brings in is shown
// as it stands.
std::string CaptionWithAliases(std::string_view caption);

// The shown supplier's caption of the premium, or "Additional Rate Premium" when it has none.
std::string PremiumCaption();

// The value of the first part of "KEY=value;KEY=value" whose key matches without regard to case, trimmed; empty when
// no part does. Keys are not trimmed.
std::string GetTagValue(std::string_view tag, std::string_view key);

// Captions of labels, frames, buttons, menus and check boxes, and tooltips of toolbar buttons, from their "ALAIS="
// tags; every "£" of a caption becomes the currency symbol. The main window's deposit-mode list is rebuilt with any
// window; its residual-mode list and its second tab's caption with the main window itself.
void ApplyCaptions(Window& window);

}  // namespace tarvolinex
