// What came of a batch, in its window.
#include "platform/text/Translation.h"
#include "ui/batch/FrmBatch.h"

namespace tarvolinex {

void FrmBatch::ShowLetters() {
  const std::vector<Letter> letters = Letters(database_);
  report_ = LetterReport(letters);
  std::vector<std::vector<std::string>> rows;
  for (const Letter& each : letters) {
    const bool doubtful = each.state == LetterState::Doubtful;
    const bool left = each.state == LetterState::Waiting || each.state == LetterState::Sending;
    rows.push_back({each.companyName, each.contact + " <" + each.email + ">",
                    left ? Tr("left") : std::string(NameOf(each.state)),
                    doubtful ? Tr("Please ask the reader before you send it again: %1", {each.detail}) : each.detail});
  }
  ShowReport(rows);
}

void FrmBatch::ShowReport(const std::vector<std::vector<std::string>>& rows) {
  LvwReport.BeginFill();
  LvwReport.Clear();
  LvwReport.Columns() = {{run_.ReplaceAliases(Tr("<SUPPLIER>")), "", 2800},
                         {Tr("For whom or where"), "", 3400},
                         {Tr("Result"), "", 1300},
                         {Tr("Detail"), "", 5000}};
  int number = 0;
  for (const auto& cells : rows) {
    ListView::Row row;
    row.key = std::to_string(++number);
    row.text = cells.front();
    row.cells.assign(cells.begin() + 1, cells.end());
    LvwReport.Add(std::move(row));
  }
  LvwReport.EndFill();
  CmdSave.SetEnabled(!report_.empty());
}

}  // namespace tarvolinex
