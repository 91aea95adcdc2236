#include "core/Aliases.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

bool CarriesCaption(std::string_view type) {
  return type == "LABEL" || type == "FRAME" || type == "COMMANDBUTTON" || type == "MENU" || type == "CHECKBOX";
}

// The words as they stand, or as they stand in a caption, where a single "&" would be an access key.
std::string WithWords(std::string_view text, const Words& all, bool inCaption) {
  const CalculatorPreferencesRecord& words = all.own;
  std::string result = Tr(text);
  const auto replace = [&](std::string_view placeholder, const std::string& word) {
    if (result.find(placeholder) == std::string::npos) return;
    result = ReplaceAll(result, placeholder, inCaption ? CaptionOf(word) : word);
  };
  replace("<DEPOSIT>", words.AliasDeposit.Trimmed());
  replace("<RESIDUAL>", words.AliasResidual.Trimmed());
  replace("<MAINT>", words.AliasMaint.Trimmed());
  replace("<VAT>", words.AliasVat.Trimmed());
  replace("<CAPEQUIP>", words.AliasCapEquip.Trimmed());
  replace("£", words.CurrencySymbol.Trimmed());
  replace("<SUPPLIER>", words.AliasSupplier.Trimmed());
  replace("<CALCNAME>", words.AliasCalcName.Trimmed());
  replace("<ADDRATEMSG>", PremiumCaption(all.supplier));
  replace("<SUPPLIERNAME>", all.supplier.CompanyName.Trimmed());
  return result;
}

void ApplyToToolbar(Toolbar& toolbar, const Words& words) {
  for (int i = 0; i < static_cast<int>(toolbar.Buttons().size()); ++i) {
    const std::string text = GetTagValue(toolbar.Buttons()[static_cast<std::size_t>(i)].tag, "ALAIS");
    if (!text.empty()) toolbar.SetButtonToolTip(i, ReplaceAliases(text, words));
  }
}

}  // namespace

std::string PremiumCaption(const SupplierCalcSettingsRecord& supplier) {
  const std::string caption = supplier.AdditionalPremiumMsg.Trimmed();
  return caption.empty() ? Tr("Additional Rate Premium") : caption;
}

std::string ReplaceAliases(std::string_view text, const Words& words) {
  return WithWords(text, words, false);
}

std::string CaptionWithAliases(std::string_view caption, const Words& words) {
  return WithWords(caption, words, true);
}

std::string GetTagValue(std::string_view tag, std::string_view key) {
  for (const std::string_view part : Split(tag, ';')) {
    const auto pieces = Split(part, '=');
    if (EqualNoCase(pieces[0], key)) return pieces.size() > 1 ? std::string(Trim(pieces[1])) : std::string();
  }
  return {};
}

void ApplyCaptions(Window& window, const Words& words) {
  const std::string symbol = words.own.CurrencySymbol.Trimmed();
  for (Control* control : window.Controls()) {
    if (auto* toolbar = dynamic_cast<Toolbar*>(control)) ApplyToToolbar(*toolbar, words);
    if (auto* box = dynamic_cast<TextBox*>(control); box && box->ForNumber()) box->SetForNumber(symbol);
    if (!CarriesCaption(control->TypeName())) continue;
    auto& captioned = static_cast<CaptionedControl&>(*control);
    const std::string tagged = GetTagValue(control->Tag(), "ALAIS");
    const std::string caption = tagged.empty() ? captioned.Caption() : CaptionWithAliases(tagged, words);
    captioned.SetCaption(ReplaceAll(caption, "£", CaptionOf(symbol)));
  }
}

}  // namespace tarvolinex
