#include <algorithm>
#include <unordered_map>

#include "exchange/CellValues.h"
#include "exchange/ImportTables.h"
#include "exchange/RowPlanner.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Forms.h"

namespace tarvolinex {

namespace {

constexpr int kThresholds = 4;

class SupplierPlanner {
 public:
  SupplierPlanner(Database& database, const Table& table, std::span<const TextRow> rows, const ColumnChoice& choice)
      : table_(table),
        planner_(table, choice, rows),
        id_(table.Find("ID")),
        name_(table.Find("CompanyName")),
        postCode_(table.Find("PostCode")),
        byId_(RowsById(table)),
        largestId_(LargestId(database, table.name)) {
    const Row defaults = ReadDefaultSupplier(database);
    for (const TableColumn& column : table.columns) usual_.push_back(defaults.At(column.name));
    for (int i = 0; i < kThresholds; ++i) thresholds_.push_back(table.Find("RangeEquipFROM" + std::to_string(i)));
    for (std::size_t i = 0; i < table.rows.size(); ++i) byName_.emplace(StoredKey(i), i);
    for (const TextRow& row : rows) {
      Faults ignored;
      largestId_ = std::max(largestId_, planner_.Id(row, id_, ignored));
    }
  }

  PlannedRow Plan(const TextRow& row, TableChange& change) {
    Faults faults;
    planner_.CheckLength(row, faults);
    const int id = planner_.Id(row, id_, faults);
    const std::vector<Value>* stored = Stored(row, id, faults);
    RowChange written;
    written.isNew = !stored;
    written.fields = planner_.Compare(row, stored, 0, faults);
    std::erase_if(written.fields, [&](const FieldChange& field) { return field.column == id_; });
    CheckName(row, written, faults);
    if (faults.None()) CheckThresholds(written, stored, faults);
    if (!faults.None()) return {row.line, Fate::Refused, 0, faults.Text()};
    if (stored && written.fields.empty()) return {row.line, Fate::Unchanged, IdOf(*stored), ""};
    written.id = stored ? IdOf(*stored) : id != 0 ? id : ++largestId_;
    PlannedRow planned = {row.line, stored ? Fate::Changed : Fate::New, written.id,
                          stored ? planner_.Told(written.fields) : std::string(planner_.Cell(row, name_))};
    if (!stored) Complete(written);
    change.rows.push_back(std::move(written));
    return planned;
  }

 private:
  int IdOf(const std::vector<Value>& stored) const {
    return static_cast<int>(ValueNumber(stored[static_cast<std::size_t>(id_)]));
  }
  std::string StoredKey(std::size_t row) const {
    const auto text = [&](int column) { return ValueText(table_.rows[row][static_cast<std::size_t>(column)]); };
    return planner_.Has(postCode_) ? KeyOf(text(name_), text(postCode_)) : KeyOf(text(name_));
  }

  // The row's supplier in the database; nullptr when it is new. A supplier that another row is about is a fault.
  const std::vector<Value>* Stored(const TextRow& row, int id, Faults& faults) {
    const std::string key = planner_.Has(postCode_) ? KeyOf(planner_.Cell(row, name_), planner_.Cell(row, postCode_))
                                                    : KeyOf(planner_.Cell(row, name_));
    auto found = byId_.find(id) == byId_.end() ? table_.rows.size() : byId_.at(id);
    if (found == table_.rows.size() && planner_.Has(name_)) {
      const auto [first, last] = byName_.equal_range(key);
      if (std::distance(first, last) > 1) faults.Add("CompanyName", Tr("several suppliers have this name"));
      if (first != last) found = first->second;
    }
    const bool stored = found < table_.rows.size();
    const int other = stored ? IdOf(table_.rows[found]) : id;
    if (other == 0 && planner_.Cell(row, name_).empty()) return nullptr;  // it is refused for that
    const auto [line, isFirst] = lines_.try_emplace(other != 0 ? '#' + std::to_string(other) : key, row.line);
    if (isFirst && !stored && id != 0) lines_.try_emplace(key, row.line);
    if (!isFirst) {
      faults.Add("", Tr("the row is about the same supplier as line %1", {std::to_string(line->second)}));
    }
    return stored ? &table_.rows[found] : nullptr;
  }

  void CheckName(const TextRow& row, const RowChange& written, Faults& faults) const {
    const bool named = planner_.Has(name_) && !Trim(planner_.Cell(row, name_)).empty();
    const bool renamed =
        std::ranges::any_of(written.fields, [&](const FieldChange& field) { return field.column == name_; });
    if (!named && (written.isNew || renamed)) {
      faults.Add("CompanyName", Tr("a supplier needs a name"));
    }
  }

  // Thresholds that a row changes have to fall.
  void CheckThresholds(const RowChange& row, const std::vector<Value>* stored, Faults& faults) const {
    bool changed = false;
    double above = 0;
    for (int i = 0; i < kThresholds; ++i) {
      const int place = thresholds_[static_cast<std::size_t>(i)];
      if (place < 0) return;
      const auto field = std::find_if(row.fields.begin(), row.fields.end(),
                                      [&](const FieldChange& each) { return each.column == place; });
      const bool written = field != row.fields.end();
      const Value& value = written                ? field->to
                           : stored               ? (*stored)[static_cast<std::size_t>(place)]
                           : !planner_.Has(place) ? usual_[static_cast<std::size_t>(place)]
                                                  : kNothing;
      changed = changed || written || !stored;
      const double threshold = ValueNumber(value);
      if (i > 0 && threshold > above && changed) {
        return faults.Add(table_.columns[static_cast<std::size_t>(place)].name,
                          Tr("%1 is above the threshold before it, %2", {CellText(value), FormatFixed(above, 2)}));
      }
      above = threshold;
    }
  }

  // A new supplier begins like one in the window: what the file does not give is the default supplier's.
  void Complete(RowChange& row) const {
    row.fields.insert(row.fields.begin(), {id_, Null{}, std::int64_t{row.id}});
    for (int column = 0; column < static_cast<int>(table_.columns.size()); ++column) {
      const Value& usual = usual_[static_cast<std::size_t>(column)];
      if (column != id_ && !planner_.Has(column) && !IsNull(usual)) row.fields.push_back({column, Null{}, usual});
    }
  }

  inline static const Value kNothing = Null{};
  const Table& table_;
  RowPlanner planner_;
  const int id_, name_, postCode_;
  std::unordered_map<int, std::size_t> byId_;
  std::unordered_multimap<std::string, std::size_t> byName_;
  std::unordered_map<std::string, long> lines_;  // by "#" and ID, or key of a new one: the line that is about it
  int largestId_;
  std::vector<Value> usual_;     // of each column, the default supplier's
  std::vector<int> thresholds_;  // their columns; -1 = none
};

}  // namespace

void PlanSuppliers(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice, ImportPlan& plan) {
  const auto table = std::make_shared<Table>(ReadSupplierTable(database));
  plan.tables.push_back(table);
  SupplierPlanner planner(database, *table, rows, choice);
  TableChange change = {table.get(), {}};
  for (const TextRow& row : rows) plan.rows.push_back(planner.Plan(row, change));
  const std::vector<int> forms = FormLinksOf(database, 0);
  for (const RowChange& row : change.rows) {
    for (const int form : forms) {
      if (row.isNew) plan.change.links.push_back({form, row.id});
    }
  }
  plan.change.tables.push_back(std::move(change));
}

}  // namespace tarvolinex
