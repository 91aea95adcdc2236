// The supplier list, and showing one of its suppliers.
#include <algorithm>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"
#include "ui/main/FrmMain.h"

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
  row.cells.resize(StandingMarks::kStateCell + 1);
}

}  // namespace

void FrmMain::WireSuppliers() {
  LvwSuppliers.Columns() = {{Tr("Name"), "", 3600},
                            {Tr("Telephone"), "FIELDNAME=Tel", 1700},
                            {Tr("Address 1"), "FIELDNAME=Address1", 2000},
                            {Tr("Address 2"), "FIELDNAME=Address2", 2000},
                            {Tr("Town"), "FIELDNAME=Town", 1500},
                            {Tr("County"), "FIELDNAME=County", 1500},
                            {Tr("Post Code"), "FIELDNAME=PostCode", 1200},
                            {Tr("Calculator"), "", 1300}};
  TxtFilter.SetToolTip(
      Tr("Show only suppliers whose name, town or post code holds this text, or a contact of whom is called so"));
  LvwSuppliers.ItemClick = [this] { LvwSuppliers_ItemClick(); };
  LvwSuppliers.ColumnClick = [this](int column) { LvwSuppliers_ColumnClick(column); };
  LvwSuppliers.DblClick = [this] { Preview(); };
  TxtFilter.Change = [this] { TxtFilter_Change(); };
  TxtFilter.KeyUp = [this](Key key) {
    if (key == Key::Return || key == Key::Down) LvwSuppliers.SetFocus();
  };
  LvwSuppliers.KeyUp = [this](Key key) {
    if (key != Key::Delete) return;
    ForgetUneditedFields();
    SupplierCommand(1);
  };
}

// Into rows that exist already, whose texts have their memory: most fills change little. Gives the folded names.
std::vector<std::string> FrmMain::ReadSuppliers(std::vector<ListView::Row>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  ListSuppliers(database, kListColumns, [&](const std::vector<std::string_view>& texts) {
    if (names.size() % kPause == 0) TheDesktop().Repaint();
    if (names.size() == rows.size()) rows.emplace_back();
    ListView::Row& row = rows[names.size()];
    row.key.assign("ID").append(texts[0]);
    NameRow(row, Trim(texts[1]));
    for (std::size_t i = kFirstCell; i < texts.size(); ++i) row.cells[i - kFirstCell] = Trim(texts[i]);
    row.cells[StandingMarks::kStateCell].clear();
    row.mark = RowMark::None;
    names.push_back(FoldCase(texts[1]));
  });
  rows.resize(names.size());
  return names;
}

std::vector<ListView::Row> FrmMain::RowsByName() {
  std::vector<ListView::Row> rows, ordered;
  const std::vector<std::string> names = ReadSuppliers(rows);
  ordered.reserve(rows.size());
  for (const std::size_t next : OrderOf(names)) ordered.push_back(std::move(rows[next]));
  return ordered;
}

// In the order of the names. The newest supplier is the one with the highest ID: it was read last.
void FrmMain::FillSupplierList(bool selectNewest) {
  ListView& list = LvwSuppliers;
  list.BeginFill();
  std::vector<ListView::Row> rows = list.TakeRows();
  const std::vector<std::string> names = ReadSuppliers(rows);
  TheDesktop().Repaint();
  int newest = 0;
  for (const std::size_t next : OrderOf(names)) {
    if (list.Count() % kPause == 0) TheDesktop().Repaint();
    if (selectNewest && next + 1 == names.size()) newest = list.Count();
    list.Add(std::move(rows[next]));
  }
  TheDesktop().Repaint();
  list.Select(newest);
  if (list.SortColumn >= 0) list.Sort([] { TheDesktop().Repaint(); });
  TheDesktop().Repaint();
  list.EndFill();
  if (!selectNewest) list.Select(list.FirstShown());
  standing.LookAtAll();
}

