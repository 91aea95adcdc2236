// The organisation's preferences with what it has chosen for the calculator page. Files of the app folder hold them,
// and publishing uses those. Of a database that several desks share they belong to the office: it stores them, and the
// files are this desk's copy.
#pragma once

#include <string>
#include <vector>

#include "core/Reports.h"
#include "publish/PageOptions.h"
#include "publish/Template.h"
#include "store/Office.h"

namespace tarvolinex {

struct Organisation {
  CalculatorPreferencesRecord prefs;
  PageOptions page;
  bool operator==(const Organisation&) const = default;
};

// Each field as a text, "General." or "Page." before its name.
OfficeFields OfficeFieldsOf(const Organisation& organisation);
// What is missing, or does not fit, stays as it is.
void TakeFields(const OfficeFields& fields, Organisation& organisation);

// The fields that may be limits of the same thing: a mixture of two desks' could leave nothing to choose.
bool IsLimit(const std::string& name);

// Whose copy of the office's preferences is brought up to date.
struct DeskCopy {
  Branding& branding;  // takes the office's preferences
  bool keep;           // whether the app folder's files follow; else they are another program's
};

// Makes the desk's preferences those of the office. The first desk whose organisation has a name and an e-mail address
// gives its own, unless its user may only read. A copy that was changed without the office is set aside first, which
// the user learns. Returns whether something is different now; never of a file. Throws RuntimeError; a copy that cannot
// be written is a fatal report.
bool TakeOffice(Database& database, const DeskCopy& desk, Reporter& reporter);
// The same; a failure is reported.
bool ShareOrganisation(Database& database, const DeskCopy& desk, Reporter& reporter);

// After the app folder's files were written: of a shared database, that they are what the office has.
void NoteAgreed(Database& database, const Branding& branding);

}  // namespace tarvolinex
