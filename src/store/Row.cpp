#include "store/Row.h"

#include "platform/text/Text.h"

namespace tarvolinex {

Row::Row(const Recordset& records) : found_(!records.EndOfFile()) {
  for (int i = 0; i < records.ColumnCount(); ++i) {
    const std::string& name = records.ColumnName(i);
    fields_.push_back(
        {name, records.TypeOf(name), records.DefinedSize(name), found_ ? records.Field(i) : Value(Null{})});
  }
}

const Row::Field* Row::Find(std::string_view column) const {
  for (const Field& field : fields_) {
    if (EqualNoCase(field.column, column)) return &field;
  }
  return nullptr;
}

Value Row::At(std::string_view column) const {
  const Field* field = Find(column);
  return field ? field->value : Value(Null{});
}

std::string Row::Text(std::string_view column) const {
  return std::string(Trim(ValueText(At(column))));
}

int Row::Number(std::string_view column) const {
  return static_cast<int>(ValueNumber(At(column)));
}

}  // namespace tarvolinex
