// Flat JSON objects, as the command line exchanges records with other programs.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tarvolinex {

// A number keeps its text, so that a decimal loses no digit on the way.
struct JsonNumber {
  std::string text;
};
using JsonValue = std::variant<std::string, JsonNumber, bool>;
using JsonObject = std::vector<std::pair<std::string, JsonValue>>;

// Members in the order of the text. Throws RuntimeError when the text is no JSON object, when a member is null, an
// array or an object, or when a name stands twice.
JsonObject ParseJsonObject(std::string_view text);

// One member a line, in order, ending with a line feed.
std::string FormatJsonObject(const JsonObject& object);

// A text as a JSON string in ASCII, quotes included.
std::string JsonAsciiText(std::string_view text);

}  // namespace tarvolinex