void FrmMain::LoadSupplierList(bool selectNewest) {
  ListView& list = LvwSuppliers;
  const std::string suppliers = run.CalculatorPreferences.AliasSupplier.Trimmed() + "s";
  run.SetStatus(false, ReplaceAll(Tr("Loading <SUPPLIERS>"), "<SUPPLIERS>", suppliers), 20);
  const bool focused = ActiveControl() == &list;
  list.SetEnabled(false);
  try {
    FillSupplierList(selectNewest);
  } catch (const RuntimeError& failure) {
    list.EndFill();
    list.SetEnabled(true);
    if (failure.Number() == kDatabaseGone) throw;
    run.ShowError(run.ReplaceAliases("Error Getting <SUPPLIER> List"));
  }
  shown.SupplierChanged = false;
  run.SetStatus(false, "", -1);
  list.SetEnabled(true);
  if (focused) list.SetFocus();
}

void FrmMain::ShowSupplierName() {
  const std::string name(Trim(supplier.Name().Text()));
  LvwSuppliers.SetRowText(shown.CurrentSupplierIndex, name.empty() ? Tr("<NEW>") : name);
  std::string toolTip;
  WriteRowToolTip(toolTip, name);
  LvwSuppliers.SetRowToolTip(shown.CurrentSupplierIndex, toolTip);
  SetCaption("Tarvolinex - " + name);
}

// The rates of the row are in force; those that are no numbers price nothing.
void FrmMain::UseSupplierSettings(const SupplierRow& row) {
  run.SupplierCalcSettings = row.settings;
  shown.RateCardFault = row.rateCardFault;
}

void FrmMain::LoadSupplierRateCard(const SupplierRow& row) {
  UseSupplierSettings(row);
  quote.ApplySupplierOptions();
  quote.RecalculateQuote();
}

// Fills everything that belongs to the supplier.
void FrmMain::ShowSupplier(const SupplierRow& row) {
  shown.WayForth = nullptr;
  fields_.Bind(row.row, false);
  if (ValueText(row.row.At("AdditionalPremiumMsg")).empty()) {
    quote.LblPremium.SetCaption(Tr("Addional Premium Rate"));
  }
  ShowSupplierName();
  rateCard.ApplyPremiumSwitch();
  forms.LoadSupplierFormLinks(shown.CurrentSupplierId);
  contacts.ClearContacts();  // they are the previous one's
  contacts.ListContacts();
  LoadSupplierRateCard(row);
  fields_.RememberLoadedFields(row.row);
  ForgetLastChange();
  standing.LookAt(shown.CurrentSupplierId);
}

// No supplier is left: the fields are those of a new one, without a row yet, and no rate card is in force.
void FrmMain::ShowNoSupplier() {
  const SupplierRow nobody = ReadSupplier(database, 0);
  shown.CurrentSupplierId = 0;
  shown.CurrentSupplierIndex = -1;
  ForgetLastChange();
  fields_.Bind(nobody.row, true);
  forms.ClearTicks();
  contacts.ClearContacts();
  EnableCommands(false);
  SetCaption("Tarvolinex");
  run.SupplierCalcSettings = {};
  shown.RateCardFault.clear();
  rateCard.ApplyPremiumSwitch();
  quote.ApplySupplierOptions();
  quote.RecalculateQuote();
  fields_.RememberLoadedFields(nobody.row);
  standing.LookAt(0);
  shown.SupplierChanged = forms.FormLinksChanged = false;
  run.SetStatus(false, "", -1);
}

