#include "ui/batch/FrmReaders.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Suppliers.h"

namespace tarvolinex {

FrmReaders::FrmReaders(Run& run, const std::vector<Letter>& letters, const std::set<int>& chosen)
    : Window("FrmReaders", Tr("Choose Contacts")),
      LblFilter(*this, "LblFilter", -1, Tr("&Find")),
      TxtFilter(*this, "TxtFilter"),
      LvwReaders(*this, "LvwReaders"),
      LblCount(*this, "LblCount"),
      CmdAll(*this, "CmdAll", -1, Tr("Tick &All")),
      CmdNone(*this, "CmdNone", -1, Tr("Tick &None")),
      CmdOk(*this, "CmdOk", -1, Tr("OK")),
      CmdCancel(*this, "CmdCancel", -1, Tr("Cancel")),
      run_(run) {
  LvwReaders.CheckBoxes = true;
  LvwReaders.Columns() = {
      {run.ReplaceAliases(Tr("<SUPPLIER>")), "", 3600}, {Tr("Contact"), "", 2600}, {Tr("E-mail"), "", 3600}};
  LvwReaders.BeginFill();
  for (const Letter& letter : letters) {
    ListView::Row row;
    row.key = "ID" + std::to_string(letter.contactId);
    row.text = letter.companyName;
    row.cells = {letter.contact, letter.email};
    row.checked = chosen.contains(letter.contactId);
    LvwReaders.Add(std::move(row));
  }
  LvwReaders.EndFill();
  TxtFilter.Change = [this] { Filter(); };
  LvwReaders.ItemCheck = [this](int) { ShowCount(); };
  CmdAll.Click = [this] { TickAll(true); };
  CmdNone.Click = [this] { TickAll(false); };
  CmdOk.Click = [this] {
    Confirmed = true;
    Close();
  };
  CmdCancel.Click = [this] { Close(); };
  AnswerKeys(*this, CmdOk, CmdCancel);
  ShowCount();
}

std::set<int> FrmReaders::Chosen() const {
  std::set<int> chosen;
  for (const ListView::Row& row : LvwReaders.Rows()) {
    if (row.checked) chosen.insert(IdOfKey(row.key));
  }
  return chosen;
}

void FrmReaders::Filter() {
  const std::string wanted = FoldCase(Trim(TxtFilter.Text()));
  if (wanted.empty()) return LvwReaders.SetFilter(nullptr);
  LvwReaders.NoMatchText = Tr("No contact matches");
  LvwReaders.SetFilter([wanted](const ListView::Row& row) {
    return FoldCase(row.text + "\n" + row.cells[0] + "\n" + row.cells[1]).find(wanted) != std::string::npos;
  });
}

void FrmReaders::TickAll(bool ticked) {
  for (int row = 0; row < LvwReaders.Count(); ++row) {
    if (!LvwReaders.At(row).hidden) LvwReaders.SetChecked(row, ticked);
  }
  ShowCount();
}

void FrmReaders::ShowCount() {
  LblCount.SetCaption(Tr("%1 of %2 contacts", {std::to_string(Chosen().size()), std::to_string(LvwReaders.Count())}));
}

}  // namespace tarvolinex
