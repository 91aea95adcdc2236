#include "ui/main/BoundFields.h"

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "platform/text/Text.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr const char* kSupplierSet = "SUPPLIER";

// Where the row was not found stands what the field shows instead: nothing, or the "0.00" of whole numbers and amounts.
std::string LiteralOf(const Row& row, const std::string& column, const std::string& shown) {
  const Row::Field* field = row.Find(column);
  if (!field) return "''";
  const bool number = field->type != ColumnType::Text && field->type != ColumnType::Date;
  const std::string text = row.Found() ? EscapeQuotes(ValueText(field->value)) : shown;
  return number && text.empty() ? "NULL" : "'" + text + "'";
}

std::string TextOf(const Control& control) {
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->Value() ? "YES" : "NO";
  const auto* box = dynamic_cast<const TextBox*>(&control);
  return box ? EscapeQuotes(Trim(box->Text())) : std::string();
}

bool IsSupplierField(const Control& control) {
  return !control.Tag().empty() && GetTagValue(control.Tag(), "RS") == kSupplierSet;
}

bool IsCheckBox(const Control& control) {
  return dynamic_cast<const CheckBox*>(&control) != nullptr;
}

void LoadBox(TextBox& box, const Row::Field& field, const Value& value) {
  constexpr int kWholeDigits = 10, kAmountDigits = 12;
  if (IsNoNumber(value) && field.type != ColumnType::Text) return box.SetText(ValueText(value));
  switch (field.type) {
    case ColumnType::WholeNumber:
      box.SetMaxLength(kWholeDigits);
      box.Load(FormatNumberInput(kInputPercent, ValueText(NullToDefault(value, std::int64_t{0}))));
      break;
    case ColumnType::Currency:
      box.SetMaxLength(kAmountDigits);
      box.Load(FormatNumberInput(kInputAmount, ValueText(NullToDefault(value, Currency()))));
      break;
    case ColumnType::Single:
      // A rate keeps every digit that it has: storing the field again must not round it.
      box.SetMaxLength(kWholeDigits);
      box.Load(RateFieldText(value));
      break;
    default:
      box.SetMaxLength(field.size);
      box.Load(ValueText(value));
  }
}

}  // namespace

std::string RateFieldText(const Value& value) {
  if (IsNull(value)) return {};
  const std::string exact = ValueText(value);
  if (IsNoNumber(value)) return exact;
  const std::string rounded = FormatNumberInput(kInputPercent, exact);
  return static_cast<float>(LeadingNumber(rounded)) == static_cast<float>(ValueNumber(value)) ? rounded : exact;
}

void BindFieldToControl(const Row& row, Control& control, std::string_view recordSetName, bool clearOnly) {
  if (control.Tag().empty() || GetTagValue(control.Tag(), "RS") != recordSetName) return;
  const Row::Field* field = row.Find(GetTagValue(control.Tag(), "FIELDNAME"));
  if (!field) return;
  const Value value = clearOnly ? Value(Null{}) : field->value;
  if (auto* check = dynamic_cast<CheckBox*>(&control)) check->SetValue(ValueTruth(value));
  if (auto* box = dynamic_cast<TextBox*>(&control)) LoadBox(*box, *field, value);
}

void SupplierFields::Bind(const Row& supplier, bool clearOnly) {
  for (Control* control : window_.Controls()) BindFieldToControl(supplier, *control, kSupplierSet, clearOnly);
}

void SupplierFields::RememberLoadedFields(const Row& supplier) {
  loaded_.clear();
  for (const Control* control : window_.Controls()) {
    if (!IsSupplierField(*control)) continue;
    const std::string column = GetTagValue(control->Tag(), "FIELDNAME"), text = TextOf(*control);
    loaded_[column] = {text, IsCheckBox(*control) ? text : LiteralOf(supplier, column, text)};
  }
}

SupplierFieldLists SupplierFields::CollectSupplierFields(bool asSupplier) const {
  SupplierFieldLists lists;
  for (const Control* control : window_.Controls()) {
    if (!IsSupplierField(*control)) continue;
    const std::string column = GetTagValue(control->Tag(), "FIELDNAME");
    const std::string noDefault = GetTagValue(control->Tag(), "NODEF");
    const bool check = IsCheckBox(*control);
    if (!asSupplier && noDefault != (check ? "0" : "")) continue;
    const std::string text = TextOf(*control);
    const auto loaded = loaded_.find(column);
    const bool edited = loaded == loaded_.end() || loaded->second.text != text;
    const std::string literal = !edited ? loaded->second.literal : check ? text : "'" + text + "'";
    const std::string value = literal + (check ? "," : " ,");
    if (edited) lists.assignments += column + (check ? " =" : " = ") + value;
    lists.columns += column + ",";
    lists.values += value;
  }
  return lists;
}

}  // namespace tarvolinex
