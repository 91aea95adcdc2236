#include "platform/data/Values.h"

#include <array>
#include <charconv>

#include "platform/text/Text.h"

namespace tarvolinex {

std::string ValueText(const Value& value) {
  struct Writer {
    std::string operator()(Null) const { return {}; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(Currency amount) const {
      std::string text = amount.ToText();
      text.erase(text.find_last_not_of('0') + 1);
      if (text.back() == '.') text.pop_back();
      return text;
    }
    std::string operator()(float number) const { return FormatSingle(number); }
    std::string operator()(double number) const {
      std::array<char, 400> text;
      return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr};
    }
    std::string operator()(bool truth) const { return truth ? "True" : "False"; }
    std::string operator()(const std::string& text) const { return text; }
  };
  return std::visit(Writer{}, value);
}

double ValueNumber(const Value& value) {
  struct Reader {
    double operator()(Null) const { return 0; }
    double operator()(std::int64_t number) const { return static_cast<double>(number); }
    double operator()(Currency amount) const { return amount.ToDouble(); }
    double operator()(float number) const { return static_cast<double>(number); }
    double operator()(double number) const { return number; }
    double operator()(bool truth) const { return truth ? -1 : 0; }
    double operator()(const std::string& text) const { return LeadingNumber(text); }
  };
  return std::visit(Reader{}, value);
}

bool ValueTruth(const Value& value) {
  return ValueNumber(value) != 0;
}

}  // namespace tarvolinex
