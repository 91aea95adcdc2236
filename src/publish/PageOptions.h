// What the organisation has chosen for the calculator page beside its preferences.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvolinex {

struct PageOptions {
  std::string language;        // the code of one of the page's languages; empty = as the reader's browser
  bool totals = true;          // whether the page says what is paid in all and what the lease costs
  std::int32_t validDays = 0;  // how long a quote is valid; 0 = the page does not say
  std::int32_t ratesDays = 0;  // after so many the page says that its rates may have changed; 0 = never
  // What the page's words mean; empty = as the page explains them itself.
  std::string tax, deposit, advance, residual, maintenance;
  bool operator==(const PageOptions&) const = default;
};

// The languages that the page has its own words in.
struct PageLanguage {
  const char *code, *name;  // the name in the language itself
};
std::span<const PageLanguage> PageLanguages();

// The words that the page explains, by their names in its data.
struct PageWord {
  const char* name;
  std::string PageOptions::*meaning;
};
std::span<const PageWord> PageWords();

inline constexpr int kMostDays = 3650;
inline constexpr int kLongestExplanation = 250;  // characters; an INI file's values hold that many

// As texts under the keys of General.INI; line breaks and other control characters in the explanations become blanks.
std::vector<std::pair<std::string, std::string>> TextsOf(const PageOptions& options);
// And back: what is missing or is no such value has its default.
PageOptions PageOptionsOf(const std::function<std::string(std::string_view key)>& textOf);

// Of the app folder's General.INI. Throws RuntimeError when the file cannot be read.
PageOptions ReadPageOptions(const std::string& appFolder);

// All of them or none. Throws RuntimeError.
void WritePageOptions(const std::string& appFolder, const PageOptions& options);

}  // namespace tarvolinex
