#include "publish/CalculatorData.h"

#include "platform/text/Clock.h"
#include "platform/text/Encoding.h"
#include "platform/text/Json.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

std::string Member(const char* name, std::string_view text) {
  return "\"" + std::string(name) + "\":" + JsonAsciiText(text);
}

void AddMember(std::string& members, const std::string& member) {
  members += (members.empty() ? "" : ",") + member;
}

// With the comma behind it; empty when all options have their defaults.
std::string OptionsMember(const PageOptions& options) {
  std::string words, all;
  for (const PageWord& word : PageWords()) {
    if (!(options.*word.meaning).empty()) AddMember(words, Member(word.name, options.*word.meaning));
  }
  if (!options.language.empty()) AddMember(all, Member("language", options.language));
  if (!options.totals) AddMember(all, "\"totals\":false");
  if (options.validDays > 0) AddMember(all, "\"validDays\":" + std::to_string(options.validDays));
  if (options.ratesDays > 0) AddMember(all, "\"ratesDays\":" + std::to_string(options.ratesDays));
  if (!words.empty()) AddMember(all, "\"words\":{" + words + "}");
  return all.empty() ? all : "\"options\":{" + all + "},";
}

}  // namespace

std::string CalculatorData(std::chrono::system_clock::time_point made, const PageOptions& options,
                           std::string_view general, std::string_view supplier,
                           const std::vector<PublishedForm>& forms) {
  std::string list;
  for (const PublishedForm& form : forms) {
    AddMember(list, "{" + Member("name", form.name) + "," + Member("file", form.file) + "," +
                        Member("text", form.text) + "}");
  }
  const std::string data = "window.calcData={" + Member("made", IsoDate(made)) + "," + OptionsMember(options) +
                           Member("general", Base64(general)) + "," + Member("supplier", Base64(supplier)) +
                           ",\"forms\":[" + list + "]};\r\n";
  // The only character with which a text could leave the script element that holds it.
  return ReplaceAll(data, "<", "\\u003c");
}

}  // namespace tarvolinex
