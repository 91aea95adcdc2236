#include "store/SaveSupplier.h"

#include "calc/InputRules.h"
#include "calc/QuotePanel.h"
#include "calc/RateCard.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Forms.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

// The shown row follows its fields without a reload.
void RefreshRow() {
  ListView& list = MainForm().LvwSuppliers;
  for (Control* control : MainForm().Controls()) {
    const auto* box = dynamic_cast<const TextBox*>(control);
    if (!box || GetTagValue(box->Tag(), "RS") != "SUPPLIER") continue;
    const std::string column = GetTagValue(box->Tag(), "FIELDNAME");
    const std::string text(Trim(box->Text()));
    if (EqualNoCase(column, "CompanyName")) ShowSupplierName();
    for (std::size_t i = 1; i < list.Columns().size(); ++i) {
      if (!EqualNoCase(GetTagValue(list.Columns()[i].tag, "FIELDNAME"), column)) continue;
      list.SetCell(CurrentSupplierIndex, static_cast<int>(i) - 1, text);
    }
  }
}

// The quote goes on with the rates that have just been stored; what the user typed last stays in force.
void UseStoredRateCard() {
  Recordset& records = TheStore->SupplierRecords;
  records.Find("ID=" + std::to_string(CurrentSupplierId));
  if (records.EndOfFile()) return ShowError(ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
  const RateCard before = SupplierCalcSettings;
  const bool faultBefore = !RateCardFault.empty();
  UseSupplierSettings(records);
  RememberLoadedFields(records);
  ApplySupplierOptions();
  const bool same = static_cast<const RateCard&>(SupplierCalcSettings) == before;
  if (!same || faultBefore || !RateCardFault.empty()) RecalculateShownQuote();
}

std::string WithoutLast(const std::string& text) {
  return text.substr(0, text.empty() ? 0 : text.size() - 1);
}

std::string InsertStatement(std::string_view statement, const SupplierFieldLists& fields) {
  return FillStatement(statement,
                       {{"<FIELDS>", WithoutLast(fields.columns)}, {"<VALUES>", WithoutLast(fields.values)}});
}

// The new supplier's row is selected by its new ID, and its ticks survive the refilling of the forms list.
void ShowInsertedSupplier() {
  ListView& forms = MainForm().rateCard.LvwForms;
  std::vector<std::string> ticked;
  for (const auto& row : forms.Rows()) {
    if (row.checked) ticked.push_back(row.key);
  }
  LoadFormsList(forms);
  for (const std::string& key : ticked) forms.SetChecked(forms.Find(key), true);
  LoadSupplierList(true);
  const ListView& list = MainForm().LvwSuppliers;
  if (list.Selected() < 0) throw RuntimeError(kNoCurrentRecord, Tr("the supplier list is empty"));
  if (list.At(list.Selected()).hidden) MainForm().TxtFilter.SetText("");
  CurrentSupplierIndex = list.Selected();
  CurrentSupplierId = IdOfKey(list.At(CurrentSupplierIndex).key);
  ShowSupplierName();
}

void StoreFields(bool asSupplier) {
  const SupplierFieldLists fields = CollectSupplierFields(asSupplier);
  if (!asSupplier) {
    Transaction transaction;
    ExecuteStatement(statements::kDeleteDefaultSupplier);
    ExecuteStatement(InsertStatement(statements::kInsertDefaultSupplier, fields));
    transaction.Commit();
  } else if (CurrentSupplierId != 0) {
    if (!fields.assignments.empty()) {
      ExecuteStatement(FillStatement(statements::kUpdateSupplier, {{"<VALUES>", WithoutLast(fields.assignments)},
                                                                   {"<ID>", std::int64_t{CurrentSupplierId}}}));
    }
    RefreshRow();
  } else {
    ExecuteStatement(InsertStatement(statements::kInsertSupplier, fields));
    ShowInsertedSupplier();
  }
  if (asSupplier) UseStoredRateCard();
}

// At the end of the set stands what the field shows instead: nothing, or the "0.00" of whole numbers and amounts.
std::string LiteralOf(const Recordset& records, const std::string& column, const std::string& shown) {
  if (records.ColumnIndex(column) < 0) return "''";
  const ColumnType type = records.TypeOf(column);
  const bool number = type != ColumnType::Text && type != ColumnType::Date;
  const std::string text = records.EndOfFile() ? shown : EscapeQuotes(ValueText(records.Field(column)));
  return number && text.empty() ? "NULL" : "'" + text + "'";
}

std::string TextOf(const Control& control) {
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->Value() ? "YES" : "NO";
  const auto* box = dynamic_cast<const TextBox*>(&control);
  return box ? EscapeQuotes(Trim(box->Text())) : std::string();
}

bool IsSupplierField(const Control& control) {
  return !control.Tag().empty() && GetTagValue(control.Tag(), "RS") == "SUPPLIER";
}

}  // namespace

std::string RateFieldText(const Value& value) {
  if (IsNull(value)) return {};
  const std::string exact = ValueText(value);
  if (IsNoNumber(value)) return exact;
  const std::string rounded = FormatNumberInput(kInputPercent, exact);
  return static_cast<float>(LeadingNumber(rounded)) == static_cast<float>(ValueNumber(value)) ? rounded : exact;
}

bool IsNoNumber(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  std::string buffer;
  return text && !Trim(*text).empty() && !ExactNumberText(*text, buffer);
}

void RememberLoadedFields(const Recordset& records) {
  LoadedSupplierFields.clear();
  for (const Control* control : MainForm().Controls()) {
    if (!IsSupplierField(*control)) continue;
    const std::string column = GetTagValue(control->Tag(), "FIELDNAME"), text = TextOf(*control);
    const bool check = dynamic_cast<const CheckBox*>(control) != nullptr;
    LoadedSupplierFields[column] = {text, check ? text : LiteralOf(records, column, text)};
  }
}

SupplierFieldLists CollectSupplierFields(bool asSupplier) {
  SupplierFieldLists lists;
  for (const Control* control : MainForm().Controls()) {
    if (!IsSupplierField(*control)) continue;
    const std::string column = GetTagValue(control->Tag(), "FIELDNAME");
    const std::string noDefault = GetTagValue(control->Tag(), "NODEF");
    const bool check = dynamic_cast<const CheckBox*>(control) != nullptr;
    if (!asSupplier && noDefault != (check ? "0" : "")) continue;
    const std::string text = TextOf(*control);
    const auto loaded = LoadedSupplierFields.find(column);
    const bool edited = loaded == LoadedSupplierFields.end() || loaded->second.text != text;
    const std::string value = (!edited ? loaded->second.literal
                               : check ? text
                                       : "'" + text + "'") +
                              (check ? "," : " ,");
    if (edited) lists.assignments += column + (check ? " =" : " = ") + value;
    lists.columns += column + ",";
    lists.values += value;
  }
  return lists;
}

void SaveSupplier(bool asSupplier) {
  if (asSupplier && !SupplierChanged) return;
  SetStatus(false, ReplaceAliases("Saving <SUPPLIER>"), 40);
  try {
    StoreFields(asSupplier);
    SupplierChanged = false;
  } catch (const RuntimeError&) {
    ShowError(ReplaceAliases("Saving <SUPPLIER> Failed"));
  }
  SetStatus(false, "", -1);
  MainForm().EnableCommands(false);
}

}  // namespace tarvolinex
