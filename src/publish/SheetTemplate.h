// A page of the organisation's own words with markers in it: "<ORGNAME>" stands for a value, "<SHOW DEPOSIT>...</SHOW>"
// is left out when there is none ("<SHOW NOT DEPOSIT>" the reverse), "<EACH LINE>...</EACH>" stands there once for
// each.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

struct SheetPart {
  enum class Kind { Words, Marker, Show, Each };
  Kind kind = Kind::Words;
  std::string text;              // of the page, or the marker's name
  bool negated = false;          // of Show
  std::vector<SheetPart> parts;  // within Show and Each
};

// What a page may ask for.
struct SheetMarkers {
  struct Name {
    const char* name;
    const char* within = "";  // the repetition outside of which it means nothing; empty = it may stand anywhere
  };
  std::span<const Name> values, shown, repeated;
};

// Comments ("<!-- -->") are left out. Everything in angle brackets that is no element of HTML has to be a marker,
// written in capitals.
// fileName: whose text it is. Throws RuntimeError naming the file, the line and the marker that is not known here, not
// closed, or closed and not open.
std::vector<SheetPart> ParseSheet(std::string_view text, const SheetMarkers& markers, std::string_view fileName);

}  // namespace tarvolinex
