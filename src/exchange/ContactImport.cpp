#include <algorithm>
#include <unordered_map>

#include "exchange/ImportTables.h"
#include "exchange/RowPlanner.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr int kId = 0, kSupplier = 1, kCompany = 2, kFirstOwn = 3;  // columns of the table of contacts

// The suppliers of a database by ID and name.
class KnownSuppliers {
 public:
  KnownSuppliers(Database& database, std::span<const PlannedRow> planned) {
    Recordset suppliers;
    suppliers.Open(statements::kSuppliers, database.Plain());
    suppliers.ReadRows({"ID", "CompanyName"}, [&](const std::vector<std::string_view>& texts) {
      Add(static_cast<int>(LeadingNumber(texts[0])), std::string(texts[1]));
    });
    for (const PlannedRow& row : planned) {
      if (row.fate == Fate::New) Add(row.id, row.detail);
    }
  }

  // The supplier that a row names, by its ID or else by its name; 0, with a fault, when there is none.
  int Find(int id, std::string_view name, Faults& faults) const {
    if (id == 0) return FindByName(name, faults);
    const auto found = names_.find(id);
    if (found == names_.end()) {
      faults.Add("SupplierID", Tr("there is no supplier %1", {std::to_string(id)}));
      return 0;
    }
    if (!name.empty() && KeyOf(name) != KeyOf(found->second)) {
      faults.Add("CompanyName", Tr("supplier %1 is \"%2\"", {std::to_string(id), found->second}));
    }
    return id;
  }

 private:
  void Add(int id, const std::string& name) {
    names_.emplace(id, name);
    ids_.emplace(KeyOf(name), id);
  }
  int FindByName(std::string_view name, Faults& faults) const {
    const auto [first, last] = ids_.equal_range(KeyOf(name));
    if (name.empty()) {
      faults.Add("SupplierID", Tr("a new contact needs its supplier"));
    } else if (first == last) {
      faults.Add("CompanyName", Tr("there is no supplier \"%1\"", {std::string(name)}));
    } else if (std::next(first) != last) {
      faults.Add("CompanyName", Tr("several suppliers have this name"));
    } else {
      return first->second;
    }
    return 0;
  }

  std::unordered_map<int, std::string> names_;
  std::unordered_multimap<std::string, int> ids_;
};

