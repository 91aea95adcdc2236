// One row of a table as values, with what its columns are.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Database.h"

namespace tarvolinex {

class Row {
 public:
  struct Field {
    std::string column;
    ColumnType type = ColumnType::Text;
    int size = 0;  // characters of a text column, bytes of the others
    Value value;
  };

  Row() = default;
  // Of the row that the set stands on; at its end all values are Null, and the row is not Found. Throws RuntimeError.
  explicit Row(const Recordset& records);

  bool Found() const { return found_; }
  const std::vector<Field>& Fields() const { return fields_; }
  // nullptr when there is no such column. Names are case-blind.
  const Field* Find(std::string_view column) const;
  // Null for a column that the table lacks.
  const Value& At(std::string_view column) const;
  // As a text without blanks around it.
  std::string Text(std::string_view column) const;
  int Number(std::string_view column) const;
  // The row as it would be in a table that lacks the column.
  Row Without(std::string_view column) const;

 private:
  std::vector<Field> fields_;
  bool found_ = false;
};

}  // namespace tarvolinex
