// Enquiry pages filled with a supplier and a quote, with a form that e-mails them to the organisation.
#pragma once

#include <string>
#include <string_view>

#include "core/Quote.h"
#include "core/Records.h"
#include "core/Reports.h"

namespace tarvolinex {

// What a page is filled with.
struct Enquiry {
  const CalculatorPreferencesRecord& prefs;
  const SupplierCalcSettingsRecord& supplier;
  const QuoteRecord& quote;
  std::string appFolder;
};

// Writes the live page of a form page beside it ("Quote.html" gives "Quote_live.html") and returns its path.
// pictureFolder: where the logo lies; empty for the newest logo of the app folder. A failure is a fatal report ("HTML
// file creation failed").
std::string CreateLivePage(const std::string& pagePath, const std::string& pictureFolder, const Enquiry& enquiry,
                           Reporter& reporter);

// Replaces every "|marker|", whatever its case, by the value as the input rule of its kind formats it, written in the
// text's character set.
void ReplaceFieldMarker(std::string& text, std::string_view marker, int kind, std::string_view value);

// The passes over a page's text, in the order in which they run: the calculator's markers come last, because the
// response form brings in more of them.
void FillSupplierMarkers(std::string& text, const Enquiry& enquiry);
void InsertResponseForm(std::string& text, const Enquiry& enquiry);
void FillCalculatorMarkers(std::string& text, const Enquiry& enquiry);

// The hidden inputs of the response form, a line end before each: the supplier's details, and the calculator's markers.
std::string BuildHiddenFields(const Enquiry& enquiry);

}  // namespace tarvolinex
