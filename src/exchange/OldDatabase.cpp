#include "exchange/OldDatabase.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

#include "exchange/ImportTables.h"
#include "exchange/RowPlanner.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/network/OtherProgram.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Forms.h"

namespace tarvolinex {

namespace {

// What a program of mdbtools prints.
std::string Printed(const std::string& program, std::vector<std::string> arguments) {
  constexpr std::chrono::minutes kPatience(5);
  constexpr std::int64_t kLongest = std::int64_t{1} << 30;
  const std::string name = Tr("The program %1 of the package mdbtools", {program});
  // Numbers as they are written everywhere, whatever the desktop's language.
  arguments.insert(arguments.begin(), {"LC_ALL=C.UTF-8", program});
  return RunProgram({name, "env", arguments, kDeviceError, kPatience, kLongest}, "", {}, {});
}

// The tables of a file, read when they are asked for.
class OldFile {
 public:
  explicit OldFile(const std::string& path) : path_(WholePath(path)) {
    if (!FileExists(path_)) throw RuntimeError(kFileNotFound, Tr("There is no file %1", {path}));
    path_ = NativePath(path_);
    const std::string names = Printed("mdb-tables", {"-1", path_});
    for (const std::string_view name : Split(names, '\n')) names_.emplace_back(name);
  }

  // The first row names the columns. Throws when the file has no such table.
  std::vector<TextRow> Rows(const std::string& table) const {
    const auto found =
        std::find_if(names_.begin(), names_.end(), [&](const std::string& name) { return EqualNoCase(name, table); });
    if (found == names_.end()) throw RuntimeError(kItemNotFound, Tr("%1 has no table %2", {path_, table}));
    auto rows =
        ReadTextTable(Printed("mdb-export", {"-D", "%Y-%m-%d", "-T", "%Y-%m-%d %H:%M:%S", path_, *found}), table);
    if (rows.empty()) throw RuntimeError(kItemNotFound, Tr("%1 has no table %2", {path_, table}));
    return rows;
  }

 private:
  std::string path_;
  std::vector<std::string> names_;
};

// The rows of one table of the file, with the places of the columns of ours.
struct OldTable {
  std::vector<TextRow> rows;
  ColumnChoice choice;

  OldTable(const OldFile& file, const std::string& name, const std::vector<std::string>& known)
      : rows(file.Rows(name)), choice(ChoiceOf(rows.front(), known, UnknownColumns::LeaveOut)) {
    rows.erase(rows.begin());
  }
  // The row's cell of that column of ours; nullptr when there is none.
  std::string* Cell(TextRow& row, int column) const {
    const auto place = std::find(choice.begin(), choice.end(), column) - choice.begin();
    return column >= 0 && place < std::ssize(row.cells) && place < std::ssize(choice)
               ? &row.cells[static_cast<std::size_t>(place)]
               : nullptr;
  }
  std::string Text(TextRow& row, int column) const {
    const std::string* cell = Cell(row, column);
    return cell ? *cell : "";
  }
};

using IdMap = std::map<std::string, int>;  // the file's IDs, as it writes them, and ours

class OldDatabasePlanner {
 public:
  OldDatabasePlanner(Database& database, const std::string& path) : database_(database), file_(path) {
    plan_.change.version = DatabaseVersion(database);
  }

  ImportPlan Plan() {
    PlanForms();
    PlanSuppliersAndDefault();
    PlanTheirContacts();
    PlanLinks();
    return std::move(plan_);
  }

 private:
  // Takes the ID of a row whose namesake here has another one: of the same ID, the texts of `names` have to agree.
  static void FreeId(const Table& table, OldTable& old, const std::vector<int>& names) {
    const auto byId = RowsById(table);
    const int column = table.Find("ID");
    for (TextRow& row : old.rows) {
      std::string* id = old.Cell(row, column);
      const auto found = id ? byId.find(static_cast<int>(LeadingNumber(*id))) : byId.end();
      if (found == byId.end()) continue;
      const bool same = std::all_of(names.begin(), names.end(), [&](int name) {
        return name < 0 || KeyOf(old.Text(row, name)) ==
                               KeyOf(ValueText(table.rows[found->second][static_cast<std::size_t>(name)]));
      });
      if (!same) id->clear();
    }
  }

  static std::vector<std::string> IdsOf(OldTable& old, int column) {
    std::vector<std::string> ids;
    for (TextRow& row : old.rows) ids.push_back(old.Text(row, column));
    return ids;
  }

  // Notes which of ours the rows from `first` on became, and says of which table they are.
  IdMap Close(const std::string& table, std::size_t first, const std::vector<std::string>& ids) {
    IdMap map;
    for (std::size_t i = first; i < plan_.rows.size(); ++i) {
      PlannedRow& row = plan_.rows[i];
      if (i - first < ids.size() && row.id != 0) map.emplace(ids[i - first], row.id);
      row.detail = row.detail.empty() ? table : table + ": " + row.detail;
    }
    return map;
  }

  void PlanForms() {
    const auto table = std::make_shared<Table>(ReadTable(database_, "Forms"));
    OldTable old(file_, "forms", NamesOf(*table));
    const auto ids = IdsOf(old, table->Find("ID"));
    FreeId(*table, old, {table->Find("Description")});
    PlanNamedRows(table, old, table->Find("Description"));
    forms_ = Close("forms", 0, ids);
  }

