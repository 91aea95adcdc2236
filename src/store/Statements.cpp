#include "store/Statements.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace tarvolinex {

std::string FillStatement(std::string_view statement, const std::vector<Filling>& fillings) {
  std::string filled;
  while (!statement.empty()) {
    const auto open = std::min(statement.find('<'), statement.size());
    filled += statement.substr(0, open);
    statement.remove_prefix(open);
    const auto filling = std::find_if(fillings.begin(), fillings.end(), [&](const Filling& f) {
      return EqualNoCase(statement.substr(0, f.placeholder.size()), f.placeholder);
    });
    if (filling != fillings.end()) {
      filled += ValueText(filling->value);
      statement.remove_prefix(filling->placeholder.size());
    } else if (!statement.empty()) {
      filled += statement.front();
      statement.remove_prefix(1);
    }
  }
  return filled;
}

std::string FillStatement(std::string_view statement, std::string_view placeholder, const Value& value) {
  return FillStatement(statement, {{placeholder, value}});
}

std::string FillStatement(std::string_view statement, std::string_view placeholder, int value) {
  return FillStatement(statement, placeholder, Value(std::int64_t{value}));
}

std::string WithoutLast(const std::string& list) {
  return list.substr(0, list.empty() ? 0 : list.size() - 1);
}

Value NullToDefault(const Value& value, const Value& fallback) {
  return IsNull(value) ? fallback : value;
}

std::string EscapeQuotes(std::string_view text) {
  return ReplaceAll(text, "'", "`");
}

std::string DoubleQuotes(std::string_view text) {
  return ReplaceAll(text, "'", "''");
}

}  // namespace tarvolinex
