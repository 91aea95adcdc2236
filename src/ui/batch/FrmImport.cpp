#include "ui/batch/FrmImport.h"

#include <algorithm>

#include "controls/Desktop.h"
#include "exchange/OldDatabase.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/batch/ColumnMemory.h"

namespace tarvolinex {

namespace {

enum { kKindSuppliers, kKindContacts, kKindDatabase };

// A word of the plan in the user's language.
std::string FateWord(Fate fate) {
  static constexpr const char* kWords[] = {Marked("new"), Marked("changed"), Marked("unchanged"), Marked("refused")};
  return Tr(kWords[static_cast<std::size_t>(fate)]);
}

}  // namespace

FrmImport::FrmImport(Run& run, Database& database, std::function<void(RemovedRows)> stored)
    : Window("FrmImport", Tr("Import")),
      LblKind(*this, "LblKind", -1, Tr("&What")),
      CboKind(*this, "CboKind"),
      CmdFile(*this, "CmdFile", -1, Tr("&File...")),
      LblFile(*this, "LblFile", -1, Tr("No file is chosen")),
      ChkHeading(*this, "ChkHeading", -1, Tr("The first line &names the columns")),
      LblColumn(*this, "LblColumn", -1, Tr("C&olumn of the file")),
      CboColumn(*this, "CboColumn"),
      LblField(*this, "LblField", -1, Tr("&is")),
      CboField(*this, "CboField"),
      LvwRows(*this, "LvwRows"),
      LblSummary(*this, "LblSummary"),
      CmdImport(*this, "CmdImport", -1, Tr("I&mport")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      database_(database),
      stored_(std::move(stored)) {
  CboKind.Add(run.ReplaceAliases(Tr("<SUPPLIER>s")), kKindSuppliers);
  CboKind.Add(Tr("Contacts"), kKindContacts);
  CboKind.Add(Tr("An old database (.mdb)"), kKindDatabase);
  CboKind.SetListIndex(0);
  LvwRows.Columns() = {{Tr("Line"), "", 900, true}, {Tr("Result"), "", 1300}, {Tr("Detail"), "", 8600}};
  CboKind.Click = [this] { Read(); };
  CmdFile.Click = [this] { ChooseFile(); };
  ChkHeading.Click = [this] {
    if (filling_) return;
    GuessColumns();
    Plan();
  };
  CboColumn.Click = [this] { ShowField(); };
  CboField.Click = [this] { TakeField(); };
  CmdImport.Click = [this] { Store(); };
  CmdClose.Click = [this] { Close(); };
  AnswerKeys(*this, CmdImport, CmdClose);
  Read();
}

bool FrmImport::IsTable() const {
  return CboKind.ItemData() != kKindDatabase;
}

ImportKind FrmImport::Kind() const {
  return CboKind.ItemData() == kKindContacts ? ImportKind::Contacts : ImportKind::Suppliers;
}

void FrmImport::ChooseFile() {
  const std::string path =
      TheDesktop().OpenFile({Tr("Import"), path_.empty() ? "" : FolderOf(path_), "",
                             IsTable() ? Tr("Comma-separated values (*.csv;*.txt)|*.csv;*.txt|All files (*.*)|*.*")
                                       : Tr("Databases (*.mdb)|*.mdb|All files (*.*)|*.*")});
  if (path.empty()) return;
  path_ = path;
  Read();
}

void FrmImport::Read() {
  rows_.clear();
  choice_.clear();
  plan_.reset();
  for (Control* control : std::initializer_list<Control*>{&ChkHeading, &CboColumn, &CboField}) {
    control->SetEnabled(IsTable() && !path_.empty());
  }
  if (!path_.empty()) LblFile.SetCaption(path_);
  try {
    if (!path_.empty() && IsTable()) ReadTable();
    if (!path_.empty() && !IsTable()) plan_ = PlanOldDatabase(database_, path_);
  } catch (const RuntimeError& failure) {
    rows_.clear();
    run_.ShowError(failure.Description());
  }
  FillColumns();
  ShowPlan();
}

void FrmImport::ReadTable() {
  rows_ = ReadTextTable(ReadFile(path_), FileNameOf(path_));
  known_ = KnownColumns(database_, Kind());
  filling_ = true;
  ChkHeading.SetValue(false);
  if (!rows_.empty()) {
    const ColumnMemory memory(run_.AppFolder, Kind());
    const ColumnChoice named = ChoiceOf(rows_.front(), known_, UnknownColumns::LeaveOut);
    const auto& cells = rows_.front().cells;
    ChkHeading.SetValue(std::any_of(named.begin(), named.end(), [](int place) { return place >= 0; }) ||
                        std::any_of(cells.begin(), cells.end(), [&](const std::string& cell) {
                          return !cell.empty() && !memory.FieldOf(cell).empty();
                        }));
  }
  filling_ = false;
  GuessColumns();
  if (!rows_.empty()) plan_ = PlanImport(database_, Kind(), {rows_.begin() + ChkHeading.Value(), rows_.end()}, choice_);
}

std::string FrmImport::NameOfColumn(std::size_t column) const {
  return ChkHeading.Value() ? rows_.front().cells[column] : "#" + std::to_string(column + 1);
}

void FrmImport::GuessColumns() {
  choice_.clear();
  if (rows_.empty()) return;
  choice_.assign(rows_.front().cells.size(), -1);
  if (ChkHeading.Value()) choice_ = ChoiceOf(rows_.front(), known_, UnknownColumns::LeaveOut);
  const ColumnMemory memory(run_.AppFolder, Kind());
  for (std::size_t i = 0; i < choice_.size(); ++i) {
    const std::string field = memory.FieldOf(NameOfColumn(i));
    if (field.empty()) continue;
    const auto found = std::find(known_.begin(), known_.end(), field);
    const int place = found == known_.end() ? -1 : static_cast<int>(found - known_.begin());
    if (place < 0 || std::find(choice_.begin(), choice_.end(), place) == choice_.end()) choice_[i] = place;
  }
  FillColumns();
}

void FrmImport::FillColumns() {
  filling_ = true;
  CboColumn.Clear();
  CboField.Clear();
  CboField.Add(Tr("(left out)"), -1);
  for (std::size_t i = 0; i < known_.size(); ++i) CboField.Add(known_[i], static_cast<int>(i));
  for (std::size_t i = 0; i < choice_.size(); ++i) CboColumn.Add(NameOfColumn(i), static_cast<int>(i));
  // What is still to be chosen comes first.
  const auto open = std::find(choice_.begin(), choice_.end(), -1);
  CboColumn.SetListIndex(choice_.empty() ? -1 : open == choice_.end() ? 0 : static_cast<int>(open - choice_.begin()));
  filling_ = false;
  ShowField();
}

void FrmImport::ShowField() {
  if (filling_ || CboColumn.ListIndex() < 0) return;
  filling_ = true;
  CboField.SetListIndex(choice_[static_cast<std::size_t>(CboColumn.ListIndex())] + 1);
  filling_ = false;
}

void FrmImport::TakeField() {
  if (filling_ || CboColumn.ListIndex() < 0) return;
  const auto column = static_cast<std::size_t>(CboColumn.ListIndex());
  const int place = CboField.ItemData();
  if (choice_[column] == place) return;
  if (place >= 0) std::replace(choice_.begin(), choice_.end(), place, -1);
  choice_[column] = place;
  ColumnMemory(run_.AppFolder, Kind())
      .Remember(NameOfColumn(column), place < 0 ? "-" : known_[static_cast<std::size_t>(place)]);
  Plan();
}

void FrmImport::Plan() {
  if (rows_.empty()) return;
  try {
    plan_ = PlanImport(database_, Kind(), {rows_.begin() + ChkHeading.Value(), rows_.end()}, choice_);
  } catch (const RuntimeError& failure) {
    plan_.reset();
    run_.ShowError(failure.Description());
  }
  ShowPlan();
}

void FrmImport::ShowPlan() {
  LvwRows.BeginFill();
  LvwRows.Clear();
  long changes = 0, refused = 0;
  if (plan_) {
    for (const PlannedRow& row : plan_->rows) {
      LvwRows.Add({std::to_string(LvwRows.Count()),
                   std::to_string(row.line),
                   {FateWord(row.fate), row.detail},
                   "",
                   false,
                   false});
    }
    refused = plan_->Count(Fate::Refused);
    changes = plan_->Count(Fate::New) + plan_->Count(Fate::Changed);
  }
  LvwRows.EndFill();
  CmdImport.SetEnabled(plan_ && refused == 0 && changes > 0);
  if (!plan_) return LblSummary.SetCaption(Tr("Nothing is stored before you press Import."));
  const auto number = [&](Fate fate) { return std::to_string(plan_->Count(fate)); };
  const std::string counts =
      Tr("%1 new, %2 changed, %3 unchanged, %4 refused",
         {number(Fate::New), number(Fate::Changed), number(Fate::Unchanged), number(Fate::Refused)});
  LblSummary.SetCaption(refused == 0 ? counts : Tr("%1. Nothing can be imported while a row is refused.", {counts}));
}

void FrmImport::Store() {
  if (!plan_) return;
  try {
    RemovedRows undo = StoreImport(database_, *plan_);
    run_.SetNote(Tr("Imported: %1", {LblSummary.Caption()}));
    stored_(std::move(undo));
    Close();
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
    Read();
  }
}

}  // namespace tarvolinex