void FrmMain::ReportMissingSupplier() {
  run.ShowError(run.ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
  forms.LoadFormsList();
  LoadSupplierList(false);
}

// With what ShowSupplier reads next.
SupplierRow FrmMain::ReadForeseen(int id) {
  const GoesOnWithout server(database);
  ForeseeSupplier(database, id);
  return ReadSupplier(database, id);
}

void FrmMain::LoadSupplier() {
  if (!SaveAll()) return StayAtShownSupplier();  // a contact while it still is the previous supplier's
  run.SetStatus(false, "Getting Supplier", 20);
  const ListView& list = LvwSuppliers;
  try {
    if (list.Selected() < 0) return ShowNoSupplier();
    const int id = IdOfKey(list.At(list.Selected()).key);
    const SupplierRow row = ReadForeseen(id);
    shown.CurrentSupplierIndex = list.Selected();
    shown.CurrentSupplierId = id;
    if (!row.Found()) return ReportMissingSupplier();
    ShowSupplier(row);
    if (!shown.RateCardFault.empty()) {
      TheDesktop().MessageBox(shown.RateCardFault + "\r\n\r\n" + Tr("Nothing is priced or published with these rates"),
                              Tr("Rates"), BoxButtons::Ok, BoxIcon::Exclamation);
    }
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDatabaseGone) {
      TellOfLoss(failure);
    } else {
      run.ShowError(failure.Description());
    }
    StayAtShownSupplier();
  }
  run.SetStatus(false, "", -1);
}

// What is edited waits for a choice, or another one could not be read: its row stays the selected one.
void FrmMain::StayAtShownSupplier() {
  shown.LoadingSupplier = false;
  const int row = LvwSuppliers.Find("ID" + std::to_string(shown.CurrentSupplierId));
  if (row < 0) return;
  LvwSuppliers.Select(row);
  shown.CurrentSupplierIndex = row;
}

void FrmMain::LvwSuppliers_ItemClick() {
  const std::string chosen = LvwSuppliers.Selected() < 0 ? std::string() : LvwSuppliers.At(LvwSuppliers.Selected()).key;
  if (!shown.SupplierChanged) shown.LoadingSupplier = true;
  if (!MayLeave()) return StayAtShownSupplier();
  // A new supplier that has been stored is selected in a list filled anew.
  if (const int row = LvwSuppliers.Find(chosen); row >= 0) LvwSuppliers.Select(row);
  LoadSupplier();
  int& index = shown.CurrentSupplierIndex;
  index = LvwSuppliers.Selected();
  // A supplier that is gone has been reported and the list filled anew: the fields follow it.
  if (index >= 0 && IdOfKey(LvwSuppliers.At(index).key) != shown.CurrentSupplierId) LoadSupplier();
  forms.TicksChanged = false;
  if (!quote.loading) quote.RecalculateQuote();
  // Everything is blocked until it has a name, so the user is taken to it.
  if (shown.CurrentSupplierId != 0 && Nameless()) {
    TabMain.SelectTab(kTabDetails);
    supplier.Name().SetFocus();
  }
  shown.LoadingSupplier = false;
}

void FrmMain::LvwSuppliers_ColumnClick(int column) {
  run.SetStatus(false, "Sorting", 50);
  LvwSuppliers.SortAscending = LvwSuppliers.SortColumn != column || !LvwSuppliers.SortAscending;
  LvwSuppliers.SortColumn = column;
  LvwSuppliers.Sort([] { TheDesktop().Repaint(); });
  shown.CurrentSupplierIndex = LvwSuppliers.Selected();
  run.SetStatus(false, "", -1);
}

// Names, towns, post codes and people that hold the text; nullptr for all.
std::function<bool(const ListView::Row&)> FrmMain::Named(const std::string& wanted) {
  if (wanted.empty()) return nullptr;
  return [wanted, people = SuppliersOfContacts(database, wanted)](const ListView::Row& row) {
    constexpr std::size_t kTown = 3, kPostCode = 5;
    const auto holds = [&](const std::string& text) { return FoldCase(text).find(wanted) != std::string::npos; };
    return holds(row.text) || holds(row.cells.at(kTown)) || holds(row.cells.at(kPostCode)) ||
           people.contains(IdOfKey(row.key));
  };
}

