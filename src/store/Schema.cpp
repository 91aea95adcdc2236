#include "store/Schema.h"

#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "store/KeptContent.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

namespace {

using Kind = ColumnKind;
using Columns = std::vector<ColumnDesign>;

void AddNumbered(Columns& columns, const std::string& name, Kind kind) {
  for (int i = 0; i < 5; ++i) columns.push_back({name + std::to_string(i), kind});
}

// Of a supplier, and of what a new one begins with.
Columns SupplierColumns() {
  Columns columns = {{"ID", Kind::Id},
                     {"CompanyName", Kind::Text, 50},
                     {"Address1", Kind::Text, 50},
                     {"Address2", Kind::Text, 50},
                     {"Town", Kind::Text, 50},
                     {"County", Kind::Text, 50},
                     {"PostCode", Kind::Text, 15},
                     {"tel", Kind::Text, 30},
                     {"fax", Kind::Text, 30},
                     {"email", Kind::Text, 50},
                     {"www", Kind::Text, 50},
                     {"equipment", Kind::Text, 50}};
  AddNumbered(columns, "RangeEquipFROM", Kind::Currency);
  AddNumbered(columns, "Yield", Kind::Single);
  AddNumbered(columns, "Com", Kind::Single);
  const Columns options = {{"AdditionalPremium", Kind::YesNo},       {"AdditionalPremiumMsg", Kind::Text, 30},
                           {"AdditionalPremiumYield", Kind::Single}, {"AdditionalPremiumMin", Kind::Currency},
                           {"MaintenanceOption", Kind::YesNo},       {"ResidualOption", Kind::YesNo}};
  columns.insert(columns.end(), options.begin(), options.end());
  return columns;
}

std::vector<TableDesign> SupplierTables() {
  return {
      {"suppliers", SupplierColumns()},
      {"DefaultSupplier", SupplierColumns()},
      {"Forms",
       {{"ID", Kind::Id}, {"Description", Kind::Text, 100}, {"LinkName", Kind::Text, 50}, {"Available", Kind::YesNo}}},
      // Rows are inserted by position: FormId comes first.
      {"SupplierFormLink", {{"FormId", Kind::WholeNumber}, {"SupplierId", Kind::WholeNumber}}, "SupplierId"},
      {"contacts",
       {{"ID", Kind::Id},
        {"Supplierid", Kind::WholeNumber},
        {"firstname", Kind::Text, 30},
        {"surname", Kind::Text, 30},
        {"jobtitle", Kind::Text, 50},
        {"tel", Kind::Text, 30},
        {"fax", Kind::Text, 30},
        {"email", Kind::Text, 50},
        {"DateLastSent", Kind::Moment}},
       "Supplierid"}};
}

struct ColumnKindOf {
  ColumnKind operator()(std::int16_t*) const { return ColumnKind::SmallNumber; }
  ColumnKind operator()(float*) const { return ColumnKind::Single; }
  ColumnKind operator()(Currency*) const { return ColumnKind::Currency; }
  ColumnKind operator()(bool*) const { return ColumnKind::YesNo; }
};

// A column for each input as it was asked, and then for each figure as it was priced.
std::vector<TableDesign> QuoteTables() {
  TableDesign quotes = {"KeptQuotes",
                        {{"ID", Kind::Id},
                         {"QuoteDate", Kind::Day},
                         {"SupplierId", Kind::WholeNumber},
                         {"CompanyName", Kind::Text, 50},
                         {"Customer", Kind::Text, kMostInCustomer},
                         {"CustomerEmail", Kind::Text, kMostInEmail},
                         {"CustomerTel", Kind::Text, kMostInTel},
                         {"Equipment", Kind::Text, kMostInEquipment},
                         {"Reference", Kind::Text, kMostInReference},
                         {"Note", Kind::Text, kMostInNote},
                         {"StartDate", Kind::Day},
                         {"ValidUntil", Kind::Day},
                         {"State", Kind::Text, 10},
                         {"Mode", Kind::SmallNumber},
                         {"CapLock", Kind::YesNo}}};
  QuoteRecord any;
  const auto add = [&](const std::string& before, const QuoteField& field) {
    quotes.columns.push_back({before + field.name, std::visit(ColumnKindOf{}, field.member(any))});
  };
  for (const QuoteField& field : QuoteFields()) {
    if (field.input) add("Asked", field);
  }
  for (const QuoteField& field : QuoteFields()) add("", field);
  quotes.columns.push_back({"SupplierRecord", Kind::WholeNumber});
  quotes.columns.push_back({"PreferencesRecord", Kind::WholeNumber});
  return {{kKeptRecordsTable, {{"ID", Kind::Id}, {"Content", Kind::OnceText}}}, std::move(quotes)};
}

std::vector<TableDesign> DeliveryTables() {
  return {{kDeliveredContentsTable, {{"ID", Kind::Id}, {"Content", Kind::OnceText}}},
          {"Deliveries",
           {{"ID", Kind::Id},
            {"SentAt", Kind::Text, 19},
            {"SupplierId", Kind::WholeNumber},
            {"CompanyName", Kind::Text, 50},
            {"ContactId", Kind::WholeNumber},
            {"Contact", Kind::Text, 120},
            {"Email", Kind::Text, 100},
            {"SentAs", Kind::Text, 10},
            {"Result", Kind::Text, 250},
            {"Message", Kind::WholeNumber},
            {"OrganisationContent", Kind::WholeNumber},
            {"SupplierContent", Kind::WholeNumber}}}};
}

TableDesign LetterTable() {
  return {"Letters",
          {{"ID", Kind::Id},
           {"SupplierId", Kind::WholeNumber},
           {"CompanyName", Kind::Text, 50},
           {"ContactId", Kind::WholeNumber},
           {"Contact", Kind::Text, 120},
           {"FirstName", Kind::Text, 50},
           {"Email", Kind::Text, 100},
           {"Subject", Kind::Text, 250},
           {"Message", Kind::Text},
           {"Way", Kind::SmallNumber},
           {"Instructions", Kind::YesNo},
           {"State", Kind::Text, 10},
           {"Detail", Kind::Text, 250}}};
}

TableDesign ChangesTable() {
  return {"Changes",
          {{"ID", Kind::Id},
           {"What", Kind::Text, 10},
           {"RowId", Kind::WholeNumber},
           {"ChangedBy", Kind::Text, 60},
           {"ChangedAt", Kind::Text, 19}},
          "RowId"};
}

std::vector<TableDesign> TablesOf(SchemaStep step) {
  switch (step) {
    case SchemaStep::Suppliers:
      return SupplierTables();
    case SchemaStep::Quotes:
      return QuoteTables();
    case SchemaStep::Deliveries:
      return DeliveryTables();
    case SchemaStep::Letters:
      return {LetterTable()};
    case SchemaStep::OfficeFiles:
      // Of a database on a server: one in a file has them beside it.
      return {{kOfficeFilesTable,
               {{"ID", Kind::Id}, {"Name", Kind::Text, 250}, {"Print", Kind::Text, 64}, {"Content", Kind::Text}}}};
    case SchemaStep::Changes:
      return {ChangesTable()};
    case SchemaStep::Office:
      break;
  }
  // What the desks of a server have in common; a file has it beside it.
  return {{"Office", {{"ID", Kind::Id}, {"Name", Kind::Text, 60}, {"Content", Kind::Text}}}};
}

}  // namespace

void BringTo(Connection& connection, SchemaStep step) {
  const int wanted = static_cast<int>(step);
  if (connection.SchemaVersion() >= wanted) return;
  connection.Begin();
  try {
    for (int done = connection.SchemaVersion(); done < wanted; ++done) {
      for (const TableDesign& table : TablesOf(static_cast<SchemaStep>(done + 1))) connection.MakeTable(table);
    }
    connection.SetSchemaVersion(std::max(wanted, connection.SchemaVersion()));
    connection.Commit();
  } catch (const RuntimeError&) {
    connection.Rollback();
    throw;
  }
}

void RefuseNewer(Connection& connection, const std::string& name) {
  if (connection.SchemaVersion() <= static_cast<int>(kNewestStep)) return;
  throw RuntimeError(kDatabase, Tr("The database %1 belongs to a newer version of this program. Please install that "
                                   "version on this machine too; nothing was changed",
                                   {name}));
}

std::vector<TableDesign> AllTables() {
  std::vector<TableDesign> tables;
  for (int step = 1; step <= static_cast<int>(kNewestStep); ++step) {
    for (TableDesign& table : TablesOf(static_cast<SchemaStep>(step))) tables.push_back(std::move(table));
  }
  return tables;
}

}  // namespace tarvolinex
