// The published calculator: a folder of plain files, built anew for every preview and every send.
#pragma once

#include <string>
#include <vector>

#include "core/Aliases.h"
#include "core/Records.h"
#include "core/Reports.h"
#include "publish/Template.h"
#include "store/Forms.h"

namespace tarvolinex {

// A supplier's calculator, as everybody below the windows and commands is given it.
struct Publication {
  Branding branding;
  SupplierCalcSettingsRecord supplier;
  std::vector<FormRow> forms;  // that are linked to the supplier, in their order
};

// Builds the folder: both records, both pages, logo, background, the linked form pages, and "calcdata.txt". A linked
// form whose page is missing or empty, or whose link name no file can have, is left out and named in a warning, and
// so are texts of the supplier that its record cannot hold. A failure is a fatal report ("Failed setting up
// calculator").
void BuildCalculatorFolder(const Publication& publication, Reporter& reporter);

// False when limits of the preferences contradict each other; a box has then said which. Whoever stores preferences or
// hands a calculator out asks first.
bool CanPublish(const CalculatorPreferencesRecord& prefs, const Words& words, Reporter& reporter);

// The chosen install icon's file in the data folder; "" when none is chosen or there is none of that name.
std::string InstallIconPath(const Branding& branding);

// Copies the chosen install icon as below where there is one, and says nothing where there is none. Throws
// RuntimeError.
void BringInstallIcon(const Branding& branding);

// Copies the install icon that the preferences choose to the folder's "calc.ico"; warns when none is chosen. A failure
// is a fatal report.
void CopyInstallIcon(const Branding& branding, Reporter& reporter);

}  // namespace tarvolinex
