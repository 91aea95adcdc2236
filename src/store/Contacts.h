// A supplier's contact people.
#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"
#include "store/Row.h"
#include "store/Suppliers.h"

namespace tarvolinex {

struct ContactRow {
  int id = 0;
  std::string name;  // first name and surname
  std::string email, dateLastSent;
  Row row;
};

// Of a supplier, in the order of surname and first name. A failure to open is the fatal report "Database Error", one to
// read throws RuntimeError.
std::vector<ContactRow> ContactsOf(Database& database, int supplierId);

// A contact of the supplier; not Found when there is none of that ID. Throws RuntimeError.
Row ReadContact(Database& database, int contactId, int supplierId);

// First name, surname, job title, tel, fax, e-mail.
inline constexpr int kContactFields = 6;
using ContactFields = std::array<std::string, kContactFields>;
// Returns the new contact's ID.
int AddContact(Database& database, int supplierId, const ContactFields& fields);
void UpdateContact(Database& database, int contactId, const FieldLists& fields);  // nothing without assignments

// Deletes the contact; what is returned puts it back.
RemovedRows DeleteContact(Database& database, int contactId, int supplierId);

// Contacts whose first name and surname begin with these texts; a failure is as in ContactsOf.
struct FoundContact {
  int supplier, contact;  // their IDs
};
std::vector<FoundContact> FindContacts(Database& database, std::string_view firstName, std::string_view surname);

// The suppliers of the contacts whose surname or first name begins with the text; with a blank in it, whose first name
// begins with what stands before it and whose surname with what stands behind.
std::set<int> SuppliersOfContacts(Database& database, std::string_view text);

// The date of one contact. Throws RuntimeError.
void SetDateLastSent(Database& database, std::string_view dateText, int contactId);

// The dates of several contacts, together or none. For whoever has more to tell of a failure than that it came: it
// throws RuntimeError with what the database says. With keep false nothing is stored: whether it could be is found out.
struct ContactDate {
  int contactId;
  std::string dateText;  // as it is to be stored
};
void SetDatesLastSent(Database& database, const std::vector<ContactDate>& dates, bool keep);

// Gives every contact of a fresh database the organisation's own e-mail address.
void PointContactsAtOrganisation(Database& database, std::string_view email);

}  // namespace tarvolinex
