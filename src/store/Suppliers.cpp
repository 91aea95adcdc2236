#include "store/Suppliers.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// A field of the record from the column of its name; a column that the table lacks reads as Null.
struct FieldReader {
  const Value& value;
  // Whether a field that holds a number finds one, or nothing. Another program may have stored anything.
  bool Fits(const FieldMember& field) const {
    const auto* text = std::get_if<std::string>(&value);
    if (std::holds_alternative<FixedText*>(field) || std::holds_alternative<bool*>(field)) return true;
    std::string buffer;
    return text ? Trim(*text).empty() || ExactNumberText(*text, buffer) : std::isfinite(ValueNumber(value));
  }
  // The record's key has 16 bits; a larger one is left out rather than cut to another supplier's.
  void operator()(std::int16_t* field) const {
    const double number = ValueNumber(value);
    *field = number >= 0 && number <= std::numeric_limits<std::int16_t>::max() ? static_cast<std::int16_t>(number) : 0;
  }
  void operator()(std::int32_t*) const {}
  void operator()(Colour*) const {}
  void operator()(float* field) const { *field = static_cast<float>(ValueNumber(value)); }
  void operator()(Currency* field) const {
    const auto* exact = std::get_if<Currency>(&value);
    const auto* text = std::get_if<std::string>(&value);
    std::string buffer;
    const auto number = text ? ExactNumberText(*text, buffer) : std::nullopt;
    const auto amount = exact    ? *exact
                        : number ? Currency::FromText(*number)
                                 : Currency::FromDouble(ValueNumber(value));
    *field = amount.value_or(Currency());
  }
  void operator()(bool* field) const { *field = ValueTruth(value); }
  void operator()(FixedText* field) const { *field = Trim(ValueText(value)); }
  void operator()(std::span<char>) const {}
};

// As a statement has it.
std::string LiteralOf(const Value& value) {
  if (IsNull(value)) return "NULL";
  const auto* truth = std::get_if<bool>(&value);
  if (truth) return *truth ? "YES" : "NO";
  return "'" + EscapeQuotes(ValueText(value)) + "'";
}

std::string InsertStatement(std::string_view statement, const FieldLists& fields) {
  return FillStatement(statement,
                       {{"<FIELDS>", WithoutLast(fields.columns)}, {"<VALUES>", WithoutLast(fields.values)}});
}

// What puts the supplier with its contacts and form links back under their own IDs.
std::vector<std::string> RestoringStatements(Database& database, int id) {
  std::vector<std::string> restore;
  const SupplierRow supplier = ReadSupplier(database, id);
  if (supplier.Found()) restore.push_back(FillStatement(statements::kInsertSupplier, RowLists(supplier.row)));
  Recordset rows;
  database.OpenRecordset(FillStatement(statements::kContacts, "<SUPPLIERID>", id), rows);
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    restore.push_back(FillStatement(statements::kRestoreContact, RowLists(Row(rows))));
  }
  database.OpenRecordset(FillStatement(statements::kFormLinks, "<ID>", id), rows);
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    restore.push_back(FillStatement(statements::kInsertFormLink,
                                    {{"<formid>", rows.Field("FormId")}, {"<supplierid>", std::int64_t{id}}}));
  }
  return restore;
}

}  // namespace

int IdOfKey(std::string_view key) {
  const std::string number = ReplaceAll(key, "ID", "");
  int id = 0;
  std::from_chars(number.data(), number.data() + number.size(), id);
  return id;
}

bool IsNoNumber(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  std::string buffer;
  return text && !Trim(*text).empty() && !ExactNumberText(*text, buffer);
}

SupplierCalcSettingsRecord ReadSupplierSettings(const Row& supplier) {
  SupplierCalcSettingsRecord loaded;
  for (const auto& field : FieldsOf(loaded)) {
    const Value& value = supplier.At(field.name);
    const FieldReader reader{value};
    if (!reader.Fits(field.member(loaded))) {
      throw RuntimeError(kItemNotFound, Tr("%1: the column %2 holds \"%3\", which is no number",
                                           {loaded.CompanyName.Trimmed(), field.name, ValueText(value)}));
    }
    std::visit(reader, field.member(loaded));
  }
  return loaded;
}

SupplierRow ReadSupplier(Database& database, int id) {
  Recordset found;
  found.Open(FillStatement(statements::kSupplier, "<ID>", id), database.Plain());
  SupplierRow supplier;
  supplier.id = id;
  supplier.row = Row(found);
  try {
    supplier.settings = ReadSupplierSettings(supplier.row);
  } catch (const RuntimeError& failure) {
    supplier.rateCardFault = failure.Description();
    supplier.settings.CompanyName = supplier.row.Text("CompanyName");
  }
  return supplier;
}

void ForeseeSupplier(Database& database, int id) {
  database.Plain().Foresee({FillStatement(statements::kSupplier, "<ID>", id),
                            FillStatement(statements::kFormLinks, "<ID>", id),
                            FillStatement(statements::kContacts, "<SUPPLIERID>", id)});
}

