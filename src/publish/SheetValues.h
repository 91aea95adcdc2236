// What the markers of a quote sheet stand for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calc/Schedule.h"
#include "publish/QuoteSheet.h"
#include "publish/SheetTemplate.h"

namespace tarvolinex {

struct SheetVariant {
  int number = 1;
  QuoteRecord quote;
  Schedule schedule;
};

// Where a marker stands: on the sheet, in a table of some variants, in one of them, in a line of its schedule.
struct SheetPlace {
  const SheetContents& contents;
  const std::vector<SheetVariant>& all;
  std::vector<const SheetVariant*> group;  // REQUIRES: not empty
  const ScheduleLine* line = nullptr;      // nullptr outside of a schedule
};

// The values, sections and repetitions ("TABLE", "VARIANT", "LINE") that a sheet may ask for.
SheetMarkers KnownSheetMarkers();
// As HTML. REQUIRES: a name of KnownSheetMarkers.
std::string SheetValue(std::string_view name, const SheetPlace& place);
bool SheetShows(std::string_view name, const SheetPlace& place);

// Text as HTML that reads so.
std::string AsHtml(std::string_view text);
// "£1,234.50"; a symbol that ends with a letter is set apart.
std::string SheetAmount(const CalculatorPreferencesRecord& prefs, Currency amount, int decimals = 2);

// Stand for the numbers of the page and of the last page, which are known when the sheet is painted.
inline constexpr const char *kPageMark = "\x01", *kPagesMark = "\x02";
// A light one of the same hue, to write on. RRGGBB.
std::uint32_t TintOf(std::uint32_t colour);
// "#RRGGBB".
std::string ColourCode(std::uint32_t colour);

}  // namespace tarvolinex
