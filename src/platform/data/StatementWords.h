// The parts of a statement.
#pragma once

#include <string_view>
#include <vector>

namespace tarvolinex {

// Of a name or a number; a point joins table and column.
bool IsWordCharacter(char c);

// End of the quoted or bracketed text that starts at `at`.
std::size_t EndOfQuoted(std::string_view text, std::size_t at);

// A text in quotes or brackets with them, a word, or one other character.
struct StatementPart {
  enum class Kind { Quoted, Word, Other };
  Kind kind;
  std::string_view text;
  bool Is(std::string_view word) const;  // case-blind
};

// All of them in their order; the views are into the statement.
std::vector<StatementPart> PartsOf(std::string_view statement);

}  // namespace tarvolinex