Row ReadDefaultSupplier(Database& database) {
  Recordset defaults;
  database.OpenRecordset(statements::kDefaultSupplier, defaults);
  return Row(defaults);
}

void ListSuppliers(Database& database, const std::vector<std::string>& columns, const Recordset::RowReader& read) {
  Recordset suppliers;
  database.OpenRecordset(statements::kSuppliers, suppliers, false);
  suppliers.ReadRows(columns, read);
}

void ForEachSupplier(Database& database, const std::function<void(const Recordset&)>& read) {
  Recordset suppliers;
  database.OpenRecordset(statements::kSuppliers, suppliers);
  for (; !suppliers.EndOfFile(); suppliers.MoveNext()) read(suppliers);
}

bool SupplierIsStored(Database& database, int id) {
  if (!database.IsOpen()) return false;
  Recordset found;
  found.Open(FillStatement(statements::kSupplierId, "<ID>", id), database.Plain());
  return !found.EndOfFile();
}

void UpdateSupplier(Database& database, int id, const FieldLists& fields) {
  if (fields.assignments.empty()) return;
  database.ExecuteStatement(FillStatement(statements::kUpdateSupplier,
                                          {{"<VALUES>", WithoutLast(fields.assignments)}, {"<ID>", std::int64_t{id}}}));
}

void InsertSupplier(Database& database, const FieldLists& fields) {
  database.ExecuteStatement(InsertStatement(statements::kInsertSupplier, fields));
}

void ReplaceDefaultSupplier(Database& database, const FieldLists& fields) {
  Transaction transaction(database);
  database.ExecuteStatement(statements::kDeleteDefaultSupplier);
  database.ExecuteStatement(InsertStatement(statements::kInsertDefaultSupplier, fields));
  transaction.Commit();
}

void UpdateDefaultSupplier(Database& database, const Row& row, const std::set<std::string>& columns) {
  std::string assignments;
  for (const std::string& column : columns) assignments += column + " = " + LiteralOf(row.At(column)) + ",";
  if (assignments.empty()) return;
  database.ExecuteStatement(FillStatement(statements::kUpdateDefaultSupplier, "<VALUES>", WithoutLast(assignments)));
}

void ForeseeDefaultSupplier(Database& database) {
  database.Plain().Foresee(
      {std::string(statements::kDefaultSupplier), FillStatement(statements::kFormLinks, "<ID>", 0)});
}

std::vector<Filling> RowLists(const Row& row) {
  std::string columns, values;
  for (const Row::Field& field : row.Fields()) {
    columns += (columns.empty() ? "" : ",") + field.column;
    values += values.empty() ? "" : ",";
    values += LiteralOf(field.value);
  }
  return {{"<FIELDS>", columns}, {"<VALUES>", values}};
}

int PutRowBack(Database& database, std::string_view table, const Row& row) {
  const std::string name(table);
  Recordset taken;
  database.OpenRecordset(
      FillStatement(statements::kRowOfId, {{"<TABLE>", name}, {"<ID>", std::int64_t{row.Number("ID")}}}), taken);
  std::vector<Filling> fillings = RowLists(taken.EndOfFile() ? row : row.Without("ID"));
  taken.Close();
  fillings.push_back({"<TABLE>", name});
  database.ExecuteStatement(FillStatement(statements::kInsertRow, fillings));
  return database.Plain().LastInsertedId();
}

void PutSupplierBack(Database& database, const Row& supplier, const std::vector<Row>& contacts,
                     const std::set<int>& forms) {
  const int id = supplier.Number("ID");
  Transaction transaction(database);
  if (SupplierIsStored(database, id)) return;
  PutRowBack(database, "suppliers", supplier);
  for (const Row& contact : contacts) PutRowBack(database, "contacts", contact);
  for (const int form : forms) {
    database.ExecuteStatement(FillStatement(statements::kInsertFormLink,
                                            {{"<formid>", std::int64_t{form}}, {"<supplierid>", std::int64_t{id}}}));
  }
  transaction.Commit();
}

RemovedRows DeleteSupplier(Database& database, int id) {
  const RemovedRows removed{id, 0, RestoringStatements(database, id)};
  Transaction transaction(database);
  database.ExecuteStatement(FillStatement(statements::kDeleteSupplier, "<ID>", id));
  database.ExecuteStatement(FillStatement(statements::kDeleteFormLinks, "<ID>", id));
  database.ExecuteStatement(FillStatement(statements::kDeleteContacts, "<supplierID>", id));
  transaction.Commit();
  return removed;
}

void RestoreRows(Database& database, const RemovedRows& removed) {
  Transaction transaction(database);
  for (const std::string& statement : removed.statements) database.ExecuteStatement(statement);
  transaction.Commit();
}

}  // namespace tarvolinex
