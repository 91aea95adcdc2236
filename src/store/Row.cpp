#include "store/Row.h"

#include "platform/text/Text.h"

namespace tarvolinex {

Row::Row(const Recordset& records) : found_(!records.EndOfFile()) {
  fields_.reserve(static_cast<std::size_t>(records.ColumnCount()));
  for (int i = 0; i < records.ColumnCount(); ++i) {
    fields_.push_back(
        {records.ColumnName(i), records.TypeOf(i), records.DefinedSize(i), found_ ? records.Field(i) : Value(Null{})});
  }
}

const Row::Field* Row::Find(std::string_view column) const {
  for (const Field& field : fields_) {
    if (EqualNoCase(field.column, column)) return &field;
  }
  return nullptr;
}

const Value& Row::At(std::string_view column) const {
  static const Value null = Null{};
  const Field* field = Find(column);
  return field ? field->value : null;
}

std::string Row::Text(std::string_view column) const {
  return std::string(Trim(ValueText(At(column))));
}

int Row::Number(std::string_view column) const {
  return static_cast<int>(ValueNumber(At(column)));
}

Row Row::Without(std::string_view column) const {
  Row less = *this;
  std::erase_if(less.fields_, [&](const Field& field) { return EqualNoCase(field.column, column); });
  return less;
}

}  // namespace tarvolinex
