#include "ui/batch/FrmSent.h"

#include <algorithm>

#include "exchange/Csv.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Changes.h"
#include "ui/quotes/ShownTable.h"

namespace tarvolinex {

FrmSent::FrmSent(Run& run, Database& database, Open open)
    : Window("FrmSent", Tr("Sent")),
      LblSearch(*this, "LblSearch", -1, Tr("&Search")),
      TxtSearch(*this, "TxtSearch"),
      LvwSent(*this, "LvwSent"),
      TxtMessage(*this, "TxtMessage"),
      CmdOpen(*this, "CmdOpen", -1, run.CaptionWithAliases(Tr("&Open <SUPPLIER>"))),
      CmdAgain(*this, "CmdAgain", -1, Tr("Send A&gain...")),
      CmdSave(*this, "CmdSave", -1, Tr("Save &As...")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      database_(database),
      open_(std::move(open)) {
  LvwSent.Columns() = {{Tr("Date"), "", 2250},    {run.ReplaceAliases(Tr("<SUPPLIER>")), "", 2800},
                       {Tr("Contact"), "", 1900}, {Tr("E-mail"), "", 2600},
                       {Tr("As"), "", 800},       {Tr("Result"), "", 2600}};
  if (!database.Plain().IsFile()) LvwSent.Columns().push_back({Tr("By"), "", 1200});
  LvwSent.NoMatchText = Tr("Nothing that went out matches");
  LvwSent.SortColumn = 0;
  LvwSent.SortAscending = false;
  TxtMessage.SetLocked(true);
  TxtSearch.Change = [this] { Filter(); };
  TxtSearch.KeyUp = [this](Key key) {
    if (key == Key::Return || key == Key::Down) LvwSent.SetFocus();
  };
  LvwSent.ItemClick = [this] { ShowSelected(); };
  LvwSent.DblClick = [this] { Leave(false); };
  LvwSent.ColumnClick = [this](int column) {
    LvwSent.SortAscending = LvwSent.SortColumn != column || !LvwSent.SortAscending;
    LvwSent.SortColumn = column;
    LvwSent.Sort();
  };
  CmdOpen.Click = [this] { Leave(false); };
  CmdAgain.Click = [this] { Leave(true); };
  CmdSave.Click = [this] { Save(); };
  CmdClose.Click = [this] { Close(); };
  KeyUp = [this](Key key) {
    if (key == Key::Escape) Close();
  };
}

void FrmSent::Load() {
  LvwSent.BeginFill();
  LvwSent.Clear();
  listed_.clear();
  try {
    std::unordered_map<int, std::string> makers = MakersOf(database_, Changed::Delivery);
    ListDeliveries(database_, [&](int number, const Delivery& each) {
      ListView::Row row;
      row.key = std::to_string(number);
      row.text = each.date;
      row.cells = {each.companyName, each.contact, each.email, each.sentAs, each.result};
      if (!database_.Plain().IsFile()) row.cells.push_back(makers[number]);
      std::string all = row.text;
      for (const std::string& cell : row.cells) all += "\n" + cell;
      listed_[row.key] = {each.supplierId, each.contactId, FoldCase(all)};
      LvwSent.Add(std::move(row));
    });
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
  LvwSent.Sort();
  LvwSent.EndFill();
  Filter();
}

void FrmSent::Filter() {
  std::vector<std::string> words;
  for (const std::string_view word : Split(TxtSearch.Text(), ' ')) {
    if (!word.empty()) words.push_back(FoldCase(word));
  }
  LvwSent.SetFilter([this, words](const ListView::Row& row) {
    const std::string& text = listed_.at(row.key).folded;
    return std::all_of(words.begin(), words.end(),
                       [&](const std::string& word) { return text.find(word) != std::string::npos; });
  });
  if (!Selected()) LvwSent.Select(LvwSent.FirstShown());
  ShowSelected();
}

const FrmSent::Listed* FrmSent::Selected() const {
  const int row = LvwSent.Selected();
  return row < 0 || LvwSent.At(row).hidden ? nullptr : &listed_.at(LvwSent.At(row).key);
}

void FrmSent::ShowSelected() {
  const Listed* selected = Selected();
  CmdOpen.SetEnabled(selected != nullptr);
  CmdAgain.SetEnabled(selected && selected->contact != 0);
  std::string message;
  try {
    if (selected) message = MessageOfDelivery(database_, std::stoi(LvwSent.At(LvwSent.Selected()).key));
  } catch (const RuntimeError& failure) {
    message = failure.Description();
  }
  TxtMessage.SetText(message);
}

void FrmSent::Leave(bool again) {
  const Listed* selected = Selected();
  if (!selected) return;
  const Listed chosen = *selected;
  Close();
  open_(chosen.supplier, again ? chosen.contact : 0);
}

void FrmSent::Save() {
  std::string rows;
  for (const ListView::Row& row : LvwSent.Rows()) {
    if (row.hidden) continue;
    rows += row.text + "," + std::to_string(listed_.at(row.key).supplier);
    for (const std::string& cell : row.cells) rows += "," + CsvCell(cell);
    rows += "\n";
  }
  std::vector<SheetColumn> columns = {
      {"Date"}, {"SupplierID", CellKind::Count}, {"CompanyName"}, {"Contact"}, {"Email"}, {"As"}, {"Result"}};
  if (!database_.Plain().IsFile()) columns.push_back({"By"});
  SaveTable(run_, Tr("Save what went out"), "Sent.xlsx", columns, rows);
}

}  // namespace tarvolinex
