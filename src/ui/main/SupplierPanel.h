// A supplier's own fields.
#pragma once

#include <functional>

#include "controls/Controls.h"
#include "core/Run.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

// Indexes of SupplierPanel::TxtSupplier.
enum SupplierField { kSupplierName = 0, kSupplierFields = 11 };

class SupplierPanel {
 public:
  SupplierPanel(Window& window, Run& run, ShownSupplier& shown);
  Frame FraSupplier;
  ControlArray<Label> LblSupplier;
  ControlArray<TextBox>
      TxtSupplier;  // name, two address lines, town, county, post code, tel, fax, e-mail, web, equipment

  // A field has changed; whether the supplier counted as changed before.
  std::function<void(int field, bool changedBefore)> Changed;

  TextBox& Name() const { return TxtSupplier(kSupplierName); }
  // The shown supplier's name is empty: it is not stored like that.
  bool Nameless() const;
  // What the tab calls the field; empty when it is none of these.
  std::string WordsOf(const Control* field) const;

 private:
  void TxtSupplier_LostFocus(int field);
  Run& run_;
};

}  // namespace tarvolinex
