// The quote sheet: what a customer is offered, on paper, in the organisation's words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Folders.h"
#include "core/Quote.h"
#include "core/Records.h"
#include "platform/files/RichDocument.h"
#include "platform/text/Clock.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

struct SheetContents {
  CalculatorPreferencesRecord prefs;    // the organisation, its words, currency and tax
  SupplierCalcSettingsRecord supplier;  // who delivers
  std::string customer, equipment, reference;
  CalendarDay date = {}, start = {};
  std::optional<CalendarDay> validUntil;
  // Priced, side by side. REQUIRES: at least one, at most kMostVariants.
  std::vector<QuoteRecord> variants;
  bool schedule = false;
  bool internal = false;  // yield, commission, interest and balance; without it none of them gets onto the sheet
  std::string logo;       // path of its picture; empty = none
};

// More than any customer compares.
inline constexpr std::size_t kMostVariants = 100;

// The app folder's file that says what a sheet reads.
inline constexpr const char* kSheetFile = "QuoteSheet.html";

// The sheet as a document. Amounts have the currency symbol and thousands separators and are those of the window, to
// the penny; an amount of 0 is a dash.
// text: of the sheet's file, as UTF-8; fileName: its name, for reports.
// Throws RuntimeError for a marker that is not known, a logo that cannot be read, or a total that does not fit.
RichDocument FillSheet(std::string_view text, std::string_view fileName, const SheetContents& contents);

// The same with the app folder's file. Throws RuntimeError also when that cannot be read.
RichDocument FillSheet(const Folders& folders, const SheetContents& contents);

// What the message says that brings the sheet: the file's <meta name="description">. Throws as FillSheet.
std::string SheetMessage(const Folders& folders, const SheetContents& contents);

// What the sheet says of all that an organisation sets: its records, and the logo of the data folder.
SheetContents SheetOf(const Folders& folders, const CalculatorPreferencesRecord& prefs,
                      const SupplierCalcSettingsRecord& supplier);

// The sheet of a kept quote, as it was then; its number is the reference of one that has none.
SheetContents SheetOf(const Folders& folders, const KeptQuote& quote);

// Which of the organisation's colours can be read on white paper: the border's, the caption's, those of the calculator;
// when none can, a dark blue. RRGGBB.
std::uint32_t BrandColour(const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
