// Controls that stand for columns of a record set, by their tags ("RS=SUPPLIER;FIELDNAME=Town").
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "store/Row.h"
#include "store/Suppliers.h"

namespace tarvolinex {

// Puts one column into one control when the control's tag names the record set; Null when clearOnly is set or the row
// was not found. A column that the row lacks leaves the control as it was.
void BindFieldToControl(const Row& row, Control& control, std::string_view recordSetName, bool clearOnly);

// Two decimals where they hold the whole rate, every digit otherwise; Null is empty, a text that is no number itself.
std::string RateFieldText(const Value& value);

// The window's fields of a supplier, whichever panel they stand in.
class SupplierFields {
 public:
  explicit SupplierFields(const Window& window) : window_(window) {}

  void Bind(const Row& supplier, bool clearOnly);

  // Remembers what the fields show now, and what the row holds for them.
  void RememberLoadedFields(const Row& supplier);

  // The fields in control order. asSupplier false: only those that belong to the default supplier.
  SupplierFieldLists CollectSupplierFields(bool asSupplier) const;

 private:
  // What a field of the shown supplier showed when it was loaded, and the stored value as a statement has it. While the
  // field still reads the same there is nothing to store, and where all fields are stored the value goes back
  // unrounded.
  struct Loaded {
    std::string text, literal;
  };
  // A control that stands for a column: a check box or a text box.
  struct BoundControl {
    std::string column, noDefault;
    CheckBox* check;
    TextBox* box;
    std::string Text() const;
  };
  // The tags of a window do not change: they are read once.
  const std::vector<BoundControl>& Bound() const;
  const Window& window_;
  mutable std::vector<BoundControl> bound_;
  std::map<std::string, Loaded> loaded_;  // by column
};

}  // namespace tarvolinex
