#include "platform/data/StatementWords.h"

#include "platform/text/Text.h"

namespace tarvolinex {

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
         static_cast<unsigned char>(c) >= 0x80;
}

// End of the quoted or bracketed text that starts at `at`.
std::size_t EndOfQuoted(std::string_view text, std::size_t at) {
  const char end = text[at] == '[' ? ']' : text[at];
  const std::size_t close = text.find(end, at + 1);
  return close == std::string_view::npos ? text.size() : close + 1;
}

bool StatementPart::Is(std::string_view word) const {
  return EqualNoCase(text, word);
}

std::vector<StatementPart> PartsOf(std::string_view statement) {
  using Kind = StatementPart::Kind;
  std::vector<StatementPart> parts;
  for (std::size_t at = 0; at < statement.size();) {
    const char c = statement[at];
    std::size_t end = at + 1;
    Kind kind = Kind::Other;
    if (c == '\'' || c == '"' || c == '[' || c == '`') {
      kind = Kind::Quoted;
      end = EndOfQuoted(statement, at);
    } else if (IsWordCharacter(c)) {
      kind = Kind::Word;
      while (end < statement.size() && IsWordCharacter(statement[end])) ++end;
    }
    parts.push_back({kind, statement.substr(at, end - at)});
    at = end;
  }
  return parts;
}

}  // namespace tarvolinex
