#include "store/Suppliers.h"

#include <charconv>

#include "calc/InputRules.h"
#include "calc/RateCard.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "store/Contacts.h"
#include "store/Forms.h"
#include "store/SaveSupplier.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

// What a row of the list shows, in the order of its columns.
const std::vector<std::string> kListColumns = {"ID",       "CompanyName", "tel",    "Address1",
                                               "Address2", "Town",        "County", "PostCode"};
constexpr std::size_t kFirstCell = 2;

ListView::Row RowFor(std::string key, std::string name) {
  ListView::Row row;
  row.key = std::move(key);
  row.toolTip = "Double click to view <" + name + "> calculator";
  row.text = name.empty() ? "<NEW>" : std::move(name);
  row.cells.resize(kListColumns.size() - kFirstCell);
  return row;
}

void FillSupplierList(bool selectNewest) {
  ListView& list = MainForm().LvwSuppliers;
  Recordset& records = TheStore->SupplierRecords;
  OpenRecordset(statements::kSuppliers, records, false);
  list.BeginFill();
  list.Clear();
  double highest = 0;
  int newest = 0;
  records.ReadRows(kListColumns, [&](std::vector<Value>& values) {
    const auto text = [&](std::size_t column) {
      auto* stored = std::get_if<std::string>(&values[column]);
      if (!stored) return ValueText(values[column]);
      return Trim(*stored).size() == stored->size() ? std::move(*stored) : std::string(Trim(*stored));
    };
    ListView::Row row = RowFor("ID" + text(0), text(1));
    for (std::size_t i = kFirstCell; i < values.size(); ++i) row.cells[i - kFirstCell] = text(i);
    list.Add(std::move(row));
    const double number = ValueNumber(values[0]);
    if (selectNewest && number > highest) {
      highest = number;
      newest = list.Count() - 1;
    }
  });
  list.Select(newest);
  if (list.SortColumn >= 0) {
    list.Sort();
    if (!selectNewest) list.Select(0);
  }
  list.EndFill();
}

// Fills everything that belongs to the supplier that `SupplierRecords` stands on.
void ShowSupplier() {
  MainWindow& form = MainForm();
  Recordset& records = TheStore->SupplierRecords;
  for (Control* control : form.Controls()) BindFieldToControl(records, *control, "SUPPLIER", false);
  if (ValueText(records.Field("AdditionalPremiumMsg")).empty()) {
    form.quote.LblPremium.SetCaption("Addional Premium Rate");
  }
  form.SetCaption("Tarvolinex - " + std::string(Trim(ValueText(records.Field("companyname")))));
  ApplyPremiumSwitch();
  LoadSupplierFormLinks(CurrentSupplierId);
  ListContacts();
  LoadSupplierRateCard(records);
  LoadedSupplierFields = CollectSupplierFields(true).assignments;
}

void ReportMissingSupplier() {
  ShowError(ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
  LoadFormsList(MainForm().rateCard.LvwForms);
  LoadSupplierList(false);
}

}  // namespace

int IdOfKey(std::string_view key) {
  const std::string number = ReplaceAll(key, "ID", "");
  int id = 0;
  std::from_chars(number.data(), number.data() + number.size(), id);
  return id;
}

void LoadSupplierList(bool selectNewest) {
  ListView& list = MainForm().LvwSuppliers;
  SetStatus(false, ReplaceAliases("Loading <SUPPLIERS>"), 20);
  list.SetEnabled(false);
  try {
    FillSupplierList(selectNewest);
  } catch (const RuntimeError&) {
    list.EndFill();
    ShowError(ReplaceAliases("Error Getting <SUPPLIER> List"));
  }
  SupplierChanged = false;
  SetStatus(false, "", -1);
  list.SetEnabled(true);
}

void LoadSupplier() {
  SavePendingChanges();
  SaveContact();  // while it still is the previous supplier's
  SetStatus(false, "Getting Supplier", 20);
  const ListView& list = MainForm().LvwSuppliers;
  if (list.Selected() < 0) return SetStatus(false, "", -1);
  try {
    Recordset& records = TheStore->SupplierRecords;
    records.MoveFirst();
    CurrentSupplierId = IdOfKey(list.At(list.Selected()).key);
    records.Find("ID=" + std::to_string(CurrentSupplierId));
    if (records.EndOfFile()) return ReportMissingSupplier();
    ShowSupplier();
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kNoCurrentRecord) ShowError(failure.Description());
  }
  SetStatus(false, "", -1);
}