class ContactPlanner {
 public:
  ContactPlanner(Database& database, const Table& table, std::span<const TextRow> rows, const ColumnChoice& choice,
                 std::span<const PlannedRow> planned)
      : table_(table),
        planner_(table, choice, rows),
        suppliers_(database, planned),
        firstName_(table.Find("firstname")),
        surname_(table.Find("surname")),
        byId_(RowsById(table)),
        largestId_(LargestId(database, table.name)) {
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
      byName_.emplace(PersonKey(SupplierOf(table.rows[i]), StoredText(i, firstName_), StoredText(i, surname_)), i);
    }
    for (const TextRow& row : rows) {
      Faults ignored;
      largestId_ = std::max(largestId_, planner_.Id(row, kId, ignored));
    }
  }

  PlannedRow Plan(const TextRow& row, TableChange& change) {
    Faults faults;
    planner_.CheckLength(row, faults);
    const int id = planner_.Id(row, kId, faults), supplierId = planner_.Id(row, kSupplier, faults);
    const auto known = byId_.find(id);
    const std::vector<Value>* stored = known == byId_.end() ? nullptr : &table_.rows[known->second];
    const std::string_view company = planner_.Cell(row, kCompany);
    const bool stays = stored && supplierId == SupplierOf(*stored);
    int supplier = 0;
    if (faults.None()) {
      // A contact whose supplier is gone may stay where it is.
      supplier = stored && (stays || supplierId == 0) && company.empty() ? SupplierOf(*stored)
                                                                         : suppliers_.Find(supplierId, company, faults);
    }
    if (!stored && supplier != 0) stored = ByName(row, supplier, faults);
    NoteLine(row, stored ? IdOf(*stored) : id, faults);
    RowChange written;
    written.isNew = !stored;
    written.fields = planner_.Compare(row, stored, kFirstOwn, faults);
    CheckName(written, stored, faults);
    if (stored && supplier != SupplierOf(*stored)) {
      written.fields.push_back({kSupplier, std::int64_t{SupplierOf(*stored)}, std::int64_t{supplier}});
    }
    if (!faults.None()) return {row.line, Fate::Refused, 0, faults.Text()};
    if (stored && written.fields.empty()) return {row.line, Fate::Unchanged, IdOf(*stored), ""};
    written.id = stored ? IdOf(*stored) : id != 0 ? id : ++largestId_;
    PlannedRow planned = {row.line, stored ? Fate::Changed : Fate::New, written.id,
                          stored ? planner_.Told(written.fields) : NameIn(row)};
    if (!stored) Complete(written, supplier);
    change.rows.push_back(std::move(written));
    return planned;
  }

 private:
  static int IdOf(const std::vector<Value>& stored) { return static_cast<int>(ValueNumber(stored[kId])); }
  static int SupplierOf(const std::vector<Value>& stored) { return static_cast<int>(ValueNumber(stored[kSupplier])); }
  std::string StoredText(std::size_t row, int column) const {
    return column < 0 ? "" : ValueText(table_.rows[row][static_cast<std::size_t>(column)]);
  }
  static std::string PersonKey(int supplier, std::string_view firstName, std::string_view surname) {
    return std::to_string(supplier) + '\n' + KeyOf(firstName, surname);
  }
  std::string NameIn(const TextRow& row) const {
    const std::string name =
        std::string(planner_.Cell(row, firstName_)) + ' ' + std::string(planner_.Cell(row, surname_));
    return std::string(Trim(name));
  }

  const std::vector<Value>* ByName(const TextRow& row, int supplier, Faults& faults) const {
    if (!planner_.Has(firstName_) && !planner_.Has(surname_)) return nullptr;
    const auto [first, last] =
        byName_.equal_range(PersonKey(supplier, planner_.Cell(row, firstName_), planner_.Cell(row, surname_)));
    if (first == last) return nullptr;
    if (std::next(first) != last) faults.Add("surname", Tr("several contacts of the supplier have this name"));
    return &table_.rows[first->second];
  }

  // Two rows may not be about one contact.
  void NoteLine(const TextRow& row, int id, Faults& faults) {
    if (id == 0) return;
    const auto [at, isFirst] = lines_.try_emplace(id, row.line);
    if (!isFirst) faults.Add("", Tr("the row is about the same contact as line %1", {std::to_string(at->second)}));
  }

  void CheckName(const RowChange& written, const std::vector<Value>* stored, Faults& faults) const {
    bool changed = !stored;
    std::string name;
    for (const int column : {firstName_, surname_}) {
      const auto field = std::find_if(written.fields.begin(), written.fields.end(),
                                      [&](const FieldChange& each) { return each.column == column; });
      if (field != written.fields.end()) {
        changed = true;
        name += ValueText(field->to);
      } else if (stored && column >= 0) {
        name += ValueText((*stored)[static_cast<std::size_t>(column)]);
      }
    }
    if (changed && Trim(name).empty()) faults.Add("surname", Tr("a contact needs a name"));
  }

  // The search for contacts finds empty texts, and not Null.
  void Complete(RowChange& row, int supplier) const {
    row.fields.push_back({kId, Null{}, std::int64_t{row.id}});
    row.fields.push_back({kSupplier, Null{}, std::int64_t{supplier}});
    for (int column = kFirstOwn; column < static_cast<int>(table_.columns.size()); ++column) {
      const bool text = table_.columns[static_cast<std::size_t>(column)].type == ColumnType::Text;
      if (text && !planner_.Has(column)) row.fields.push_back({column, Null{}, std::string()});
    }
  }

  const Table& table_;
  RowPlanner planner_;
  KnownSuppliers suppliers_;
  const int firstName_, surname_;
  std::unordered_map<int, std::size_t> byId_;
  std::unordered_multimap<std::string, std::size_t> byName_;
  std::unordered_map<int, long> lines_;  // by ID, the line that is about it
  int largestId_;
};

}  // namespace

void PlanContacts(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice,
                  std::span<const PlannedRow> planned, ImportPlan& plan) {
  const auto table = std::make_shared<Table>(ReadContactTable(database));
  plan.tables.push_back(table);
  ContactPlanner planner(database, *table, rows, choice, planned);
  TableChange change = {table.get(), {}};
  for (const TextRow& row : rows) plan.rows.push_back(planner.Plan(row, change));
  plan.change.tables.push_back(std::move(change));
}

}  // namespace tarvolinex
