// The supplier's rate card on the window: what it offers, and the order of its thresholds.
#pragma once

#include "core/Records.h"
#include "platform/data/Database.h"

namespace tarvolinex {

// The supplier that the record set stands on; Null, an empty text and a column that the table lacks read as empty or 0.
// Throws RuntimeError, naming supplier and column, when a number is needed and something else is stored.
SupplierCalcSettingsRecord ReadSupplierSettings(const Recordset& supplier);

// Reads it into `SupplierCalcSettings`. Rates that are no numbers go into `RateCardFault`: nothing is priced with them.
void UseSupplierSettings(const Recordset& supplier);

// The same, applies what the supplier offers and recalculates the quote.
void LoadSupplierRateCard(const Recordset& supplier);

// Sets the quote panel to what the supplier in `SupplierCalcSettings` offers: the premium's caption and check box, the
// residual and maintenance inputs.
void ApplySupplierOptions();

// What is locked says why in the organisation's present words.
void NameWhatIsLocked();

// After threshold box i (1 to 4) was left: boxes above it are raised to at least its value and boxes below it lowered
// to at most its value, each only if it has to.
void RepairThresholdOrder(int box);

// The premium's caption, yield and minimum can be edited when its switch is on.
void ApplyPremiumSwitch();

}  // namespace tarvolinex
