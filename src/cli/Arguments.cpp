// The words behind a command.
#include <algorithm>

#include "cli/Commands.h"
#include "platform/text/Encoding.h"

namespace tarvolinex {

Arguments::Arguments(const std::vector<std::string>& arguments, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags, std::size_t mostWords) {
  const auto in = [](const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (in(valued, word)) {
      if (i + 1 == arguments.size()) throw UsageError{word + " needs a value"};
      options_.emplace_back(word, arguments[++i]);
    } else if (in(flags, word)) {
      options_.emplace_back(word, "");
    } else if (word.size() > 1 && word[0] == '-') {
      throw UsageError{"unknown option " + word};
    } else {
      words_.push_back(word);
    }
  }
  if (words_.size() > mostWords) throw UsageError{"unexpected " + words_.back()};
}

std::string Arguments::Value(const std::string& name, const std::string& otherwise) const {
  const auto values = Values(name);
  return values.empty() ? otherwise : values.back();
}

std::string Arguments::Text(const std::string& name) const {
  const std::string text = Value(name);
  if (DecodeText(text, "utf-8") != text) throw UsageError{name + " is no text in UTF-8"};
  return text;
}

std::vector<std::string> Arguments::Values(const std::string& name) const {
  std::vector<std::string> values;
  for (const auto& [option, value] : options_) {
    if (option == name) values.push_back(value);
  }
  return values;
}

std::optional<CalendarDay> Arguments::Day(const std::string& name) const {
  if (!Has(name)) return std::nullopt;
  const auto day = DayFromText(Value(name));
  if (!day) throw UsageError{name + " takes a day as YYYY-MM-DD, not \"" + Value(name) + "\""};
  return day;
}

bool Arguments::Has(const std::string& name) const {
  return !Values(name).empty();
}

}  // namespace tarvolinex
