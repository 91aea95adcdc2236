#include "platform/text/Translation.h"

#include <libintl.h>

#include <clocale>

#include "platform/files/Files.h"

namespace tarvolinex {

namespace {

constexpr const char* kDomain = "tarvolinex";

}  // namespace

std::string Tr(std::string_view english) {
  // The empty text is where a catalogue keeps what it says of itself.
  return english.empty() ? std::string() : dgettext(kDomain, std::string(english).c_str());
}

std::string Tr(std::string_view english, std::initializer_list<std::string_view> values) {
  const std::string pattern = Tr(english);
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const auto which = i + 1 < pattern.size() ? static_cast<std::size_t>(pattern[i + 1] - '1') : values.size();
    if (pattern[i] != '%' || which >= values.size()) {
      text += pattern[i];
      continue;
    }
    text += values.begin()[which];
    ++i;
  }
  return text;
}

bool HasTranslations() {
  return *dgettext(kDomain, "") != '\0';
}

void UseTranslations(std::string_view folder) {
  std::setlocale(LC_MESSAGES, "");
  bindtextdomain(kDomain, NativePath(folder).c_str());
  bind_textdomain_codeset(kDomain, "UTF-8");
}

}  // namespace tarvolinex
