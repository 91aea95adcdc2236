#include "store/Suppliers.h"

#include <algorithm>
#include <charconv>

#include "calc/InputRules.h"
#include "calc/QuotePanel.h"
#include "calc/RateCard.h"
#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
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
constexpr int kPause = 1024;  // so many rows are read or listed between two looks at what has to be painted

// Put together in place: a long list has thousands of them.
void WriteRowToolTip(std::string& toolTip, std::string_view name) {
  static const std::string text = Tr("Double click to view <%1> calculator");
  static const std::size_t at = std::min(text.find("%1"), text.size());
  toolTip.assign(text, 0, at).append(name).append(text, std::min(at + 2, text.size()));
}

void NameRow(ListView::Row& row, std::string_view name) {
  row.text = name.empty() ? Tr("<NEW>") : name;
  WriteRowToolTip(row.toolTip, name);
  row.cells.resize(kListColumns.size() - kFirstCell);
}

// Into rows that exist already, whose texts have their memory: most fills change little. Gives the folded names.
std::vector<std::string> ReadSuppliers(const Recordset& records, std::vector<ListView::Row>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  records.ReadRows(kListColumns, [&](const std::vector<std::string_view>& texts) {
    if (names.size() % kPause == 0) TheDesktop().Repaint();
    if (names.size() == rows.size()) rows.emplace_back();
    ListView::Row& row = rows[names.size()];
    row.key.assign("ID").append(texts[0]);
    NameRow(row, Trim(texts[1]));
    for (std::size_t i = kFirstCell; i < texts.size(); ++i) row.cells[i - kFirstCell] = Trim(texts[i]);
    names.push_back(FoldCase(texts[1]));
  });
  rows.resize(names.size());
  return names;
}

// In the order of the names. The newest supplier is the one with the highest ID: it was read last.
void FillSupplierList(bool selectNewest) {
  ListView& list = MainForm().LvwSuppliers;
  OpenRecordset(statements::kSuppliers, TheStore->SupplierRecords, false);
  list.BeginFill();
  std::vector<ListView::Row> rows = list.TakeRows();
  const std::vector<std::string> names = ReadSuppliers(TheStore->SupplierRecords, rows);
  TheDesktop().Repaint();
  int newest = 0;
  for (const std::size_t supplier : OrderOf(names)) {
    if (list.Count() % kPause == 0) TheDesktop().Repaint();
    if (selectNewest && supplier + 1 == names.size()) newest = list.Count();
    list.Add(std::move(rows[supplier]));
  }
  TheDesktop().Repaint();
  list.Select(newest);
  if (list.SortColumn >= 0) list.Sort([] { TheDesktop().Repaint(); });
  TheDesktop().Repaint();
  list.EndFill();
  if (!selectNewest) list.Select(list.FirstShown());
}

// Fills everything that belongs to the supplier that `SupplierRecords` stands on.
void ShowSupplier() {
  MainWindow& form = MainForm();
  Recordset& records = TheStore->SupplierRecords;
  for (Control* control : form.Controls()) BindFieldToControl(records, *control, "SUPPLIER", false);
  if (ValueText(records.Field("AdditionalPremiumMsg")).empty()) {
    form.quote.LblPremium.SetCaption(Tr("Addional Premium Rate"));
  }
  ShowSupplierName();
  ApplyPremiumSwitch();
  LoadSupplierFormLinks(CurrentSupplierId);
  ListContacts();
  LoadSupplierRateCard(records);
  RememberLoadedFields(records);
}

// No supplier is left: the fields are those of a new one, without a row yet, and no rate card is in force.
void ShowNoSupplier() {
  MainWindow& form = MainForm();
  Recordset& records = TheStore->SupplierRecords;
  CurrentSupplierId = 0;
  CurrentSupplierIndex = -1;
  for (Control* control : form.Controls()) BindFieldToControl(records, *control, "SUPPLIER", true);
  for (int row = 0; row < form.rateCard.LvwForms.Count(); ++row) form.rateCard.LvwForms.SetChecked(row, false);
  ClearContacts();
  form.EnableCommands(false);
  form.SetCaption("Tarvolinex");
  SupplierCalcSettings = {};
  RateCardFault.clear();
  ApplyPremiumSwitch();
  ApplySupplierOptions();
  RecalculateQuote();
  RememberLoadedFields(records);
  SupplierChanged = FormLinksChanged = false;
  SetStatus(false, "", -1);
}

