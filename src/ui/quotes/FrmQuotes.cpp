#include "ui/quotes/FrmQuotes.h"

#include <algorithm>
#include <utility>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Changes.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/TodaysPrice.h"

namespace tarvolinex {

namespace {

// The names of the states, in the order of the list behind "all".
constexpr std::string_view kStateNames[] = {"open", "accepted", "declined", "expired"};

// Cells of a row that hold amounts.
constexpr std::size_t kCost = 5, kPayment = 7, kIncTax = 8;

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (const std::string_view word : Split(text, ' ')) {
    if (!word.empty()) words.push_back(FoldCase(word));
  }
  return words;
}

void FillRow(const QuoteListRow& quote, ListView::Row& row) {
  row.text = std::to_string(quote.number);
  row.key.assign("ID").append(row.text);
  row.cells.resize(11);
  std::size_t at = 0;
  for (const std::string_view text :
       {quote.date, quote.companyName, quote.customer, quote.equipment, quote.reference}) {
    row.cells[at++] = text;
  }
  row.cells[at++] = MoneyWords(quote.capitalCost);
  row.cells[at++] = std::to_string(quote.numberOfPayments);
  row.cells[at++] = MoneyWords(quote.payment);
  row.cells[at++] = MoneyWords(quote.paymentIncTax);
  row.cells[at++] = quote.validUntil;
  row.cells[at++] = StateWords(quote.state);
}

// Everything that is searched, with a line between each two so that no word spans them. Amounts are found with and
// without their thousands separators.
std::string FoldedText(const QuoteListRow& quote, const ListView::Row& row) {
  std::string all = row.text;
  for (const std::string& cell : row.cells) all.append("\n").append(cell);
  for (const std::size_t amount : {kCost, kPayment, kIncTax}) {
    all.append("\n").append(row.cells[amount]);
    all.erase(std::remove(all.end() - static_cast<std::ptrdiff_t>(row.cells[amount].size()), all.end(), ','),
              all.end());
  }
  all.append("\n").append(quote.customerEmail).append("\n").append(quote.customerTel);
  return FoldCase(all);
}

}  // namespace

FrmQuotes::FrmQuotes(Run& run, Database& database, Surroundings around, std::vector<RemovedRows>& removed)
    : Window("FrmQuotes", Tr("Quotes")),
      Toolbar1(*this, "Toolbar1"),
      LblSearch(*this, "LblSearch", -1, Tr("&Search")),
      TxtSearch(*this, "TxtSearch"),
      LblSupplier(*this, "LblSupplier", -1, run.CaptionWithAliases(Tr("<SUPPLIER>"))),
      CboSupplier(*this, "CboSupplier"),
      LblState(*this, "LblState", -1, Tr("St&ate")),
      CboState(*this, "CboState"),
      LvwQuotes(*this, "LvwQuotes"),
      LblCount(*this, "LblCount"),
      FraFigures(*this, "FraFigures", -1, Tr("As quoted, and today")),
      LblQuote(*this, "LblQuote"),
      LblToday(*this, "LblToday"),
      LvwFigures(*this, "LvwFigures"),
      LblNote(*this, "LblNote"),
      run_(run),
      database_(database),
      around_(std::move(around)),
      removed_(removed) {
  MakeToolbar();
  CboState.Add(Tr("all"));
  for (const std::string_view state : kStateNames) CboState.Add(StateWords(state));
  CboState.SetListIndex(0);
  LvwQuotes.Columns() = {{Tr("Number"), "", 1000, true},
                         {Tr("Date"), "", 1250},
                         {run.ReplaceAliases(Tr("<SUPPLIER>")), "", 2000},
                         {Tr("Customer"), "", 1800},
                         {run.ReplaceAliases(Tr("<CAPEQUIP>")), "", 1700},
                         {Tr("Reference"), "", 1050},
                         {run.ReplaceAliases(Tr("Cost (£)")), "", 1350, true},
                         {Tr("Payments"), "", 1050, true},
                         {run.ReplaceAliases(Tr("Payment (£)")), "", 1300, true},
                         {run.ReplaceAliases(Tr("Inc <VAT> (£)")), "", 1300, true},
                         {Tr("Valid until"), "", 1250},
                         {Tr("State"), "", 1050}};
  if (!database.Plain().IsFile()) {
    constexpr int kGiven = 350;  // by each of the wide ones, so that all are seen
    for (const std::size_t wide : {2U, 3U, 4U}) LvwQuotes.Columns()[wide].width -= kGiven;
    LvwQuotes.Columns().push_back({Tr("By"), "", 1200});
  }
  LvwQuotes.NoMatchText = Tr("No quote matches");
  LvwQuotes.SortColumn = 0;
  LvwQuotes.SortAscending = false;
  LvwFigures.Columns() = {{Tr("Figure"), "", 2100}, {Tr("As quoted"), "", 1500, true}, {Tr("Today"), "", 1500, true}};
  Wire();
}

