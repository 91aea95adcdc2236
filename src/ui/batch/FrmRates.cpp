#include "ui/batch/FrmRates.h"

#include <algorithm>
#include <map>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

enum { kCopy, kAdd, kSubtract, kMultiply, kSet };
constexpr int kBands = 5, kResultCell = 0, kDetailCell = 1;

}  // namespace

FrmRates::FrmRates(Run& run, Database& database, const Source& source, std::function<void(RemovedRows)> stored)
    : Window("FrmRates", Tr("Change Rates")),
      LblAction(*this, "LblAction", -1, Tr("&Do this")),
      CboAction(*this, "CboAction"),
      LblField(*this, "LblField", -1, Tr("&to")),
      CboField(*this, "CboField"),
      LblAmount(*this, "LblAmount", -1, Tr("A&mount")),
      TxtAmount(*this, "TxtAmount"),
      LvwSuppliers(*this, "LvwSuppliers"),
      LblSummary(*this, "LblSummary"),
      CmdAll(*this, "CmdAll", -1, Tr("Tick &All")),
      CmdNone(*this, "CmdNone", -1, Tr("Tick &None")),
      CmdApply(*this, "CmdApply", -1, Tr("C&hange")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      database_(database),
      source_(source),
      stored_(std::move(stored)) {
  CboAction.Add(Tr("Copy the rate card of %1", {source.name}), kCopy);
  CboAction.Add(Tr("Add"), kAdd);
  CboAction.Add(Tr("Subtract"), kSubtract);
  CboAction.Add(Tr("Multiply by"), kMultiply);
  CboAction.Add(Tr("Set to"), kSet);
  CboAction.SetListIndex(source.copies ? kCopy : kAdd);
  LvwSuppliers.CheckBoxes = true;
  LvwSuppliers.Columns() = {
      {run.ReplaceAliases(Tr("<SUPPLIER>")), "", 3600}, {Tr("Result"), "", 1300}, {Tr("Detail"), "", 6000}};
  TxtAmount.SetForNumber("");
  FillFields();
  FillSuppliers();
  CboAction.Click = CboField.Click = TxtAmount.Change = [this] { Plan(); };
  LvwSuppliers.ItemCheck = [this](int) { Plan(); };
  CmdAll.Click = [this] { TickAll(true); };
  CmdNone.Click = [this] { TickAll(false); };
  CmdApply.Click = [this] { Apply(); };
  CmdClose.Click = [this] { Close(); };
  AnswerKeys(*this, CmdApply, CmdClose);
  Plan();
}

void FrmRates::FillFields() {
  const auto all = [](const std::string& column) {
    std::vector<std::string> columns;
    for (int i = 0; i < kBands; ++i) columns.push_back(column + std::to_string(i));
    return columns;
  };
  fields_ = {{Tr("Yields of all bands"), all("Yield")}, {Tr("Commissions of all bands"), all("Com")}};
  for (int i = 0; i < kBands; ++i) {
    fields_.push_back({Tr("Yield of band %1", {std::to_string(i + 1)}), {"Yield" + std::to_string(i)}});
  }
  for (int i = 0; i < kBands; ++i) {
    fields_.push_back({Tr("Commission of band %1", {std::to_string(i + 1)}), {"Com" + std::to_string(i)}});
  }
  for (int i = 1; i < kBands; ++i) {
    fields_.push_back(
        {Tr("Threshold of band %1", {std::to_string(i + 1)}), {"RangeEquipFROM" + std::to_string(i - 1)}});
  }
  fields_.push_back({Tr("Additional yield"), {"AdditionalPremiumYield"}});
  for (std::size_t i = 0; i < fields_.size(); ++i) CboField.Add(fields_[i].name, static_cast<int>(i));
  CboField.SetListIndex(0);
}

void FrmRates::FillSuppliers() {
  LvwSuppliers.BeginFill();
  ListSuppliers(database_, {"ID", "CompanyName"}, [this](const std::vector<std::string_view>& texts) {
    LvwSuppliers.Add({std::string(texts[0]), std::string(Trim(texts[1])), {"", ""}, "", false, false});
  });
  LvwSuppliers.SortColumn = 0;
  LvwSuppliers.Sort();
  LvwSuppliers.EndFill();
}

void FrmRates::TickAll(bool ticked) {
  LvwSuppliers.BeginFill();
  for (int row = 0; row < LvwSuppliers.Count(); ++row) LvwSuppliers.SetChecked(row, ticked);
  LvwSuppliers.EndFill();
  Plan();
}

std::vector<int> FrmRates::Ticked() const {
  std::vector<int> ids;
  for (const ListView::Row& row : LvwSuppliers.Rows()) {
    const int id = IdOfKey(row.key);
    if (row.checked && !(CboAction.ItemData() == kCopy && id == source_.id)) ids.push_back(id);
  }
  return ids;
}

ImportPlan FrmRates::Planned() const {
  const int action = CboAction.ItemData();
  if (action == kCopy) return PlanRateCardCopy(database_, source_.id, Ticked());
  RateChange change;
  change.columns = fields_[static_cast<std::size_t>(std::max(CboField.ItemData(), 0))].columns;
  change.step = action == kMultiply ? RateStep::Multiply : action == kSet ? RateStep::Set : RateStep::Add;
  change.amount = action == kSubtract ? -LeadingNumber(TxtAmount.Text()) : LeadingNumber(TxtAmount.Text());
  return PlanRateChange(database_, Ticked(), change);
}

void FrmRates::Plan() {
  const bool copies = CboAction.ItemData() == kCopy;
  CboField.SetEnabled(!copies);
  TxtAmount.SetEnabled(!copies);
  std::string buffer;
  const bool amount = ExactNumberText(TxtAmount.Text(), buffer).has_value();
  TxtAmount.SetFault(copies || amount || TxtAmount.Text().empty() ? "" : Tr("Write a number, such as 0.25"));
  plan_.reset();
  try {
    if (copies || amount) plan_ = Planned();
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
  ShowPlan();
}

void FrmRates::ShowPlan() {
  static constexpr const char* kWords[] = {Marked("new"), Marked("changed"), Marked("unchanged"), Marked("refused")};
  std::map<int, const PlannedRow*> byId;
  const std::vector<int> ticked = Ticked();
  // Rows stand in the order in which the suppliers were given.
  for (std::size_t i = 0; plan_ && i < plan_->rows.size() && i < ticked.size(); ++i) byId[ticked[i]] = &plan_->rows[i];
  LvwSuppliers.BeginFill();
  for (int row = 0; row < LvwSuppliers.Count(); ++row) {
    const auto found = byId.find(IdOfKey(LvwSuppliers.At(row).key));
    const PlannedRow* planned = found == byId.end() ? nullptr : found->second;
    LvwSuppliers.SetCell(row, kResultCell, planned ? Tr(kWords[static_cast<std::size_t>(planned->fate)]) : "");
    LvwSuppliers.SetCell(row, kDetailCell, planned ? planned->detail : "");
  }
  LvwSuppliers.EndFill();
  const long changed = plan_ ? plan_->Count(Fate::Changed) : 0, refused = plan_ ? plan_->Count(Fate::Refused) : 0;
  CmdApply.SetEnabled(changed > 0 && refused == 0);
  const std::string counts = Tr("%1 changed, %2 refused", {std::to_string(changed), std::to_string(refused)});
  LblSummary.SetCaption(refused == 0 ? counts : Tr("%1. Nothing can be changed while a row is refused.", {counts}));
}

void FrmRates::Apply() {
  if (!plan_) return;
  try {
    stored_(StoreImport(database_, *plan_));
    Close();
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
    Plan();
  }
}

}  // namespace tarvolinex
