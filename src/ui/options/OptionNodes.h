// The settings of the options window: where each stands in the tree, how it is edited and which field it is.
#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "core/Records.h"
#include "publish/PageOptions.h"

namespace tarvolinex {

enum class OptionEditor {
  None,
  TextLine,
  Number,
  Swatch,
  OnOff,
  PictureImport,
  DepositTypes,
  IconList,
  Language,
  Meaning
};

using OptionField =
    std::variant<std::monostate, FixedText CalculatorPreferencesRecord::*, Colour CalculatorPreferencesRecord::*,
                 std::int32_t CalculatorPreferencesRecord::*, std::int16_t CalculatorPreferencesRecord::*,
                 float CalculatorPreferencesRecord::*, bool CalculatorPreferencesRecord::*, std::string PageOptions::*,
                 std::int32_t PageOptions::*, bool PageOptions::*>;

struct OptionNode {
  const char *key, *parent;  // parent: empty for a root
  const char* caption;       // with aliases
  const char* hint;          // what the setting does for whom, with aliases
  OptionEditor editor = OptionEditor::None;
  OptionField field = {};
  int kind = 0;   // of a value: which input rule it follows
  int limit = 0;  // of a value: the largest; of a text: how many characters it holds
};

// What a form page is, for its details.
extern const char* const kFormHint;

inline constexpr const char* kFormsKey = "FORMS";  // and, with a form's ID, the keys of the forms

// In the order in which they are added to the tree. The forms are not among them.
std::span<const OptionNode> OptionNodes();
// nullptr when no setting has the key.
const OptionNode* FindOptionNode(std::string_view key);

}  // namespace tarvolinex
