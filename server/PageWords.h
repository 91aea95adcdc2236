// The words of the pages, in the languages of the calculator page.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tarvolinex::server {

inline constexpr std::size_t kLanguages = 5;
inline constexpr std::array<std::string_view, kLanguages> kLanguageNames = {"en", "de", "fr", "es", "it"};

struct PageWords {
  std::string_view forSupplier, open, openHow, install, installHow, facts;  // %1: name, size, date
  std::string_view unknown, unknownHow, expired, expiredHow, withdrawn, tooMany, tooManyHow;
  std::string_view version, isNewest, isNewer, newest, whereNewer, versionUnknown;
};

extern const std::array<PageWords, kLanguages> kPageWords;

}  // namespace tarvolinex::server
