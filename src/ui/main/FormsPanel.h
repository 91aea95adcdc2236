// Which forms go with a supplier's calculator.
#pragma once

#include <functional>
#include <string>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/Database.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

class FormsPanel {
 public:
  FormsPanel(Window& window, Run& run, Database& database, ShownSupplier& shown);
  Frame FraForms;
  ListView LvwForms;

  bool FormLinksChanged = false;
  bool TicksChanged = false;  // by the user, since the shown supplier was loaded

  // Opens a page filled with the shown supplier and quote.
  std::function<void(const std::string& page)> View;

  // Fills the list with the available forms that have a page file; none is ticked.
  void LoadFormsList();
  // Ticks exactly the forms linked to the supplier (0 for the default supplier).
  void LoadSupplierFormLinks(int supplierId);
  // Replaces the supplier's links by the ticked forms. The default supplier's (0) only when the user changed ticks.
  void SaveSupplierFormLinks(int supplierId);
  // The same list anew, with the ticks that it has.
  void RefreshFormsList();
  void ClearTicks();

 private:
  void FillFormsList();
  void LvwForms_DblClick();
  Run& run_;
  Database& database_;
};

}  // namespace tarvolinex
