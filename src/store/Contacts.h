// A supplier's contact people.
#pragma once

#include <string_view>

namespace tarvolinex {

// Saves the shown contact if it was edited, then refills the name list and the send-to list for the shown supplier.
void ListContacts();

// Saves the shown contact if it was edited, then shows the one selected in the name list.
void GetContact();

// Stores the shown contact when it was edited and has a name.
void SaveContact();

// dateText: as it is to be stored.
void SetDateLastSent(std::string_view dateText, int contactId);

// Empties both lists and the six fields.
void ClearContacts();
void ClearContactFields();

}  // namespace tarvolinex
