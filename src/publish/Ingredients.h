// Everything that goes into a published calculator, by name, so that two publishings can be told apart in words.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "publish/CalculatorFolder.h"

namespace tarvolinex {

// What all suppliers' calculators have in common: words, limits, colours, options, pictures, the page itself. Lines of
// a name, a tab and a value; a value that begins with "=" stands for contents. Throws RuntimeError when a file cannot
// be read.
std::string OrganisationIngredients(const Branding& branding);

// Fingerprints of form pages, each read once.
class FormPrints {
 public:
  explicit FormPrints(std::string dataFolder) : dataFolder_(std::move(dataFolder)) {}
  // Throws RuntimeError when the page cannot be read; a page that is missing has an empty print.
  const std::string& Of(int formId);

 private:
  std::string dataFolder_;
  std::map<int, std::string> prints_;
};

// What one supplier's calculator has of its own: rate card, address and forms. The same lines.
std::string SupplierIngredients(const SupplierCalcSettingsRecord& supplier, const std::vector<FormRow>& forms,
                                FormPrints& prints);

// What has changed, in words: "yield of band 2 from 8.50 to 9.00; VAT from 20 to 21; form Lease Proposal". Empty when
// nothing has.
std::string ChangesBetween(std::string_view before, std::string_view now);

}  // namespace tarvolinex
