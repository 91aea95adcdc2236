#include "core/Aliases.h"

#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

bool CarriesCaption(std::string_view type) {
  return type == "LABEL" || type == "FRAME" || type == "COMMANDBUTTON" || type == "MENU" || type == "CHECKBOX";
}

// The words as they stand, or as they stand in a caption, where a single "&" would be an access key.
std::string WithWords(std::string_view text, bool inCaption) {
  const CalculatorPreferencesRecord& words = CalculatorPreferences;
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
  replace("<ADDRATEMSG>", PremiumCaption());
  replace("<SUPPLIERNAME>", SupplierCalcSettings.CompanyName.Trimmed());
  return result;
}

void ApplyToToolbar(Toolbar& toolbar) {
  for (int i = 0; i < static_cast<int>(toolbar.Buttons().size()); ++i) {
    const std::string words = GetTagValue(toolbar.Buttons()[static_cast<std::size_t>(i)].tag, "ALAIS");
    if (!words.empty()) toolbar.SetButtonToolTip(i, ReplaceAliases(words));
  }
}

}  // namespace

std::string PremiumCaption() {
  const std::string caption = SupplierCalcSettings.AdditionalPremiumMsg.Trimmed();
  return caption.empty() ? Tr("Additional Rate Premium") : caption;
}

std::string ReplaceAliases(std::string_view text) {
  return WithWords(text, false);
}

std::string CaptionWithAliases(std::string_view caption) {
  return WithWords(caption, true);
}

std::string GetTagValue(std::string_view tag, std::string_view key) {
  for (const std::string_view part : Split(tag, ';')) {
    const auto pieces = Split(part, '=');
    if (EqualNoCase(pieces[0], key)) return pieces.size() > 1 ? std::string(Trim(pieces[1])) : std::string();
  }
  return {};
}

void ApplyCaptions(Window& window) {
  const std::string symbol = CalculatorPreferences.CurrencySymbol.Trimmed();
  for (Control* control : window.Controls()) {
    if (auto* toolbar = dynamic_cast<Toolbar*>(control)) ApplyToToolbar(*toolbar);
    if (auto* box = dynamic_cast<TextBox*>(control); box && box->ForNumber()) box->SetForNumber(symbol);
    if (!CarriesCaption(control->TypeName())) continue;
    auto& captioned = static_cast<CaptionedControl&>(*control);
    const std::string words = GetTagValue(control->Tag(), "ALAIS");
    const std::string caption = words.empty() ? captioned.Caption() : CaptionWithAliases(words);
    captioned.SetCaption(ReplaceAll(caption, "£", CaptionOf(symbol)));
  }

  MainWindow& form = MainForm();
  const std::string value = Tr("Value (%1)", {symbol});
  const std::string percent = Tr("% of %1 Cost", {CalculatorPreferences.AliasCapEquip.Trimmed()});
  ComboBox& deposit = form.quote.CboProCalc(kListDepositMode);
  deposit.Clear();
  deposit.Add(value, kDepositValue);
  deposit.Add(percent, kDepositPercent);
  deposit.Add(Tr("Advanced Payments"), kDepositAdvanced);
  if (!EqualNoCase(window.Name(), "FRMMAIN")) return;

  ComboBox& residual = form.quote.CboProCalc(kListResidualMode);
  residual.Clear();
  residual.Add(value);
  residual.Add(percent);
  deposit.SetListIndex(0);
  residual.SetListIndex(0);
  form.TabMain.SetTabCaption(kTabDetails, CaptionWithAliases("<SUPPLIER> &Detail"));
}

}  // namespace tarvolinex
