#include "store/Contacts.h"

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "store/Statements.h"

namespace tarvolinex {

std::vector<ContactRow> ContactsOf(Database& database, int supplierId) {
  Recordset records;
  database.OpenRecordset(FillStatement(statements::kContacts, "<SUPPLIERID>", supplierId), records);
  std::vector<ContactRow> contacts;
  for (; !records.EndOfFile(); records.MoveNext()) {
    ContactRow contact;
    contact.row = Row(records);
    contact.id = contact.row.Number("id");
    contact.name = Trim(contact.row.Text("firstname") + " " + contact.row.Text("surname"));
    contact.email = contact.row.Text("email");
    contact.dateLastSent = contact.row.Text("datelastsent");
    contacts.push_back(std::move(contact));
  }
  return contacts;
}

Row ReadContact(Database& database, int contactId, int supplierId) {
  Recordset records;
  records.Open(FillStatement(statements::kContact,
                             {{"<ID>", std::int64_t{contactId}}, {"<SUPPLIERID>", std::int64_t{supplierId}}}),
               database.Plain());
  return Row(records);
}

int AddContact(Database& database, int supplierId, const ContactFields& fields) {
  constexpr const char* kPlaceholders[] = {"<FIRSTNAME>", "<SURNAME>", "<JOBTITLE>", "<TEL>", "<FAX>", "<EMAIL>"};
  std::vector<Filling> fillings = {{"<SUPPLIERID>", std::int64_t{supplierId}}};
  for (std::size_t i = 0; i < fields.size(); ++i) fillings.push_back({kPlaceholders[i], EscapeQuotes(fields[i])});
  Transaction transaction(database);
  database.ExecuteStatement(FillStatement(statements::kInsertContact, fillings));
  const int id = database.Plain().LastInsertedId();
  transaction.Commit();
  return id;
}

void UpdateContact(Database& database, int contactId, const FieldLists& fields) {
  if (fields.assignments.empty()) return;
  database.ExecuteStatement(FillStatement(
      statements::kUpdateContact, {{"<VALUES>", WithoutLast(fields.assignments)}, {"<ID>", std::int64_t{contactId}}}));
}

RemovedRows DeleteContact(Database& database, int contactId, int supplierId) {
  RemovedRows removed{supplierId, contactId, {}};
  const Row contact = ReadContact(database, contactId, supplierId);
  if (contact.Found()) removed.statements = {FillStatement(statements::kRestoreContact, RowLists(contact))};
  database.ExecuteStatement(FillStatement(statements::kDeleteContact, "<ID>", contactId));
  return removed;
}

std::vector<FoundContact> FindContacts(Database& database, std::string_view firstName, std::string_view surname) {
  Recordset found;
  database.OpenRecordset(FillStatement(statements::kFindContacts, {{"<FIRSTNAME>", EscapeQuotes(firstName)},
                                                                   {"<SURNAME>", EscapeQuotes(surname)}}),
                         found);
  std::vector<FoundContact> contacts;
  for (; !found.EndOfFile(); found.MoveNext()) {
    contacts.push_back(
        {static_cast<int>(ValueNumber(found.Field("Supplierid"))), static_cast<int>(ValueNumber(found.Field("id")))});
  }
  return contacts;
}

std::set<int> SuppliersOfContacts(Database& database, std::string_view text) {
  std::set<int> suppliers;
  const auto find = [&](std::string_view firstName, std::string_view surname) {
    for (const FoundContact& found : FindContacts(database, firstName, surname)) suppliers.insert(found.supplier);
  };
  const GoesOnWithout server(database);
  try {
    find(text, "");
    find("", text);
    if (const auto blank = text.find(' '); blank != std::string_view::npos) {
      find(text.substr(0, blank), Trim(text.substr(blank)));
    }
  } catch (const RuntimeError&) {
    // A filter that cannot look at the contacts still looks at the suppliers.
  }
  return suppliers;
}

void SetDateLastSent(Database& database, std::string_view dateText, int contactId) {
  database.Plain().Execute(FillStatement(statements::kDateSent,
                                         {{"<ID>", std::int64_t{contactId}}, {"<DATESENT>", EscapeQuotes(dateText)}}));
}

void SetDatesLastSent(Database& database, const std::vector<ContactDate>& dates, bool keep) {
  database.KeepDailyCopy();
  Connection& connection = database.Plain();
  std::string failed;
  try {
    connection.Begin();
    for (const ContactDate& date : dates) SetDateLastSent(database, date.dateText, date.contactId);
    keep ? connection.Commit() : connection.Flush();
  } catch (const RuntimeError& failure) {
    failed = connection.Errors().empty() ? failure.Description() : connection.Errors().front();
  }
  connection.Rollback();
  if (!failed.empty()) throw RuntimeError(kDatabase, failed);
}

void PointContactsAtOrganisation(Database& database, std::string_view email) {
  database.ExecuteStatement(FillStatement(statements::kAllEmails, "<email>", EscapeQuotes(email)));
}

}  // namespace tarvolinex