void FrmQuotes::MakeToolbar() {
  Toolbar1.Add({Tr("Reopen"), "REOPEN", "", Tr("Show it as it was quoted, beside what today's rates give (Return)"),
                "OPEN", true, "Ctrl+O"});
  Toolbar1.Add({Tr("Copy as New"), "COPY", "", Tr("Begin a new quote with the same request, at today's rates (Ctrl+D)"),
                "COPY", true, "Ctrl+D"});
  Toolbar1.Add({Tr("Details"), "DETAILS", "", Tr("Customer, validity, state and note (F2)"), "EDITPROP", true, "F2"});
  Toolbar1.Add({Tr("Accepted"), "ACCEPT", "", Tr("The customer has accepted it (Ctrl+Y)"), "ACCEPT", true, "Ctrl+Y"});
  Toolbar1.Add({Tr("Declined"), "DECLINE", "", Tr("The customer has declined it (Ctrl+L)"), "DECLINE", true, "Ctrl+L"});
  Toolbar1.Add({Tr("Remove"), "REMOVE", "", Tr("Remove the quote (Delete)"), "REMSUPP"});
  Toolbar1.Add({Tr("Undo"), "UNDO", "", Tr("Put back what was removed last (Ctrl+Z)"), "UNDO", false, "Ctrl+Z"});
  Toolbar1.Add(
      {Tr("Export"), "EXPORT", "", Tr("Save the quotes of the list as a table (Ctrl+E)"), "SAVE", true, "Ctrl+E"});
}

void FrmQuotes::Wire() {
  Toolbar1.ButtonClick = [this](const std::string& key) { Toolbar1_ButtonClick(key); };
  TxtSearch.Change = CboSupplier.Click = CboState.Click = [this] { Filter(); };
  TxtSearch.KeyUp = [this](Key key) {
    if (key == Key::Return || key == Key::Down) LvwQuotes.SetFocus();
  };
  LvwQuotes.ItemClick = [this] { ShowSelected(); };
  LvwQuotes.DblClick = [this] { Reopen(around_.reopen); };
  LvwQuotes.ColumnClick = [this](int column) { LvwQuotes_ColumnClick(column); };
  LvwQuotes.KeyUp = [this](Key key) {
    if (key == Key::Delete) Remove();
  };
  KeyUp = [this](Key key) {
    if (key == Key::Escape) Close();
  };
}

void FrmQuotes::Toolbar1_ButtonClick(const std::string& key) {
  if (key == "REOPEN") Reopen(around_.reopen);
  if (key == "COPY") Reopen(around_.copyNew);
  if (key == "DETAILS") With([this](const KeptQuote& quote) { EditDetails(quote); });
  if (key == "ACCEPT") With([this](const KeptQuote& quote) { SetState(quote, QuoteState::Accepted); });
  if (key == "DECLINE") With([this](const KeptQuote& quote) { SetState(quote, QuoteState::Declined); });
  if (key == "REMOVE") Remove();
  if (key == "UNDO") Undo();
  if (key == "EXPORT") Export();
}

