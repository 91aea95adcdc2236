#include "platform/data/ConnectionText.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kFile = "dbq";

// The value in braces that the text begins with, and takes it away.
std::string TakeBraced(std::string_view& text) {
  std::string value;
  text.remove_prefix(1);
  while (!text.empty()) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == '}' && !text.starts_with('}')) break;
    if (c == '}') text.remove_prefix(1);
    value += c;
  }
  return value;
}

}  // namespace

std::string ValueIn(std::string_view text, std::string_view key) {
  while (!text.empty()) {
    const auto equals = text.find('=');
    if (equals == std::string_view::npos) return {};
    const std::string_view name = Trim(text.substr(0, equals));
    text.remove_prefix(equals + 1);
    std::string value;
    if (EqualNoCase(name, kFile)) {
      value = text;
      text = {};
    } else if (text.starts_with('{')) {
      value = TakeBraced(text);
    } else {
      value = text.substr(0, text.find(';'));
    }
    if (EqualNoCase(name, key)) return value;
    const auto end = text.find(';');
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return {};
}

std::string KeyAndValue(std::string_view key, std::string_view value) {
  return std::string(key) + "={" + ReplaceAll(value, "}", "}}") + "};";
}

bool IsPostgres(std::string_view connectionString) {
  return EqualNoCase(Trim(ValueIn(connectionString, "driver")), "PostgreSQL");
}

std::string FileIn(std::string_view connectionString) {
  return ValueIn(connectionString, kFile);
}

std::string DatabaseName(std::string_view connectionString) {
  if (!IsPostgres(connectionString)) return FileIn(connectionString);
  const std::string server = ValueIn(connectionString, "server");
  return Tr("%1 on %2", {ValueIn(connectionString, "database"), server.empty() ? Tr("this machine") : server});
}

}  // namespace tarvolinex
