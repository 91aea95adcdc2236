// The calculator's two pages, made of one template with the organisation's branding.
#pragma once

#include <string>
#include <string_view>

#include "core/Records.h"

namespace tarvolinex {

// The files in the data folder's "logo" folder, without folder; "" for none. Of several the first in the order of
// names.
std::string LogoFileName();
std::string BackgroundFileName();

// "#" and six hexadecimal digits: red, green, blue.
std::string ColourToHtml(Colour colour);

// The template's text with every token between vertical bars replaced, in this order, each over the whole text:
// ColourBackGround, CALCULATORNAME, LEASEORGEMAIL (case-blind), PICBACKGROUND, HEADERPIC (as written), CLASSID,
// CUSTREF, ASPTAGS (case-blind). Values go in as they stand: the template takes care where they can do no harm.
std::string FillPlaceholders(std::string_view text, const CalculatorPreferencesRecord& prefs, bool isTestPage);

// Writes output base + ".Html" and output base + test suffix + ".Html", each whole or not at all. Returns false after a
// report ("HTML creation failed", not fatal) when the template cannot be read or holds no text, or a page cannot be
// written.
bool FillTemplate(std::string_view templatePath, const std::string& outputBase,
                  const CalculatorPreferencesRecord& prefs, const std::string& testSuffix);

// Both pages of the app folder from its template; without a template they are left as they are.
void MakePages(const CalculatorPreferencesRecord& prefs);

// The same when what the pages name has changed since they were made: the pictures of the data folder, the customer
// reference, the program's version. Pages that are missing or that the program has not made are left as they are.
void RefreshPages(const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
