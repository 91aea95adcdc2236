#include "ui/options/OptionNodes.h"

#include <algorithm>

#include "calc/InputRules.h"

namespace tarvolinex {

namespace {

using Prefs = CalculatorPreferencesRecord;
using Edit = OptionEditor;

constexpr int kAlias = 25, kSymbol = 4;             // characters
constexpr int kLongestTerm = 200, kPayments = 100;  // months, payments
constexpr int kHundred = 100;                       // percent
constexpr int kMostMoney = 99'999'999;              // whole currency units

constexpr OptionNode kNodes[] = {
    {"ALAISES", "", "Alias and Names"},
    {"ALAISES0", "ALAISES", "Supplier/Vendor Alias", Edit::TextLine, &Prefs::AliasSupplier, 0, kAlias},
    {"ALAISES1", "ALAISES", "Calculator Name", Edit::TextLine, &Prefs::AliasCalcName, 0, kAlias},
    {"ALAISES2", "ALAISES", "Residual/Final Payment Alias", Edit::TextLine, &Prefs::AliasResidual, 0, kAlias},
    {"ALAISES3", "ALAISES", "Deposit/Initial Payment Alias", Edit::TextLine, &Prefs::AliasDeposit, 0, kAlias},
    {"ALAISES4", "ALAISES", "VAT/Sales Tax Alias", Edit::TextLine, &Prefs::AliasVat, 0, kAlias},
    {"ALAISES5", "ALAISES", "Maintenance Alias", Edit::TextLine, &Prefs::AliasMaint, 0, kAlias},
    {"ALAISES6", "ALAISES", "Capital/Equipment Alias", Edit::TextLine, &Prefs::AliasCapEquip, 0, kAlias},
    {"COLOURS", "", "Colours"},
    {"COLOURS0", "COLOURS", "Calculator Background Colour", Edit::Swatch, &Prefs::CalcBackColour},
    {"COLOURS1", "COLOURS", "Caption Colour", Edit::Swatch, &Prefs::CaptionColour},
    {"COLOURS2", "COLOURS", "Input box Back Colour", Edit::Swatch, &Prefs::InputBackColour},
    {"COLOURS3", "COLOURS", "Input box Back Text Colour", Edit::Swatch, &Prefs::InputTextColour},
    {"COLOURS4", "COLOURS", "Border Colour", Edit::Swatch, &Prefs::BorderColour},
    {"COLOURS5", "COLOURS", "Lease Organisation Details Caption Colour", Edit::Swatch, &Prefs::OrgCaptionColour},
    {"COLOURS6", "COLOURS", "Main Page Background Colour", Edit::Swatch, &Prefs::PageBackColour},
    {"MAXMINS", "", "Max and Mins"},
    {"TERM", "MAXMINS", "Lease Term Max/Min"},
    {"TERM0", "TERM", "Minimum Term (Months)", Edit::Number, &Prefs::MinTerm, kInputCount, kLongestTerm},
    {"TERM1", "TERM", "Maximum Term (Months)", Edit::Number, &Prefs::MaxTerm, kInputCount, kLongestTerm},
    {"CAPCOST", "MAXMINS", "<CAPEQUIP> Cost Max/Min"},
    {"CAPCOST0", "CAPCOST", "Minimum <CAPEQUIP> Cost (£)", Edit::Number, &Prefs::MinCapitalCost, kInputAmount,
     kMostMoney},
    {"CAPCOST1", "CAPCOST", "Maximum <CAPEQUIP> Cost (£)", Edit::Number, &Prefs::MaxCapitalCost, kInputAmount,
     kMostMoney},
    {"DEPOSIT", "MAXMINS", "<DEPOSIT> Cost Max/Min"},
    {"DEP0", "DEPOSIT", "Maximum <DEPOSIT> Percentage of <CAPEQUIP> (%)", Edit::Number, &Prefs::MaxDepositPercent,
     kInputPercent, kHundred},
    {"DEP1", "DEPOSIT", "Minimum <DEPOSIT> Percentage of <CAPEQUIP> (%)", Edit::Number, &Prefs::MinDepositPercent,
     kInputPercent, kHundred},
    {"DEP2", "DEPOSIT", "Minimum Advanced Payments", Edit::Number, &Prefs::MinAdvancedPayments, kInputCount, kPayments},
    {"RESID", "MAXMINS", "Residual Max/Min"},
    {"RESID0", "RESID", "Minimum <RESIDUAL> Percentage of <CAPEQUIP> (%)", Edit::Number, &Prefs::MinResidualPercent,
     kInputPercent, kHundred},
    {"RESID1", "RESID", "Maximum <RESIDUAL> Percentage of <CAPEQUIP> (%)", Edit::Number, &Prefs::MaxResidualPercent,
     kInputPercent, kHundred},
    {kFormsKey, "", "Form/Information Page Management"},
    {"GRAPHICS", "", "Logo and Background Graphics"},
    {"GRAPHICSA", "GRAPHICS", "Header Logo"},
    {"GRAPHICS1", "GRAPHICSA", "Header Logo On/Off", Edit::OnOff, &Prefs::ShowHeaderLogo},
    {"GRAPHICS2", "GRAPHICSA", "Import New Header Logo", Edit::PictureImport, {}},
    {"GRAPHICSB", "GRAPHICS", "Background Picture"},
    {"GRAPHICS3", "GRAPHICSB", "Background Picture Logo On/Off", Edit::OnOff, &Prefs::ShowBackground},
    {"GRAPHICS4", "GRAPHICSB", "Import New Background Picture", Edit::PictureImport, {}},
    {"DEPOPS", "", "Available <DEPOSIT> Types", Edit::DepositTypes, &Prefs::DepositOptions},
    {"ICON", "", "Icon", Edit::IconList, &Prefs::IconName},
    {"CURRENCY", "", "Currency Symbol", Edit::TextLine, &Prefs::CurrencySymbol, 0, kSymbol},
    {"TAX", "", "VAT/Sales Tax Percentage", Edit::Number, &Prefs::TaxRate, kInputPercent, kHundred},
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
