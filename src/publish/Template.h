// The calculator's two pages, made of one template with the organisation's branding.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/Folders.h"
#include "core/Records.h"
#include "core/Reports.h"

namespace tarvolinex {

// Whose pages they are.
struct Branding {
  Folders folders;
  CalculatorPreferencesRecord prefs;
  std::string customerReference;  // a whole number, as text
};

// The files in the data folder's "logo" folder, without folder; "" for none. Of several the first in the order of
// names.
std::string LogoFileName(const std::string& dataFolder);
std::string BackgroundFileName(const std::string& dataFolder);

// "#" and six hexadecimal digits: red, green, blue.
std::string ColourToHtml(Colour colour);

// The template's text with every token between vertical bars replaced, in this order, each over the whole text:
// ColourBackGround, CALCULATORNAME, LEASEORGEMAIL (case-blind), PICBACKGROUND, HEADERPIC (as written), CLASSID,
// CUSTREF, ASPTAGS (case-blind). Values go in as they stand: the template takes care where they can do no harm.
std::string FillPlaceholders(std::string_view text, const Branding& branding, bool isTestPage);

// Writes output base + ".Html" and output base + test suffix + ".Html", each whole or not at all; `before`, which may
// throw RuntimeError, learns of both pages' texts (without the line end that WritePage adds) before either is written.
// Returns false after a report ("HTML creation failed", not fatal) when the template cannot be read or holds no text,
// or a page cannot be written.
bool FillTemplate(std::string_view templatePath, const std::string& outputBase, const Branding& branding,
                  const std::string& testSuffix, Reporter& reporter,
                  const std::function<void(const std::string& page, const std::string& testPage)>& before = {});

// Both pages of the app folder from its template; without a template they are left as they are. "Pages.INI" is told
// before and after, so that a making that is cut off anywhere is found by PagesAreDue.
// REQUIRES: no other program works in the app folder.
void MakePages(const Branding& branding, Reporter& reporter);

// Whether they are to be made anew: their making was cut off, or what they are made of has changed since (the template,
// the preferences, the pictures of the data folder, the customer reference, the program's version). Never for pages
// that the program has not made, nor for one that is missing though both were made.
bool PagesAreDue(const Branding& branding);

// Makes them when they are due. Returns false when that failed and one page is older than the other.
bool RefreshPages(const Branding& branding, Reporter& reporter);

}  // namespace tarvolinex