void ReportMissingSupplier() {
  ShowError(ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
  LoadFormsList(MainForm().rateCard.LvwForms);
  LoadSupplierList(false);
}

// Somebody else has removed the shown supplier: nothing is written for it, what it showed goes with it, and another one
// is shown.
void LeaveMissingSupplier() {
  SupplierChanged = FormLinksChanged = ContactChanged = false;
  ReportMissingSupplier();
  if (MainForm().LvwSuppliers.ItemClick) MainForm().LvwSuppliers.ItemClick();
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
  SetStatus(false,
            ReplaceAll(Tr("Loading <SUPPLIERS>"), "<SUPPLIERS>", CalculatorPreferences.AliasSupplier.Trimmed() + "s"),
            20);
  const bool focused = MainForm().ActiveControl() == &list;
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
  if (focused) list.SetFocus();
}

void ShowSupplierName() {
  MainWindow& form = MainForm();
  const std::string name(Trim(form.supplier.TxtSupplier(kSupplierName).Text()));
  form.LvwSuppliers.SetRowText(CurrentSupplierIndex, name.empty() ? Tr("<NEW>") : name);
  std::string toolTip;
  WriteRowToolTip(toolTip, name);
  form.LvwSuppliers.SetRowToolTip(CurrentSupplierIndex, toolTip);
  form.SetCaption("Tarvolinex - " + name);
}

void LoadSupplier() {
  SavePendingChanges();
  SaveContact();  // while it still is the previous supplier's
  SetStatus(false, "Getting Supplier", 20);
  const ListView& list = MainForm().LvwSuppliers;
  if (list.Selected() < 0) return ShowNoSupplier();
  try {
    Recordset& records = TheStore->SupplierRecords;
    records.MoveFirst();
    CurrentSupplierIndex = list.Selected();
    CurrentSupplierId = IdOfKey(list.At(CurrentSupplierIndex).key);
    records.Find("ID=" + std::to_string(CurrentSupplierId));
    if (records.EndOfFile()) return ReportMissingSupplier();
    ShowSupplier();
    if (!RateCardFault.empty()) {
      TheDesktop().MessageBox(RateCardFault + "\r\n\r\n" + Tr("Nothing is priced or published with these rates"),
                              Tr("Rates"), BoxButtons::Ok, BoxIcon::Exclamation);
    }
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
    if (IsNoNumber(value) && recordSet.TypeOf(column) != ColumnType::Text) return box->SetText(ValueText(value));
    switch (recordSet.TypeOf(column)) {
      case ColumnType::WholeNumber:
        box->SetMaxLength(10);
        box->Load(FormatNumberInput(kInputPercent, ValueText(NullToDefault(value, std::int64_t{0}))));
        break;
      case ColumnType::Currency:
        box->SetMaxLength(12);
        box->Load(FormatNumberInput(kInputAmount, ValueText(NullToDefault(value, Currency()))));
        break;
      case ColumnType::Single:
        // A rate keeps every digit that it has: storing the field again must not round it.
        box->SetMaxLength(10);
        box->Load(RateFieldText(value));
        break;
      default:
        box->SetMaxLength(recordSet.DefinedSize(column));
        box->Load(ValueText(value));
    }
  } catch (const RuntimeError&) {
    // A column that this database lacks: the field stays as it is.
  }
}

bool ReadsAsLoaded() {
  return CurrentSupplierId != 0 && !FormLinksChanged && !ContactChanged &&
         CollectSupplierFields(true).assignments.empty();
}

bool SupplierIsStored(int supplierId) {
  Recordset& records = TheStore->SupplierRecords;
  if (!records.IsOpen()) return false;
  records.Find("ID=" + std::to_string(supplierId));
  return !records.EndOfFile();
}

void SavePendingChanges() {
  MainWindow& form = MainForm();
  SetStatus(false, ReplaceAliases("Saving <SUPPLIER>"), 20);
  const bool named = !Trim(form.supplier.TxtSupplier(kSupplierName).Text()).empty();
  if (named && !form.TabMain.Tabs()[kTabSettings].enabled) {
    for (const int tab : {kTabQuote, kTabSettings, kTabSend}) form.TabMain.SetTabEnabled(tab, true);
  }
  // A supplier without a name is never stored.
  if (!LoadingSupplier && SupplierChanged && (named || CurrentSupplierId != 0)) {
    // Loading marks the supplier as changed too; fields that read as they were loaded need no writing.
    if (ReadsAsLoaded()) {
      SupplierChanged = false;
      return SetStatus(false, "", -1);
    }
    Transaction transaction;
    if (CurrentSupplierId != 0 && !SupplierIsStored(CurrentSupplierId)) {
      transaction.Abandon();
      return LeaveMissingSupplier();
    }
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
    RememberLoadedFields(defaults);
  }
  ApplyPremiumSwitch();
  LoadSupplierFormLinks(0);
  SetStatus(false, "", -1);
}

void NewSupplier() {
  MainWindow& form = MainForm();
  CurrentSupplierId = 0;
  SetStatus(false, "Loading Defaults", 20);
  ListView::Row row;
  row.key = "ID0";
  NameRow(row, "");
  form.LvwSuppliers.Add(std::move(row));
  form.LvwSuppliers.Select(form.LvwSuppliers.Count() - 1);
  CurrentSupplierIndex = form.LvwSuppliers.Selected();
  LoadDefaultSupplier();
  form.LvwSuppliers.SetRowText(CurrentSupplierIndex, Tr("<NEW>"));
  form.SetCaption("Tarvolinex - " + Tr("<NEW>"));
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
