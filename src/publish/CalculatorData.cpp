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

}  // namespace

std::string CalculatorData(std::chrono::system_clock::time_point made, std::string_view general,
                           std::string_view supplier, const std::vector<PublishedForm>& forms) {
  std::string list;
  for (const PublishedForm& form : forms) {
    list += std::string(list.empty() ? "" : ",") + "{" + Member("name", form.name) + "," + Member("file", form.file) +
            "," + Member("text", form.text) + "}";
  }
  const std::string data = "window.calcData={" + Member("made", IsoDate(made)) + "," +
                           Member("general", Base64(general)) + "," + Member("supplier", Base64(supplier)) +
                           ",\"forms\":[" + list + "]};\r\n";
  // The only character with which a text could leave the script element that holds it.
  return ReplaceAll(data, "<", "\\u003c");
}

}  // namespace tarvolinex
