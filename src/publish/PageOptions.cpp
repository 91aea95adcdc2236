#include "publish/PageOptions.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "core/Settings.h"
#include "platform/files/ProfileFile.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr const char *kFile = "General", *kSection = "CALCULATOR";
constexpr const char *kLanguage = "LANGUAGE", *kTotals = "TOTALS", *kValidDays = "VALIDDAYS", *kRatesDays = "RATESDAYS";

constexpr PageLanguage kLanguages[] = {
    {"en", "English"}, {"de", "Deutsch"}, {"fr", "Français"}, {"es", "Español"}, {"it", "Italiano"},
};

constexpr PageWord kWords[] = {
    {"tax", &PageOptions::tax},
    {"deposit", &PageOptions::deposit},
    {"advance", &PageOptions::advance},
    {"residual", &PageOptions::residual},
    {"maintenance", &PageOptions::maintenance},
};

std::string KeyOf(const PageWord& word) {
  return "WORD" + UpperCase(word.name);
}

bool IsLanguage(const std::string& text) {
  return std::any_of(std::begin(kLanguages), std::end(kLanguages), [&](const auto& each) { return text == each.code; });
}

std::int32_t DaysOf(const std::string& text) {
  std::int32_t days = 0;
  std::from_chars(text.data(), text.data() + text.size(), days);
  return std::clamp(days, 0, kMostDays);
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return std::string(Trim(FirstCharacters(Trim(text), kLongestExplanation)));
}

}  // namespace

std::span<const PageLanguage> PageLanguages() {
  return kLanguages;
}

std::span<const PageWord> PageWords() {
  return kWords;
}

std::vector<ProfileEntry> TextsOf(const PageOptions& options) {
  std::vector<ProfileEntry> entries = {{kLanguage, options.language},
                                       {kTotals, options.totals ? "1" : "0"},
                                       {kValidDays, std::to_string(options.validDays)},
                                       {kRatesDays, std::to_string(options.ratesDays)}};
  for (const PageWord& word : kWords) entries.emplace_back(KeyOf(word), OneLine(options.*word.meaning));
  return entries;
}

PageOptions PageOptionsOf(const std::function<std::string(std::string_view key)>& textOf) {
  PageOptions options;
  const std::string language = FoldCase(textOf(kLanguage));
  if (IsLanguage(language)) options.language = language;
  options.totals = textOf(kTotals) != "0";
  options.validDays = DaysOf(textOf(kValidDays));
  options.ratesDays = DaysOf(textOf(kRatesDays));
  for (const PageWord& word : kWords) options.*word.meaning = OneLine(textOf(KeyOf(word)));
  return options;
}

PageOptions ReadPageOptions(const std::string& appFolder) {
  return PageOptionsOf([&](std::string_view key) { return ReadIni(appFolder, kFile, kSection, key, ""); });
}

void WritePageOptions(const std::string& appFolder, const PageOptions& options) {
  WriteProfileStrings(appFolder + "\\General.INI", kSection, TextsOf(options));
}

}  // namespace tarvolinex
