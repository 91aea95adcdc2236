#include "core/RecordJson.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr const char* kHexDigits = "0123456789abcdef";

struct ToJson {
  JsonValue operator()(std::int16_t* value) const { return JsonNumber{std::to_string(*value)}; }
  JsonValue operator()(std::int32_t* value) const { return JsonNumber{std::to_string(*value)}; }
  JsonValue operator()(Colour* value) const { return JsonNumber{std::to_string(*value)}; }
  JsonValue operator()(float* value) const {
    // Without a point it would be read as a whole number, which has no negative zero.
    if (*value == 0 && std::signbit(*value)) return JsonNumber{"-0.0"};
    return JsonNumber{std::isfinite(*value) ? FormatSingle(*value) : "0"};
  }
  JsonValue operator()(Currency* value) const { return value->ToText(); }
  JsonValue operator()(bool* value) const { return *value; }
  JsonValue operator()(FixedText* value) const { return value->Trimmed(); }
  JsonValue operator()(std::span<char> bytes) const {
    std::string hex;
    for (const char byte : bytes) {
      hex += kHexDigits[(static_cast<unsigned char>(byte) >> 4) & 15];
      hex += kHexDigits[static_cast<unsigned char>(byte) & 15];
    }
    return hex;
  }
};

// Each returns false for a value that does not fit.
struct FromJson {
  const JsonValue& value;

  // The text of a number, given as a number or as a text.
  std::string NumberText() const {
    const auto* number = std::get_if<JsonNumber>(&value);
    const auto* text = std::get_if<std::string>(&value);
    return number ? number->text : text ? std::string(Trim(*text)) : std::string();
  }
  template <typename Number>
  bool Parse(Number* field) const {
    const std::string text = NumberText();
    Number parsed{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (text.empty() || end.ec != std::errc() || end.ptr != text.data() + text.size()) return false;
    *field = parsed;
    return true;
  }
  bool operator()(std::int16_t* field) const { return Parse(field); }
  bool operator()(std::int32_t* field) const { return Parse(field); }
  bool operator()(Colour* field) const { return Parse(field); }
  bool operator()(float* field) const { return Parse(field) && std::isfinite(*field); }
  bool operator()(Currency* field) const {
    std::string buffer;
    const std::string text = NumberText();
    const auto exact = ExactNumberText(text, buffer);  // an exponent too, without a detour by a double
    const auto amount = exact ? Currency::FromText(*exact) : std::nullopt;
    if (amount) *field = *amount;
    return amount.has_value();
  }
  bool operator()(bool* field) const {
    const std::string number = NumberText();
    const auto* truth = std::get_if<bool>(&value);
    if (!truth && number != "0" && number != "1" && number != "-1") return false;
    *field = truth ? *truth : number != "0";
    return true;
  }
  bool operator()(FixedText* field) const {
    const auto* text = std::get_if<std::string>(&value);
    if (text) *field = *text;
    return text != nullptr;
  }
  bool operator()(std::span<char> bytes) const {
    const auto* hex = std::get_if<std::string>(&value);
    if (!hex || hex->size() != bytes.size() * 2) return false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      unsigned byte = 0;
      const char* start = hex->data() + 2 * i;
      if (std::from_chars(start, start + 2, byte, 16).ptr != start + 2) return false;
      bytes[i] = static_cast<char>(byte);
    }
    return true;
  }
};

template <typename Record>
JsonObject Show(Record record) {
  JsonObject object;
  for (const auto& field : FieldsOf(record))
    object.emplace_back(field.name, std::visit(ToJson{}, field.member(record)));
  return object;
}

std::string Shown(const JsonValue& value) {
  if (const auto* number = std::get_if<JsonNumber>(&value)) return number->text;
  if (const auto* text = std::get_if<std::string>(&value)) return "\"" + *text + "\"";
  return std::get<bool>(value) ? "true" : "false";
}

template <typename Record>
void Change(Record& record, const JsonObject& changes) {
  Record changed = record;
  for (const auto& change : changes) {
    const std::string& name = change.first;
    const auto fields = FieldsOf(record);
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.name == name; });
    if (field == fields.end()) throw RuntimeError(kItemNotFound, "The record has no field \"" + name + "\"");
    if (!std::visit(FromJson{change.second}, field->member(changed))) {
      throw RuntimeError(kItemNotFound, "The field " + name + " cannot hold " + Shown(change.second));
    }
  }
  record = changed;
}

}  // namespace

JsonObject RecordToJson(const CalculatorPreferencesRecord& record) {
  return Show(record);
}
JsonObject RecordToJson(const SupplierCalcSettingsRecord& record) {
  return Show(record);
}
void ChangeRecord(CalculatorPreferencesRecord& record, const JsonObject& changes) {
  Change(record, changes);
}
void ChangeRecord(SupplierCalcSettingsRecord& record, const JsonObject& changes) {
  Change(record, changes);
}

}  // namespace tarvolinex
