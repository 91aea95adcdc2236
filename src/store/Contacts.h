// A supplier's contact people.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

// Saves the shown contact if it was edited, then refills the name list and the send-to list for the shown supplier.
void ListContacts();

// Saves the shown contact if it was edited, then shows the one selected in the name list.
void GetContact();

// Stores the shown contact when it was edited and has a name. One whose supplier is not stored, or that somebody else
// has removed, is reported and not stored.
void SaveContact();

// As ListContacts, but the contact that was shown stays so.
void RefreshContacts();

// Selects the contact in the name list, which shows it; nothing when it is not there.
void SelectContact(int contactId);

// dateText: as it is to be stored.
void SetDateLastSent(std::string_view dateText, int contactId);

// The suppliers of the contacts whose surname or first name begins with the text; with a blank in it, whose first name
// begins with what stands before it and whose surname with what stands behind.
std::set<int> SuppliersOfContacts(std::string_view text);

// The dates of several contacts, together or none. For whoever has more to tell of a failure than that it came: it
// throws RuntimeError with what the database says. With keep false nothing is stored: whether it could be is found out.
struct ContactDate {
  int contactId;
  std::string dateText;
};
void SetDatesLastSent(const std::vector<ContactDate>& dates, bool keep);

// Empties both lists and the six fields.
void ClearContacts();
void ClearContactFields();

}  // namespace tarvolinex
