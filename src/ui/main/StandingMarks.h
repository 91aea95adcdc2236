// Whose published calculator is out of date: a mark in the supplier list, a choice among its rows, and a line about the
// supplier that is shown.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "distribute/Standing.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

class StandingMarks {
 public:
  // The cell of the list that holds the state.
  static constexpr int kStateCell = 6;

  StandingMarks(Window& window, Database& database, ListView& list, const ShownSupplier& shown);
  ComboBox CboStanding;  // which rows the list shows; item data: the state, -1 = all
  Label LblStanding;     // of the shown supplier: when and as what it was sent, and what has changed since
  Timer TmrStanding;     // runs while the list is gone through

  // What all calculators have in common now.
  std::function<Branding()> BrandingNow;
  // False while nothing may change below the user, or the database is in use: nothing is looked at before GoOn.
  std::function<bool()> AtRest;
  // The rows' states have changed: they may have to be sorted or chosen anew.
  Event Changed;

  // Looks at all of them again, a few at a time, while the user works. A new list begins without marks.
  void LookAtAll();
  // At one whose calculator may have changed, or nobody's; the line tells of the shown one.
  void LookAt(int supplierId);
  // With what still waits to be looked at.
  void GoOn();
  // Whether the choice shows the row.
  bool Shows(const ListView::Row& row) const;

 private:
  void Look();
  void LookAtOne();
  void LookAtSome();
  void Mark(const Standing& standing);
  Database& database_;
  ListView& list_;
  const ShownSupplier& shown_;
  std::optional<Standings> standings_;
  std::vector<int> due_;  // suppliers, the last one first; the list may be sorted meanwhile
  int one_ = 0;           // supplier to be looked at before them
  bool changed_ = false;
};

}  // namespace tarvolinex
