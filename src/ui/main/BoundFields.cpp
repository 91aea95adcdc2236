#include "ui/main/BoundFields.h"

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "platform/text/Text.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

// Where the row was not found stands what the field shows instead: nothing, or the "0.00" of whole numbers and amounts.
std::string LiteralOf(const Row& row, const std::string& column, const std::string& shown) {
  const Row::Field* field = row.Find(column);
  if (!field) return "''";
  const bool number = field->type != ColumnType::Text && field->type != ColumnType::Date;
  const std::string text = row.Found() ? EscapeQuotes(ValueText(field->value)) : shown;
  return number && text.empty() ? "NULL" : "'" + text + "'";
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

namespace {

void Put(const Row& row, std::string_view column, CheckBox* check, TextBox* box, bool clearOnly) {
  const Row::Field* field = row.Find(column);
  if (!field) return;
  const Value value = clearOnly ? Value(Null{}) : field->value;
  if (check) check->SetValue(ValueTruth(value));
  if (box) LoadBox(*box, *field, value);
}

}  // namespace

void BindFieldToControl(const Row& row, Control& control, std::string_view recordSetName, bool clearOnly) {
  if (control.Tag().empty() || GetTagValue(control.Tag(), "RS") != recordSetName) return;
  Put(row, GetTagValue(control.Tag(), "FIELDNAME"), dynamic_cast<CheckBox*>(&control), dynamic_cast<TextBox*>(&control),
      clearOnly);
}

const std::vector<SupplierFields::BoundControl>& SupplierFields::Bound() const {
  if (!bound_.empty()) return bound_;
  for (Control* control : window_.Controls()) {
    const std::string& tag = control->Tag();
    if (tag.empty() || GetTagValue(tag, "RS") != "SUPPLIER") continue;
    bound_.push_back({GetTagValue(tag, "FIELDNAME"), GetTagValue(tag, "NODEF"), dynamic_cast<CheckBox*>(control),
                      dynamic_cast<TextBox*>(control)});
  }
  return bound_;
}

std::string SupplierFields::BoundControl::Text() const {
  if (check) return check->Value() ? "YES" : "NO";
  return box ? EscapeQuotes(Trim(box->Text())) : std::string();
}

void SupplierFields::Bind(const Row& supplier, bool clearOnly) {
  for (const BoundControl& bound : Bound()) Put(supplier, bound.column, bound.check, bound.box, clearOnly);
}

void SupplierFields::RememberLoadedFields(const Row& supplier) {
  loaded_.clear();
  for (const BoundControl& bound : Bound()) {
    const std::string text = bound.Text();
    loaded_[bound.column] = {text, bound.check ? text : LiteralOf(supplier, bound.column, text)};
  }
}

SupplierFieldLists SupplierFields::CollectSupplierFields(bool asSupplier) const {
  SupplierFieldLists lists;
  for (const BoundControl& bound : Bound()) {
    const bool check = bound.check != nullptr;
    if (!asSupplier && bound.noDefault != (check ? "0" : "")) continue;
    const std::string text = bound.Text();
    const auto loaded = loaded_.find(bound.column);
    const bool edited = loaded == loaded_.end() || loaded->second.text != text;
    const std::string literal = !edited ? loaded->second.literal : check ? text : "'" + text + "'";
    const std::string value = literal + (check ? "," : " ,");
    if (edited) lists.assignments += bound.column + (check ? " =" : " = ") + value;
    lists.columns += bound.column + ",";
    lists.values += value;
  }
  return lists;
}

}  // namespace tarvolinex
