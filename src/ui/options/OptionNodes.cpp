#include "ui/options/OptionNodes.h"

#include <algorithm>

#include "calc/InputRules.h"
#include "platform/Translation.h"

namespace tarvolinex {

namespace {

using Prefs = CalculatorPreferencesRecord;
using Edit = OptionEditor;

constexpr int kAlias = 25, kSymbol = 4;             // characters
constexpr int kLongestTerm = 200, kPayments = 100;  // months, payments
constexpr int kHundred = 100;                       // percent
constexpr int kMostMoney = 99'999'999;              // whole currency units

constexpr OptionNode kNodes[] = {
    {"ALAISES", "", Marked("Alias and Names")},
    {"ALAISES0", "ALAISES", Marked("Supplier/Vendor Alias"), Edit::TextLine, &Prefs::AliasSupplier, 0, kAlias},
    {"ALAISES1", "ALAISES", Marked("Calculator Name"), Edit::TextLine, &Prefs::AliasCalcName, 0, kAlias},
    {"ALAISES2", "ALAISES", Marked("Residual/Final Payment Alias"), Edit::TextLine, &Prefs::AliasResidual, 0, kAlias},
    {"ALAISES3", "ALAISES", Marked("Deposit/Initial Payment Alias"), Edit::TextLine, &Prefs::AliasDeposit, 0, kAlias},
    {"ALAISES4", "ALAISES", Marked("VAT/Sales Tax Alias"), Edit::TextLine, &Prefs::AliasVat, 0, kAlias},
    {"ALAISES5", "ALAISES", Marked("Maintenance Alias"), Edit::TextLine, &Prefs::AliasMaint, 0, kAlias},
    {"ALAISES6", "ALAISES", Marked("Capital/Equipment Alias"), Edit::TextLine, &Prefs::AliasCapEquip, 0, kAlias},
    {"COLOURS", "", Marked("Colours")},
    {"COLOURS0", "COLOURS", Marked("Calculator Background Colour"), Edit::Swatch, &Prefs::CalcBackColour},
    {"COLOURS1", "COLOURS", Marked("Caption Colour"), Edit::Swatch, &Prefs::CaptionColour},
    {"COLOURS2", "COLOURS", Marked("Input box Back Colour"), Edit::Swatch, &Prefs::InputBackColour},
    {"COLOURS3", "COLOURS", Marked("Input box Back Text Colour"), Edit::Swatch, &Prefs::InputTextColour},
    {"COLOURS4", "COLOURS", Marked("Border Colour"), Edit::Swatch, &Prefs::BorderColour},
    {"COLOURS5", "COLOURS", Marked("Lease Organisation Details Caption Colour"), Edit::Swatch,
     &Prefs::OrgCaptionColour},
    {"COLOURS6", "COLOURS", Marked("Main Page Background Colour"), Edit::Swatch, &Prefs::PageBackColour},
    {"MAXMINS", "", Marked("Max and Mins")},
    {"TERM", "MAXMINS", Marked("Lease Term Max/Min")},
    {"TERM0", "TERM", Marked("Minimum Term (Months)"), Edit::Number, &Prefs::MinTerm, kInputCount, kLongestTerm},
    {"TERM1", "TERM", Marked("Maximum Term (Months)"), Edit::Number, &Prefs::MaxTerm, kInputCount, kLongestTerm},
    {"CAPCOST", "MAXMINS", Marked("<CAPEQUIP> Cost Max/Min")},
    {"CAPCOST0", "CAPCOST", Marked("Minimum <CAPEQUIP> Cost (£)"), Edit::Number, &Prefs::MinCapitalCost, kInputAmount,
     kMostMoney},
    {"CAPCOST1", "CAPCOST", Marked("Maximum <CAPEQUIP> Cost (£)"), Edit::Number, &Prefs::MaxCapitalCost, kInputAmount,
     kMostMoney},
    {"DEPOSIT", "MAXMINS", Marked("<DEPOSIT> Cost Max/Min")},
    {"DEP0", "DEPOSIT", Marked("Maximum <DEPOSIT> Percentage of <CAPEQUIP> (%)"), Edit::Number,
     &Prefs::MaxDepositPercent, kInputPercent, kHundred},
    {"DEP1", "DEPOSIT", Marked("Minimum <DEPOSIT> Percentage of <CAPEQUIP> (%)"), Edit::Number,
     &Prefs::MinDepositPercent, kInputPercent, kHundred},
    {"DEP2", "DEPOSIT", Marked("Minimum Advanced Payments"), Edit::Number, &Prefs::MinAdvancedPayments, kInputCount,
     kPayments},
    {"RESID", "MAXMINS", Marked("Residual Max/Min")},
    {"RESID0", "RESID", Marked("Minimum <RESIDUAL> Percentage of <CAPEQUIP> (%)"), Edit::Number,
     &Prefs::MinResidualPercent, kInputPercent, kHundred},
    {"RESID1", "RESID", Marked("Maximum <RESIDUAL> Percentage of <CAPEQUIP> (%)"), Edit::Number,
     &Prefs::MaxResidualPercent, kInputPercent, kHundred},
    {kFormsKey, "", Marked("Form/Information Page Management")},
    {"GRAPHICS", "", Marked("Logo and Background Graphics")},
    {"GRAPHICSA", "GRAPHICS", Marked("Header Logo")},
    {"GRAPHICS1", "GRAPHICSA", Marked("Header Logo On/Off"), Edit::OnOff, &Prefs::ShowHeaderLogo},
    {"GRAPHICS2", "GRAPHICSA", Marked("Import New Header Logo"), Edit::PictureImport, {}},
    {"GRAPHICSB", "GRAPHICS", Marked("Background Picture")},
    {"GRAPHICS3", "GRAPHICSB", Marked("Background Picture Logo On/Off"), Edit::OnOff, &Prefs::ShowBackground},
    {"GRAPHICS4", "GRAPHICSB", Marked("Import New Background Picture"), Edit::PictureImport, {}},
    {"DEPOPS", "", Marked("Available <DEPOSIT> Types"), Edit::DepositTypes, &Prefs::DepositOptions},
    {"ICON", "", Marked("Icon"), Edit::IconList, &Prefs::IconName},
    {"CURRENCY", "", Marked("Currency Symbol"), Edit::TextLine, &Prefs::CurrencySymbol, 0, kSymbol},
    {"TAX", "", Marked("VAT/Sales Tax Percentage"), Edit::Number, &Prefs::TaxRate, kInputPercent, kHundred},
};

}  // namespace

std::span<const OptionNode> OptionNodes() {
  return kNodes;
}

const OptionNode* FindOptionNode(std::string_view key) {
  const auto* found =
      std::find_if(std::begin(kNodes), std::end(kNodes), [&](const OptionNode& node) { return key == node.key; });
  return found == std::end(kNodes) ? nullptr : found;
}

}  // namespace tarvolinex
