#include "store/Deliveries.h"

#include <charconv>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "store/Changes.h"
#include "store/KeptContent.h"
#include "store/Row.h"
#include "store/Schema.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr const char* kDeliveriesTable = "Deliveries";
constexpr const char* kTaken = "sent";

int NumberOf(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

void AddDeliveries(Database& database, const std::vector<Delivery>& deliveries,
                   const std::string& organisationIngredients, const std::string& supplierIngredients) {
  BringTo(database.Plain(), SchemaStep::Deliveries);
  const auto keep = [&](const std::string& content) {
    return KeepContent(database.Plain(), kDeliveredContentsTable, content);
  };
  const std::string organisation = keep(organisationIngredients), supplier = keep(supplierIngredients);
  for (const Delivery& each : deliveries) {
    constexpr int kMostInResult = 250;
    database.Plain().Execute(FillStatement(statements::kInsertDelivery,
                                           {{"<DATE>", each.date},
                                            {"<SUPPLIERID>", std::int64_t{each.supplierId}},
                                            {"<COMPANYNAME>", DoubleQuotes(each.companyName)},
                                            {"<CONTACTID>", std::int64_t{each.contactId}},
                                            {"<CONTACT>", DoubleQuotes(each.contact)},
                                            {"<EMAIL>", DoubleQuotes(each.email)},
                                            {"<SENTAS>", each.sentAs},
                                            {"<RESULT>", DoubleQuotes(FirstCharacters(each.result, kMostInResult))},
                                            {"<MESSAGE>", keep(each.subject + "\n\n" + each.message)},
                                            {"<ORGANISATION>", organisation},
                                            {"<SUPPLIER>", supplier}}));
    NoteMaker(database, Changed::Delivery, database.Plain().LastInsertedId());
  }
}

void NoteDeliveries(Database& database, const std::vector<Delivery>& deliveries,
                    const std::string& organisationIngredients, const std::string& supplierIngredients) {
  Connection& connection = database.Plain();
  connection.Begin();
  try {
    AddDeliveries(database, deliveries, organisationIngredients, supplierIngredients);
    connection.Commit();
  } catch (const RuntimeError&) {
    connection.Rollback();
    throw;
  }
}

bool HasDelivery(Database& database, const Delivery& delivery) {
  if (!database.Plain().HasTable(kDeliveriesTable)) return false;
  Recordset found;
  found.Open(FillStatement(statements::kFindDelivery, {{"<DATE>", DoubleQuotes(delivery.date)},
                                                       {"<SUPPLIERID>", std::int64_t{delivery.supplierId}},
                                                       {"<CONTACTID>", std::int64_t{delivery.contactId}}}),
             database.Plain());
  return !found.EndOfFile();
}

void ListDeliveries(Database& database, const std::function<void(int number, const Delivery&)>& read) {
  if (!database.Plain().HasTable(kDeliveriesTable)) return;
  Recordset rows;
  rows.Open(statements::kDeliveries, database.Plain(), Recordset::Rows::Later);
  rows.ReadRows({"ID", "SentAt", "SupplierId", "CompanyName", "ContactId", "Contact", "Email", "SentAs", "Result"},
                [&](const std::vector<std::string_view>& texts) {
                  Delivery each;
                  each.date = texts[1];
                  each.supplierId = NumberOf(texts[2]);
                  each.companyName = texts[3];
                  each.contactId = NumberOf(texts[4]);
                  each.contact = texts[5];
                  each.email = texts[6];
                  each.sentAs = texts[7];
                  each.result = texts[8];
                  read(NumberOf(texts[0]), each);
                });
}

std::string MessageOfDelivery(Database& database, int number) {
  if (!database.Plain().HasTable(kDeliveriesTable)) return {};
  Recordset found;
  found.Open(FillStatement(statements::kDeliveryMessage, "<ID>", number), database.Plain());
  return found.EndOfFile() ? std::string() : ValueText(found.Field("Content"));
}

std::map<int, LastSent> LastSentOf(Database& database) {
  std::map<int, LastSent> last;
  if (!database.Plain().HasTable(kDeliveriesTable)) return last;
  std::map<int, std::pair<int, int>> contents;
  Recordset rows, texts;
  rows.Open(statements::kDeliveries, database.Plain(), Recordset::Rows::Later);
  rows.ReadRows({"SentAt", "SupplierId", "SentAs", "Result", "OrganisationContent", "SupplierContent"},
                [&](const std::vector<std::string_view>& row) {
                  if (row[3] != kTaken) return;
                  const int supplier = NumberOf(row[1]);
                  last[supplier].date = row[0];
                  last[supplier].sentAs = row[2];
                  contents[supplier] = {NumberOf(row[4]), NumberOf(row[5])};
                });
  std::map<int, std::string> byId;
  texts.Open(statements::kDeliveredContents, database.Plain(), Recordset::Rows::Later);
  texts.ReadRows({"ID", "Content"},
                 [&](const std::vector<std::string_view>& row) { byId.emplace(NumberOf(row[0]), row[1]); });
  for (auto& [supplier, sent] : last) {
    sent.organisationIngredients = byId[contents[supplier].first];
    sent.supplierIngredients = byId[contents[supplier].second];
  }
  return last;
}

std::optional<LastSent> LastSentTo(Database& database, int supplierId) {
  if (!database.Plain().HasTable(kDeliveriesTable)) return std::nullopt;
  Recordset found;
  found.Open(FillStatement(statements::kLastDelivery, "<SUPPLIERID>", supplierId), database.Plain());
  if (found.EndOfFile()) return std::nullopt;
  const Row row(found);
  const auto content = [&](std::string_view column) {
    Recordset text;
    text.Open(FillStatement(statements::kDeliveredContent, "<ID>", row.Number(column)), database.Plain());
    return text.EndOfFile() ? std::string() : ValueText(text.Field("Content"));
  };
  return LastSent{row.Text("SentAt"), row.Text("SentAs"), content("OrganisationContent"), content("SupplierContent")};
}

}  // namespace tarvolinex