void FrmMain::ShowStandings() {
  const int column = StandingMarks::kStateCell + 1;
  if (LvwSuppliers.SortColumn == column) LvwSuppliers.Sort();
  shown.CurrentSupplierIndex = LvwSuppliers.Selected();
  TxtFilter_Change();
}

void FrmMain::TxtFilter_Change() {
  const auto named = Named(FoldCase(Trim(TxtFilter.Text())));
  if (!named && standing.CboStanding.ItemData() < 0) {
    LvwSuppliers.SetFilter(nullptr);
    return LvwSuppliers.Select(LvwSuppliers.Selected());  // scrolled to again
  }
  LvwSuppliers.NoMatchText = run.ReplaceAliases("No <SUPPLIER> matches");
  LvwSuppliers.SetFilter([this, named](const ListView::Row& row) {
    return row.key == "ID0" || (standing.Shows(row) && (!named || named(row)));
  });
  // Whatever acts on the selected supplier acts on one that is seen.
  const int selected = LvwSuppliers.Selected();
  if (selected >= 0 && !LvwSuppliers.At(selected).hidden) return;
  const int first = LvwSuppliers.FirstShown();
  if (first < 0 || LvwSuppliers.At(first).hidden) return;
  LvwSuppliers.Select(first);
  LvwSuppliers_ItemClick();
}

void FrmMain::ShowContact(int supplierId, int contactId) {
  const std::string key = "ID" + std::to_string(supplierId);
  TabMain.SelectTab(kTabDetails);
  // A new supplier that is stored now fills the list anew.
  if (!SavePendingChanges()) return;
  const std::string before = "ID" + std::to_string(shown.CurrentSupplierId);
  if (LvwSuppliers.Find(key) < 0) LoadSupplierList(false);  // another program has added it
  const int row = LvwSuppliers.Find(key);
  if (row < 0) {
    run.ShowError(run.ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
    // The list was filled anew: the supplier that is shown stays selected, or the one that is selected is shown.
    if (const int stays = LvwSuppliers.Find(before); stays >= 0) LvwSuppliers.Select(stays);
    return LvwSuppliers_ItemClick();
  }
  if (LvwSuppliers.At(row).hidden) TxtFilter.SetText("");
  LvwSuppliers.Select(row);
  LvwSuppliers_ItemClick();
  contacts.SelectContact(contactId);
}

void FrmMain::LoadDefaultSupplier() {
  run.SetStatus(false, "Loading Defaults", 20);
  const Row defaults = ReadDefaultSupplier(database);
  fields_.Bind(defaults, false);
  fields_.RememberLoadedFields(defaults);
  defaults_.RememberRow(defaults);
  rateCard.ApplyPremiumSwitch();
  forms.LoadSupplierFormLinks(0);
  run.SetStatus(false, "", -1);
}

void FrmMain::NewSupplier() {
  shown.CurrentSupplierId = 0;
  shown.WayForth = nullptr;
  ForgetLastChange();
  run.SetStatus(false, "Loading Defaults", 20);
  ListView::Row row;
  row.key = "ID0";
  NameRow(row, "");
  LvwSuppliers.Add(std::move(row));
  LvwSuppliers.Select(LvwSuppliers.Count() - 1);
  shown.CurrentSupplierIndex = LvwSuppliers.Selected();
  LoadDefaultSupplier();
  LvwSuppliers.SetRowText(shown.CurrentSupplierIndex, Tr("<NEW>"));
  SetCaption("Tarvolinex - " + Tr("<NEW>"));
  TabMain.SelectTab(kTabDetails);
  contacts.ClearContacts();
  EnableCommands(true);
  TheDesktop().DoEvents();
  TabMain.SetTabEnabled(kTabDetails, true);
  supplier.Name().SetFocus();
  Toolbar1.SetButtonEnabled("REMSUPP", true);
  run.SetStatus(false, "", -1);
}

}  // namespace tarvolinex
