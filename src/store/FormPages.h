// Changes to the library of form pages. Each throws RuntimeError when it fails, and nothing has then changed: the
// options window reports it and stays open.
#pragma once

#include <string>

namespace tarvolinex {

// The longest description that an import takes over, in characters.
inline constexpr int kLongestDescription = 50;

struct FormDetails {
  std::string description, linkName;  // stored trimmed, without apostrophes
  bool available = false;
};

// formId 0 adds a row without a page.
void SaveFormRow(int formId, const FormDetails& details);

// Adds an available form of that description, which is its link name too, with a copy of the page: both or neither.
// Returns its ID.
int AddFormPage(const std::string& description, const std::string& pagePath);

// Takes the forms that are not available from every supplier.
void DeleteUnavailableLinks();

}  // namespace tarvolinex