void BindFieldToControl(const Recordset& recordSet, Control& control, std::string_view recordSetName, bool clearOnly) {
  if (control.Tag().empty() || GetTagValue(control.Tag(), "RS") != recordSetName) return;
  const std::string column = GetTagValue(control.Tag(), "FIELDNAME");
  if (column.empty()) return;
  try {
    const Value value = clearOnly || recordSet.EndOfFile() ? Value(Null{}) : recordSet.Field(column);
    if (auto* check = dynamic_cast<CheckBox*>(&control)) check->SetValue(ValueTruth(value));
    auto* box = dynamic_cast<TextBox*>(&control);
    if (!box) return;
    switch (recordSet.TypeOf(column)) {
      case ColumnType::WholeNumber:
        box->SetMaxLength(10);
        box->SetText(FormatNumberInput(kInputPercent, ValueText(NullToDefault(value, std::int64_t{0}))));
        break;
      case ColumnType::Currency:
        box->SetMaxLength(12);
        box->SetText(FormatNumberInput(kInputAmount, ValueText(NullToDefault(value, Currency()))));
        break;
      case ColumnType::Single:
        // A rate keeps every digit that it has: storing the field again must not round it.
        box->SetMaxLength(10);
        box->SetText(RateFieldText(value));
        break;
      default:
        box->SetMaxLength(recordSet.DefinedSize(column));
        box->SetText(ValueText(value));
    }
  } catch (const RuntimeError&) {
    // A column that this database lacks: the field stays as it is.
  }
}

void SavePendingChanges() {
  MainWindow& form = MainForm();
  SetStatus(false, ReplaceAliases("Saving <SUPPLIER>"), 20);
  const bool named = !Trim(form.supplier.TxtSupplier(kSupplierName).Text()).empty();
  if (named && !form.TabMain.Tabs()[kTabSettings].enabled) {
    for (const int tab : {kTabQuote, kTabSettings, kTabSend}) form.TabMain.SetTabEnabled(tab, true);
  }
  if (!LoadingSupplier && SupplierChanged) {
    // Loading marks the supplier as changed too; fields that read as they were loaded need no writing.
    const bool same = CurrentSupplierId != 0 && !FormLinksChanged && !ContactChanged &&
                      CollectSupplierFields(true).assignments == LoadedSupplierFields;
    if (same) {
      SupplierChanged = false;
      return SetStatus(false, "", -1);
    }
    Transaction transaction;
    SaveSupplier(true);
    SaveSupplierFormLinks(CurrentSupplierId);
    SaveContact();
    transaction.Commit();
  }
  SetStatus(false, "", -1);
}

void LoadDefaultSupplier() {
  SetStatus(false, "Loading Defaults", 20);
  {
    Recordset defaults;
    OpenRecordset(statements::kDefaultSupplier, defaults);
    for (Control* control : MainForm().Controls()) BindFieldToControl(defaults, *control, "SUPPLIER", false);
  }
  ApplyPremiumSwitch();
  LoadSupplierFormLinks(0);
  SetStatus(false, "", -1);
}

void NewSupplier() {
  MainWindow& form = MainForm();
  CurrentSupplierId = 0;
  SetStatus(false, "Loading Defaults", 20);
  form.LvwSuppliers.Add(RowFor("ID0", ""));
  form.LvwSuppliers.Select(form.LvwSuppliers.Count() - 1);
  CurrentSupplierIndex = form.LvwSuppliers.Selected();
  LoadDefaultSupplier();
  form.LvwSuppliers.SetRowText(CurrentSupplierIndex, "<NEW>");
  form.TabMain.SelectTab(kTabDetails);
  ClearContacts();
  form.EnableCommands(true);
  TheDesktop().DoEvents();
  form.TabMain.SetTabEnabled(kTabDetails, true);
  form.supplier.TxtSupplier(kSupplierName).SetFocus();
  form.Toolbar1.SetButtonEnabled(1, true);
  SetStatus(false, "", -1);
}

}  // namespace tarvolinex
