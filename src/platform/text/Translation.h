// The user's language. Every text stands in English where it is used; po/tarvolinex.pot lists them all in one place,
// and a translation is one file beside it. A text without a translation is shown in English.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace tarvolinex {

// The text in the user's language. The lists of translators are made from the calls: pass a literal, never a text put
// together ("%1" stands for what goes into it). What the organisation writes itself is never passed.
std::string Tr(std::string_view english);

// The same, with "%1" to "%9" replaced by the values: what a value holds is not searched again.
std::string Tr(std::string_view english, std::initializer_list<std::string_view> values);

// Marks a text that stands in a table for the lists of translators; who shows it passes it to Tr.
constexpr const char* Marked(const char* english) {
  return english;
}

// Whether there is a translation for the language that is used.
bool HasTranslations();

// Takes the language of the environment (LANGUAGE, LC_ALL, LC_MESSAGES, LANG) and the translations that lie in the
// folder as "de/LC_MESSAGES/tarvolinex.mo". Until it is called texts are English. Numbers and dates are not touched.
void UseTranslations(std::string_view folder);

}  // namespace tarvolinex