int FrmQuotes::SelectedNumber() const {
  const int row = LvwQuotes.Selected();
  return row < 0 || LvwQuotes.At(row).hidden ? 0 : IdOfKey(LvwQuotes.At(row).key);
}

// Into rows that exist already, whose texts have their memory.
void FrmQuotes::ReadQuotes(std::vector<ListView::Row>& rows) {
  std::size_t count = 0;
  std::unordered_map<int, std::string> names;
  listed_.clear();
  makers_ = MakersOf(database_, Changed::Quote);
  ListQuotes(database_, LocalDay(TheDesktop().Now()), [&](const QuoteListRow& quote) {
    if (count == rows.size()) rows.emplace_back();
    ListView::Row& row = rows[count++];
    FillRow(quote, row);
    if (!database_.Plain().IsFile()) row.cells.push_back(makers_[quote.number]);
    names.insert_or_assign(quote.supplierId, quote.companyName);  // the latest name that it had
    listed_[quote.number] = {quote.supplierId, std::string(quote.state), FoldedText(quote, row)};
  });
  rows.resize(count);
  ListSuppliersOf(names);
}

void FrmQuotes::ListSuppliersOf(const std::unordered_map<int, std::string>& names) {
  std::vector<std::pair<std::string, int>> sorted;
  for (const auto& [id, name] : names) sorted.emplace_back(name, id);
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
    const int order = CompareNoCase(a.first, b.first);
    return order != 0 ? order < 0 : a.second < b.second;
  });
  const int before = CboSupplier.ItemData();
  const auto click = std::exchange(CboSupplier.Click, nullptr);
  CboSupplier.Clear();
  CboSupplier.Add(Tr("all"), 0);
  int chosen = 0;
  for (const auto& [name, id] : sorted) {
    CboSupplier.Add(name, id);
    if (id == before) chosen = static_cast<int>(CboSupplier.Items().size()) - 1;
  }
  CboSupplier.SetListIndex(chosen);
  CboSupplier.Click = click;
}

void FrmQuotes::Load() {
  const int selected = SelectedNumber();
  ListView& list = LvwQuotes;
  list.BeginFill();
  std::vector<ListView::Row> rows = list.TakeRows();
  try {
    ReadQuotes(rows);
  } catch (const RuntimeError& failure) {
    rows.clear();
    run_.ShowError(failure.Description());
  }
  for (ListView::Row& row : rows) list.Add(std::move(row));
  list.Sort();
  list.EndFill();
  Select(selected);
  Toolbar1.SetButtonEnabled("UNDO", !removed_.empty());
}

void FrmQuotes::Select(int number) {
  LvwQuotes.Select(LvwQuotes.Find("ID" + std::to_string(number)));
  Filter();
}

void FrmQuotes::Filter() {
  const std::vector<std::string> words = WordsOf(TxtSearch.Text());
  const int supplier = std::max(CboSupplier.ItemData(), 0);
  const int chosen = CboState.ListIndex();
  const std::string_view state = chosen > 0 ? kStateNames[chosen - 1] : std::string_view();
  LvwQuotes.SetFilter([this, words, supplier, state](const ListView::Row& row) {
    const Listed& quote = listed_.at(IdOfKey(row.key));
    return (supplier == 0 || quote.supplierId == supplier) && (state.empty() || quote.state == state) &&
           std::all_of(words.begin(), words.end(),
                       [&](const std::string& word) { return quote.folded.find(word) != std::string::npos; });
  });
  // Whatever acts on the selected quote acts on one that is seen.
  if (SelectedNumber() == 0) {
    const int first = LvwQuotes.FirstShown();
    LvwQuotes.Select(first >= 0 && !LvwQuotes.At(first).hidden ? first : -1);
  }
  ShowCount();
  ShowSelected();
}

}  // namespace tarvolinex
