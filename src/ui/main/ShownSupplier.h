// The supplier that the main window shows; its panels share it.
#pragma once

#include <functional>
#include <string>

namespace tarvolinex {

struct ShownSupplier {
  int CurrentSupplierId = 0;     // 0 while a new supplier is not yet saved
  int CurrentSupplierIndex = 0;  // row of the supplier list
  bool SupplierChanged = false;
  bool LoadingSupplier = false;  // what changes meanwhile is no edit
  // Why its rates can neither price nor be published; empty = they can.
  std::string RateCardFault;
  // After a save of which nobody has told whether it was stored: makes what was edited in it stored, with the IDs that
  // it got. Empty = there was none.
  std::function<void()> WayForth;
};

}  // namespace tarvolinex
