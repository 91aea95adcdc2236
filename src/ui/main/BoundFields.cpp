#include "ui/main/BoundFields.h"

#include <algorithm>
#include <optional>

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "platform/text/Text.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

bool HoldsNumber(ColumnType type) {
  return type != ColumnType::Text && type != ColumnType::Date;
}

// A text that another program has stored in a column of numbers.
bool IsForeignText(const Row::Field& field, const Value& value) {
  return field.type != ColumnType::Text && IsNoNumber(value);
}

// As the field shows the value.
std::string FieldText(const Row::Field& field, const Value& value) {
  if (IsForeignText(field, value)) return ValueText(value);
  switch (field.type) {
    case ColumnType::WholeNumber:
      return FormatNumberInput(kInputPercent, ValueText(NullToDefault(value, std::int64_t{0})));
    case ColumnType::Currency:
      return FormatNumberInput(kInputAmount, ValueText(NullToDefault(value, Currency())));
    case ColumnType::Single:
      // A rate keeps every digit that it has: storing the field again must not round it.
      return RateFieldText(value);
    default:
      return ValueText(value);
  }
}

int LongestText(const Row::Field& field) {
  constexpr int kWholeDigits = 10, kAmountDigits = 12;
  if (field.type == ColumnType::Currency) return kAmountDigits;
  return field.type == ColumnType::WholeNumber || field.type == ColumnType::Single ? kWholeDigits : field.size;
}

void LoadBox(TextBox& box, const Row::Field& field, const Value& value) {
  if (IsForeignText(field, value)) return box.SetText(ValueText(value));
  box.SetMaxLength(LongestText(field));
  box.Load(FieldText(field, value));
}

// What a text becomes in a statement.
std::string Storable(std::string_view text) {
  return EscapeQuotes(Trim(text));
}

// Where the row was not found stands what the field shows instead: nothing, or the "0.00" of whole numbers and amounts.
std::string LiteralOf(const Row& row, const std::string& column, const std::string& shown) {
  const Row::Field* field = row.Find(column);
  if (!field) return "''";
  const std::string text = row.Found() ? EscapeQuotes(ValueText(field->value)) : shown;
  return HoldsNumber(field->type) && text.empty() ? "NULL" : "'" + text + "'";
}

bool Same(const Value& one, const Value& other) {
  return IsNull(one) == IsNull(other) && ValueText(one) == ValueText(other);
}

// The place of a threshold in its order, the highest first.
std::optional<int> Threshold(const std::string& column) {
  constexpr std::string_view kThresholds = "RangeEquipFROM";
  if (column.size() != kThresholds.size() + 1 || !EqualNoCase(column.substr(0, kThresholds.size()), kThresholds)) {
    return std::nullopt;
  }
  return column.back() - '0';
}

}  // namespace

std::string RateFieldText(const Value& value) {
  if (IsNull(value)) return {};
  const std::string exact = ValueText(value);
  if (IsNoNumber(value)) return exact;
  const std::string rounded = FormatNumberInput(kInputPercent, exact);
  return static_cast<float>(LeadingNumber(rounded)) == static_cast<float>(ValueNumber(value)) ? rounded : exact;
}

const std::vector<BoundFields::BoundControl>& BoundFields::Bound() const {
  if (!bound_.empty()) return bound_;
  for (Control* control : window_.Controls()) {
    const std::string& tag = control->Tag();
    if (tag.empty() || GetTagValue(tag, "RS") != recordSet_) continue;
    bound_.push_back({GetTagValue(tag, "FIELDNAME"), GetTagValue(tag, "NODEF"), dynamic_cast<CheckBox*>(control),
                      dynamic_cast<TextBox*>(control)});
  }
  return bound_;
}

std::string BoundFields::BoundControl::Text() const {
  if (check) return check->Value() ? "YES" : "NO";
  return box ? Storable(box->Text()) : std::string();
}

const Control* BoundFields::BoundControl::Itself() const {
  return check ? static_cast<const Control*>(check) : box;
}

void BoundFields::Put(const BoundControl& bound, const Row& row, bool clearOnly) const {
  const Row::Field* field = row.Find(bound.column);
  if (!field) return;
  const Value value = clearOnly ? Value(Null{}) : field->value;
  if (bound.check) bound.check->SetValue(ValueTruth(value));
  if (bound.box) LoadBox(*bound.box, *field, value);
}

void BoundFields::Bind(const Row& row, bool clearOnly) {
  for (const BoundControl& bound : Bound()) Put(bound, row, clearOnly);
}

void BoundFields::Remember(const BoundControl& bound, const Row& row, const std::string& text) {
  loaded_[bound.column] = {text, bound.check ? text : LiteralOf(row, bound.column, text), row.At(bound.column)};
}

void BoundFields::RememberLoadedFields(const Row& row) {
  row_ = row;
  loaded_.clear();
  for (const BoundControl& bound : Bound()) Remember(bound, row, bound.Text());
}

