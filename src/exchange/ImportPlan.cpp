#include "exchange/ImportPlan.h"

#include <algorithm>
#include <array>

#include "exchange/ImportTables.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::string HeadingKey(std::string_view name) {
  return FoldCase(ReplaceAll(ReplaceAll(name, " ", ""), "_", ""));
}

}  // namespace

std::string_view FateName(Fate fate) {
  static constexpr std::array<std::string_view, 4> kNames = {"new", "changed", "unchanged", "refused"};
  return kNames[static_cast<std::size_t>(fate)];
}

long ImportPlan::Count(Fate fate) const {
  return std::count_if(rows.begin(), rows.end(), [&](const PlannedRow& row) { return row.fate == fate; });
}

std::vector<std::string> KnownColumns(Database& database, ImportKind kind) {
  return NamesOf(kind == ImportKind::Suppliers ? ReadSupplierTable(database, Rows::None)
                                               : ReadContactTable(database, Rows::None));
}

std::vector<std::string> NamesOf(const Table& table) {
  std::vector<std::string> names;
  for (const TableColumn& column : table.columns) names.push_back(column.name);
  return names;
}

ColumnChoice ChoiceOf(const TextRow& heading, const std::vector<std::string>& known, UnknownColumns unknown) {
  std::string all;
  for (const std::string& name : known) all += (all.empty() ? "" : ", ") + name;
  ColumnChoice choice;
  for (const std::string& cell : heading.cells) {
    const auto found = std::find_if(known.begin(), known.end(),
                                    [&](const std::string& name) { return HeadingKey(name) == HeadingKey(cell); });
    const int place = found == known.end() ? -1 : static_cast<int>(found - known.begin());
    if (place < 0 && unknown == UnknownColumns::Refuse && !Trim(cell).empty()) {
      throw RuntimeError(kItemNotFound, Tr("\"%1\" in line %2 is no column. The first line has to name the columns, "
                                           "which may be: %3",
                                           {cell, std::to_string(heading.line), all}));
    }
    if (place >= 0 && std::find(choice.begin(), choice.end(), place) != choice.end()) {
      throw RuntimeError(kItemNotFound, Tr("The first line names the column %1 twice", {cell}));
    }
    choice.push_back(place);
  }
  return choice;
}

ImportPlan PlanImport(Database& database, ImportKind kind, const std::vector<TextRow>& rows,
                      const ColumnChoice& choice) {
  ImportPlan plan;
  plan.change.version = DatabaseVersion(database);
  if (kind == ImportKind::Suppliers) {
    PlanSuppliers(database, rows, choice, plan);
  } else {
    PlanContacts(database, rows, choice, {}, plan);
  }
  return plan;
}

RemovedRows StoreImport(Database& database, const ImportPlan& plan) {
  return StoreChange(database, plan.change);
}

}  // namespace tarvolinex
