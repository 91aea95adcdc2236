// Which forms go with a supplier's calculator.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

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
  // Replaces the supplier's links by the ticked forms. The default supplier's (0) only when the user changed ticks. Of
  // the supplier whose links were loaded, ticks that nobody has changed here first follow what others have stored; of
  // the default supplier those that read as when its links were last seen here.
  void SaveSupplierFormLinks(int supplierId);
  // What is stored for the default supplier now is what its next ticks are changes of.
  void RememberDefaultLinks() { defaults_ = StoredLinks(0); }
  // Shows which forms there are now, and the ticks of the shown supplier that another program has changed. Ticks that
  // were changed here stay. Returns whether a tick has changed.
  bool Follow(int supplierId);
  // The shown supplier's links as they were last read.
  const std::set<int>& LoadedLinks() const { return loaded_; }
  // Ticks that nobody has changed here follow these links. Returns whether one has changed.
  bool TakeStored(const std::set<int>& links);
  // As the fields' of the supplier (BoundFields).
  std::function<void()> WayBack() {
    return [this, changed = FormLinksChanged, supplier = loadedSupplier_, loaded = loaded_, defaults = defaults_] {
      FormLinksChanged = changed;
      defaults_ = defaults;
      loadedSupplier_ = supplier;
      loaded_ = loaded;
    };
  }
  // The same list anew, with the ticks that it has.
  void RefreshFormsList();
  void ClearTicks();

 private:
  std::vector<ListView::Row> AvailableRows() const;
  void LvwForms_DblClick();
  std::set<int> Ticked() const;
  std::set<int> StoredLinks(int supplierId) const;
  std::vector<int> NewDefaultLinks();
  Run& run_;
  Database& database_;
  int loadedSupplier_ = 0;
  std::set<int> loaded_;    // the supplier's links as they were last read
  std::set<int> defaults_;  // those of the default supplier
};

}  // namespace tarvolinex