void BoundFields::RememberRow(const Row& row) {
  row_ = row;
  loaded_.clear();
  for (const BoundControl& bound : Bound()) {
    const Row::Field* field = row.Find(bound.column);
    const std::string text = field ? Storable(FieldText(*field, field->value)) : std::string();
    Remember(bound, row, bound.check ? (ValueTruth(row.At(bound.column)) ? "YES" : "NO") : text);
  }
}

bool BoundFields::IsEdited(const BoundControl& bound) const {
  const auto loaded = loaded_.find(bound.column);
  return loaded == loaded_.end() || loaded->second.text != bound.Text();
}

bool BoundFields::Edited() const {
  return std::ranges::any_of(Bound(), [&](const BoundControl& bound) { return IsEdited(bound); });
}

FieldLists BoundFields::Collect(bool all) const {
  FieldLists lists;
  for (const BoundControl& bound : Bound()) {
    const bool check = bound.check != nullptr;
    if (!all && bound.noDefault != (check ? "0" : "")) continue;
    const std::string text = bound.Text();
    const bool edited = IsEdited(bound);
    const std::string literal = !edited ? loaded_.at(bound.column).literal : check ? text : "'" + text + "'";
    const std::string value = literal + (check ? "," : " ,");
    if (edited) lists.assignments += bound.column + (check ? " =" : " = ") + value;
    lists.columns += bound.column + ",";
    lists.values += value;
  }
  return lists;
}

bool BoundFields::IsStoredAnew(const BoundControl& bound, const Row& now) const {
  const auto loaded = loaded_.find(bound.column);
  return loaded != loaded_.end() && now.Find(bound.column) && !Same(loaded->second.value, now.At(bound.column));
}

MetField BoundFields::Meeting(const BoundControl& bound, const Row& now) const {
  const Row::Field& field = *now.Find(bound.column);
  MetField met;
  met.control = bound.Itself();
  met.was = FieldText(field, loaded_.at(bound.column).value);
  met.mine = bound.box->Text();
  met.theirs = FieldText(field, field.value);
  return met;
}

// Whether the thresholds could be chosen, or go together by themselves, so that they do not fall any more.
bool BoundFields::OrderIsAtStake(const Row& now, bool all) const {
  std::map<int, std::pair<double, double>> possible;  // by place: the least and the largest that may be stored
  bool mine = false, theirs = false;
  for (const BoundControl& bound : Bound()) {
    const auto place = Threshold(bound.column);
    if (!place || !bound.box || !now.Find(bound.column)) continue;
    const bool edited = all || IsEdited(bound), anew = IsStoredAnew(bound, now);
    const double here = LeadingNumber(bound.Text()), there = ValueNumber(now.At(bound.column));
    mine = mine || edited;
    theirs = theirs || anew;
    const double one = edited ? here : there, other = anew ? there : one;
    possible[*place] = {std::min(one, other), std::max(one, other)};
  }
  if (!mine || !theirs) return false;
  return std::ranges::adjacent_find(possible, [](const auto& higher, const auto& lower) {
           return higher.second.first < lower.second.second;
         }) != possible.end();
}

std::vector<MetField> BoundFields::Meet(const Row& now, bool all) const {
  std::vector<MetField> met;
  const bool order = OrderIsAtStake(now, all);
  for (const BoundControl& bound : Bound()) {
    // A tick that both have changed is the same.
    if (!bound.box || !now.Find(bound.column) || (all && !bound.noDefault.empty())) continue;
    const bool edited = all || IsEdited(bound), anew = IsStoredAnew(bound, now),
               inOrder = order && Threshold(bound.column);
    if (!(edited && anew) && !(inOrder && (edited || anew))) continue;
    MetField field = Meeting(bound, now);
    field.inOrder = inOrder;
    if (Storable(field.theirs) != bound.Text()) met.push_back(field);
  }
  return met;
}

std::string BoundFields::ColumnOf(const MetField& met) const {
  const auto found =
      std::ranges::find_if(Bound(), [&](const BoundControl& bound) { return bound.Itself() == met.control; });
  return found == Bound().end() ? std::string() : found->column;
}

void BoundFields::Decide(const Row& now, const std::vector<MetField>& met) {
  row_ = now;
  for (const BoundControl& bound : Bound()) {
    const auto field = std::ranges::find_if(met, [&](const MetField& one) { return one.control == bound.Itself(); });
    if (field == met.end() || field->choice == MetField::Choice::Open) continue;
    if (field->choice == MetField::Choice::Theirs) Put(bound, now, false);
    Remember(bound, now, Storable(field->theirs));
  }
}

bool BoundFields::TakeStored(const Row& now) {
  row_ = now;
  bool changed = false;
  for (const BoundControl& bound : Bound()) {
    if (IsEdited(bound) || !IsStoredAnew(bound, now)) continue;
    Put(bound, now, false);
    Remember(bound, now, bound.Text());
    changed = true;
  }
  return changed;
}

}  // namespace tarvolinex
