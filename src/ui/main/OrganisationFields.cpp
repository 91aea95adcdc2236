#include "ui/main/OrganisationFields.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Organisation.h"
#include "ui/main/FrmLeaseOrgDetails.h"
#include "ui/options/OptionNodes.h"

namespace tarvolinex {

namespace {

// Gives the field another value than it has in a new organisation.
struct Touch {
  Organisation& organisation;
  void operator()(std::monostate) const {}
  template <typename T>
  void operator()(T CalculatorPreferencesRecord::*member) const {
    Change(organisation.prefs.*member);
  }
  template <typename T>
  void operator()(T PageOptions::*member) const {
    Change(organisation.page.*member);
  }
  static void Change(FixedText& text) { text = "de"; }
  static void Change(std::string& text) { text = "de"; }
  static void Change(bool& truth) { truth = !truth; }
  template <typename Number>
  static void Change(Number& number) {
    number = Number{1};
  }
};

// The name of the office's field that changes with it; empty for none.
std::string NameOf(const OptionField& field) {
  Organisation touched;
  const OfficeFields before = OfficeFieldsOf(touched);
  std::visit(Touch{touched}, field);
  const OfficeFields after = OfficeFieldsOf(touched);
  const auto [changed, same] = std::ranges::mismatch(after, before);
  return changed == after.end() ? std::string() : changed->first;
}

const OptionNode* NodeOf(const std::string& name) {
  const auto nodes = OptionNodes();
  const auto found = std::ranges::find_if(nodes, [&](const OptionNode& node) { return NameOf(node.field) == name; });
  return found == nodes.end() ? nullptr : &*found;
}

std::string DepositTypesText(const Run& run, int types) {
  std::string all;
  const std::string names[] = {Tr("Value ($)"), run.ReplaceAliases("Percentage  of <CAPEQUIP>"),
                               Tr("Advanced Payments")};
  for (int i = 0; i < 3; ++i) {
    if ((types >> i & 1) != 0) all += (all.empty() ? "" : ", ") + names[i];
  }
  return all;
}

std::string LanguageName(const std::string& code) {
  const auto languages = PageLanguages();
  const auto found = std::ranges::find_if(languages, [&](const PageLanguage& each) { return code == each.code; });
  return found == languages.end() ? Tr("As the reader's browser") : found->name;
}

}  // namespace

std::string WordsOfField(const Run& run, const std::string& name) {
  if (const OptionNode* node = NodeOf(name)) return run.ReplaceAliases(node->caption);
  for (const OrganisationDetail& detail : OrganisationDetails()) {
    if (NameOf(detail.field) == name) return detail.Words();
  }
  return name;
}

std::string ShownField(const Run& run, const std::string& name, const std::string& text) {
  const OptionNode* node = NodeOf(name);
  switch (node ? node->editor : OptionEditor::None) {
    case OptionEditor::Swatch:
      return ColourToHtml(static_cast<Colour>(LeadingNumber(text)));
    case OptionEditor::OnOff:
      return text == "1" ? Tr("On") : Tr("Off");
    case OptionEditor::DepositTypes:
      return DepositTypesText(run, static_cast<int>(LeadingNumber(text)));
    case OptionEditor::Language:
      return LanguageName(text);
    default:
      return text;
  }
}

}  // namespace tarvolinex
