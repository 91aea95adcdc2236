#include "platform/text/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

// Takes the parser's events, so that numbers arrive with their text.
class FlatObject : public nlohmann::json_sax<nlohmann::json> {
 public:
  JsonObject members;

  bool null() override { throw Refused("is null"); }
  bool boolean(bool value) override { return Take(value); }
  bool number_integer(number_integer_t value) override { return Take(JsonNumber{std::to_string(value)}); }
  bool number_unsigned(number_unsigned_t value) override { return Take(JsonNumber{std::to_string(value)}); }
  bool number_float(number_float_t, const string_t& text) override { return Take(JsonNumber{text}); }
  bool string(string_t& value) override { return Take(value); }
  bool binary(binary_t&) override { throw Refused("is binary"); }
  bool start_object(std::size_t) override {
    if (depth_++ > 0) throw Refused("is an object");
    return true;
  }
  bool key(string_t& name) override {
    name_ = name;
    const auto same = [&](const auto& member) { return member.first == name_; };
    if (std::any_of(members.begin(), members.end(), same)) throw Refused("stands twice");
    return true;
  }
  bool end_object() override { return true; }
  bool start_array(std::size_t) override { throw Refused("is an array"); }
  bool end_array() override { return true; }
  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override {
    throw RuntimeError(kBadFileName, "Not JSON at byte " + std::to_string(position) + ": " + error.what());
  }

 private:
  RuntimeError Refused(const std::string& why) const {
    return {kBadFileName, depth_ == 0 ? "JSON: the text is not an object" : "JSON: \"" + name_ + "\" " + why};
  }
  bool Take(JsonValue value) {
    if (depth_ == 0) throw Refused("");
    members.emplace_back(name_, std::move(value));
    return true;
  }
  int depth_ = 0;
  std::string name_;
};

}  // namespace

JsonObject ParseJsonObject(std::string_view text) {
  FlatObject object;
  nlohmann::json::sax_parse(text, &object);
  return std::move(object.members);
}

std::string FormatJsonObject(const JsonObject& object) {
  std::string out = "{";
  for (const auto& [name, value] : object) {
    out += out.size() > 1 ? ",\n  " : "\n  ";
    out += nlohmann::json(name).dump() + ": ";
    if (const auto* text = std::get_if<std::string>(&value)) {
      out += nlohmann::json(*text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    } else if (const auto* number = std::get_if<JsonNumber>(&value)) {
      out += number->text;
    } else {
      out += std::get<bool>(value) ? "true" : "false";
    }
  }
  return out + "\n}\n";
}

std::string JsonAsciiText(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

}  // namespace tarvolinex
