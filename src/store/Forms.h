// The forms that calculators can carry, and each supplier's choice of them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

struct FormRow {
  int id = 0;
  std::string description;
  std::string linkName;  // as users see it
  bool available = false;
};

// The page file of a form. dataFolder: the database's.
std::string FormPagePath(const std::string& dataFolder, int formId);

// Those that suppliers can have, in the order of their descriptions; all of them; those linked to a supplier, in the
// order in which they are published. Of AllForms a failure throws RuntimeError; of the others a failure to open is the
// fatal report "Database Error".
std::vector<FormRow> AvailableForms(Database& database);
std::vector<FormRow> AllForms(Database& database);
std::vector<FormRow> LinkedForms(Database& database, int supplierId);

// One form; an empty one of ID 0 when there is none. Throws RuntimeError.
FormRow ReadForm(Database& database, int formId);

// The IDs of the forms linked to the supplier (0 for the default supplier), and the replacing of them, together or not
// at all.
std::vector<int> FormLinksOf(Database& database, int supplierId);
std::map<int, std::vector<int>> FormLinksOfAll(Database& database);  // by supplier; throws RuntimeError
void ReplaceFormLinks(Database& database, int supplierId, const std::vector<int>& formIds);

// The longest description that an import takes over, in characters.
inline constexpr int kLongestDescription = 50;

// Changes to the library of form pages. Each throws RuntimeError when it fails, and nothing has then changed: the
// options window reports it and stays open.
// Description and link name are stored trimmed, without apostrophes. An ID of 0 adds a row without a page.
void SaveFormRow(Database& database, const FormRow& form);
// Adds an available form of that description, which is its link name too, with a copy of the page: both or neither.
// Returns its ID.
int AddFormPage(Database& database, const std::string& description, const std::string& pagePath);
// Takes the forms that are not available from every supplier.
void DeleteUnavailableLinks(Database& database);

}  // namespace tarvolinex
