// What a database holds in a column, and how columns and tables are told.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/text/Currency.h"

namespace tarvolinex {

enum class ColumnType { WholeNumber, Currency, Single, Double, YesNo, Text, Date };

struct Null {
  bool operator==(const Null&) const = default;
};
// Text and dates arrive as texts, and so does a text that another program has stored in a column of numbers.
using Value = std::variant<Null, std::int64_t, Currency, float, double, bool, std::string>;

inline bool IsNull(const Value& value) {
  return std::holds_alternative<Null>(value);
}
// As text for a person or a statement: Null is empty, Currency and numbers are plain decimals, Yes/No "True"/"False".
std::string ValueText(const Value& value);
// As a number: Null, and text that is none, are 0; Yes/No -1 or 0.
double ValueNumber(const Value& value);
bool ValueTruth(const Value& value);

// A column as a record set reports it.
struct Column {
  std::string name;
  ColumnType type = ColumnType::Text;
  int size = 0;  // characters of a text column, bytes of the others
};

// What a column of a new table is for. A column of texts takes `size` characters, without one any number.
enum class ColumnKind { Id, WholeNumber, SmallNumber, Currency, Single, YesNo, Text, OnceText, Day, Moment };

// Id is given by the database and never twice; an OnceText differs from that of every other row. A YesNo is No where
// nothing is said.
struct ColumnDesign {
  std::string name;
  ColumnKind kind = ColumnKind::Text;
  int size = 0;
};
struct TableDesign {
  std::string name;
  std::vector<ColumnDesign> columns;
  std::string indexed = {};  // a column by which rows are looked for; empty = none
};

}  // namespace tarvolinex