  // Rows of a table whose rows are found by ID or else by one text.
  void PlanNamedRows(const std::shared_ptr<Table>& table, OldTable& old, int name) {
    const RowPlanner planner(*table, old.choice, old.rows);
    const auto byId = RowsById(*table);
    std::map<std::string, std::size_t> byName;
    for (std::size_t i = 0; name >= 0 && i < table->rows.size(); ++i) {
      byName.emplace(KeyOf(ValueText(table->rows[i][static_cast<std::size_t>(name)])), i);
    }
    int largest = LargestId(database_, table->name);
    for (const TextRow& row : old.rows) {
      Faults ignored;
      largest = std::max(largest, planner.Id(row, 0, ignored));
    }
    TableChange change = {table.get(), {}};
    for (const TextRow& row : old.rows) {
      Faults faults;
      const int id = planner.Id(row, 0, faults);
      const auto named = byName.find(KeyOf(planner.Cell(row, name)));
      const bool known = byId.contains(id);
      const std::vector<Value>* stored = known                   ? &table->rows[byId.at(id)]
                                         : named != byName.end() ? &table->rows[named->second]
                                                                 : nullptr;
      RowChange written = {stored    ? static_cast<int>(ValueNumber((*stored)[0]))
                           : id != 0 ? id
                                     : ++largest,
                           !stored, planner.Compare(row, stored, 1, faults)};
      const Fate fate = !faults.None()           ? Fate::Refused
                        : !stored                ? Fate::New
                        : written.fields.empty() ? Fate::Unchanged
                                                 : Fate::Changed;
      plan_.rows.push_back({row.line, fate, written.id,
                            fate == Fate::Refused ? faults.Text()
                            : stored              ? planner.Told(written.fields)
                                                  : std::string(planner.Cell(row, name))});
      if (!stored) written.fields.push_back({0, Null{}, std::int64_t{written.id}});
      if (!written.fields.empty()) change.rows.push_back(std::move(written));
    }
    plan_.tables.push_back(table);
    plan_.change.tables.push_back(std::move(change));
  }

  void PlanSuppliersAndDefault() {
    const Table table = ReadSupplierTable(database_);
    const auto known = NamesOf(table);
    OldTable old(file_, "suppliers", known);
    const auto ids = IdsOf(old, table.Find("ID"));
    FreeId(table, old, {table.Find("CompanyName")});
    const std::size_t first = plan_.rows.size();
    PlanSuppliers(database_, old.rows, old.choice, plan_);
    plan_.change.links.clear();  // they bring their own
    newSuppliers_.assign(plan_.rows.begin() + static_cast<std::ptrdiff_t>(first), plan_.rows.end());
    suppliers_ = Close("suppliers", first, ids);

    const auto defaults = std::make_shared<Table>(ReadTable(database_, "DefaultSupplier"));
    OldTable standard(file_, "DefaultSupplier", NamesOf(*defaults));
    if (standard.rows.size() > 1) standard.rows.resize(1);
    for (TextRow& row : standard.rows) {
      // There is one row, whatever its ID.
      std::string* id = standard.Cell(row, 0);
      if (id && !defaults->rows.empty()) *id = ValueText(defaults->rows.front()[0]);
    }
    const std::size_t second = plan_.rows.size();
    PlanNamedRows(defaults, standard, -1);
    Close("DefaultSupplier", second, {});
  }

  void PlanTheirContacts() {
    const Table table = ReadContactTable(database_);
    OldTable old(file_, "contacts", NamesOf(table));
    for (TextRow& row : old.rows) {
      std::string* supplier = old.Cell(row, table.Find("SupplierID"));
      const auto ours = supplier ? suppliers_.find(*supplier) : suppliers_.end();
      // One that is not there keeps its number, which no supplier of ours may answer to.
      if (ours != suppliers_.end())
        *supplier = std::to_string(ours->second);
      else if (supplier)
        *supplier = Tr("%1 of the file", {*supplier});
    }
    FreeId(table, old, {table.Find("SupplierID"), table.Find("firstname"), table.Find("surname")});
    const std::size_t first = plan_.rows.size();
    PlanContacts(database_, old.rows, old.choice, newSuppliers_, plan_);
    Close("contacts", first, {});
  }

  void PlanLinks() {
    OldTable old(file_, "SupplierFormLink", {"FormId", "SupplierId"});
    std::set<FormLink> known;
    for (const auto& [supplier, forms] : FormLinksOfAll(database_)) {
      for (const int form : forms) known.insert({form, supplier});
    }
    suppliers_["0"] = 0;
    for (TextRow& row : old.rows) {
      const std::string formId = old.Text(row, 0), supplierId = old.Text(row, 1);
      const auto form = forms_.find(formId);
      const auto supplier = suppliers_.find(supplierId);
      PlannedRow planned = {row.line, Fate::Unchanged, 0, "SupplierFormLink"};
      if (form == forms_.end() || supplier == suppliers_.end()) {
        planned.detail += ": " + Tr("form %1 of supplier %2 leads nowhere and is left out", {formId, supplierId});
      } else if (const FormLink link = {form->second, supplier->second}; known.insert(link).second) {
        planned.fate = Fate::New;
        planned.detail +=
            ": " + Tr("form %1 of supplier %2", {std::to_string(link.form), std::to_string(link.supplier)});
        plan_.change.links.push_back(link);
      }
      plan_.rows.push_back(planned);
    }
  }

  Database& database_;
  OldFile file_;
  ImportPlan plan_;
  std::vector<PlannedRow> newSuppliers_;
  IdMap forms_, suppliers_;
};

}  // namespace

ImportPlan PlanOldDatabase(Database& database, const std::string& path) {
  return OldDatabasePlanner(database, path).Plan();
}

}  // namespace tarvolinex
