#include "calc/RateCard.h"

#include <cmath>
#include <limits>
#include <utility>

#include "calc/InputRules.h"
#include "calc/QuotePanel.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr const char* kNoPremium = Marked("Additional Rate Premium disabled for this <SUPPLIER>");
constexpr const char* kNoResidual = Marked("<RESIDUAL> disabled for this <SUPPLIER>");
constexpr const char* kNoMaintenance = Marked("<MAINT> disabled for this <SUPPLIER>");

// Locks or frees one input with what belongs to it; a locked one holds 0 and says why.
void OfferInput(int box, bool offered, ComboBox* list, const char* reason) {
  QuotePanel& panel = MainForm().quote;
  const std::string toolTip = offered ? "" : ReplaceAliases(reason);
  SetControlLocked(panel.TxtProCalc(box), !offered);
  SetControlLocked(panel.UpDNew(box), !offered);
  panel.TxtProCalc(box).SetToolTip(toolTip);
  if (list) {
    SetControlLocked(*list, !offered);
    list->SetToolTip(toolTip);
  }
  if (!offered) panel.TxtProCalc(box).SetText("0");
}

// A field of the record from the column of its name; a column that the table lacks reads as Null.
struct FieldReader {
  const Value& value;
  // Whether a field that holds a number finds one, or nothing. Another program may have stored anything.
  bool Fits(const FieldMember& field) const {
    const auto* text = std::get_if<std::string>(&value);
    if (std::holds_alternative<FixedText*>(field) || std::holds_alternative<bool*>(field)) return true;
    std::string buffer;
    return text ? Trim(*text).empty() || ExactNumberText(*text, buffer) : std::isfinite(ValueNumber(value));
  }
  // The record's key has 16 bits; a larger one is left out rather than cut to another supplier's.
  void operator()(std::int16_t* field) const {
    const double number = ValueNumber(value);
    *field = number >= 0 && number <= std::numeric_limits<std::int16_t>::max() ? static_cast<std::int16_t>(number) : 0;
  }
  void operator()(std::int32_t*) const {}
  void operator()(Colour*) const {}
  void operator()(float* field) const { *field = static_cast<float>(ValueNumber(value)); }
  void operator()(Currency* field) const {
    const auto* exact = std::get_if<Currency>(&value);
    const auto* text = std::get_if<std::string>(&value);
    std::string buffer;
    const auto number = text ? ExactNumberText(*text, buffer) : std::nullopt;
    const auto amount = exact    ? *exact
                        : number ? Currency::FromText(*number)
                                 : Currency::FromDouble(ValueNumber(value));
    *field = amount.value_or(Currency());
  }
  void operator()(bool* field) const { *field = ValueTruth(value); }
  void operator()(FixedText* field) const { *field = Trim(ValueText(value)); }
  void operator()(std::span<char>) const {}
};

double Threshold(int box) {
  return LeadingNumber(MainForm().rateCard.txtRangeTo(box).Text());
}

}  // namespace

SupplierCalcSettingsRecord ReadSupplierSettings(const Recordset& supplier) {
  SupplierCalcSettingsRecord loaded;
  for (const auto& field : FieldsOf(loaded)) {
    const int column = supplier.ColumnIndex(field.name);
    const Value value = column < 0 ? Value(Null{}) : supplier.Field(column);
    const FieldReader reader{value};
    if (!reader.Fits(field.member(loaded))) {
      throw RuntimeError(kItemNotFound, Tr("%1: the column %2 holds \"%3\", which is no number",
                                           {loaded.CompanyName.Trimmed(), field.name, ValueText(value)}));
    }
    std::visit(reader, field.member(loaded));
  }
  return loaded;
}

void UseSupplierSettings(const Recordset& supplier) {
  RateCardFault.clear();
  try {
    SupplierCalcSettings = ReadSupplierSettings(supplier);
  } catch (const RuntimeError& failure) {
    RateCardFault = failure.Description();
    SupplierCalcSettings = {};
    SupplierCalcSettings.CompanyName = ValueText(supplier.Field("CompanyName"));
  }
}

void LoadSupplierRateCard(const Recordset& supplier) {
  UseSupplierSettings(supplier);
  ApplySupplierOptions();
  RecalculateQuote();
}

void ApplySupplierOptions() {
  MainWindow& form = MainForm();
  QuotePanel& panel = form.quote;
  const bool before = std::exchange(form.loading, true);
  const bool premium = SupplierCalcSettings.AdditionalPremium;
  panel.LblPremium.SetCaption(CaptionOf(PremiumCaption()));
  SetControlLocked(panel.ChkPremium, !premium);
  if (!premium) panel.ChkPremium.SetValue(false);
  panel.ChkPremium.SetToolTip(premium ? "" : ReplaceAliases(kNoPremium));
  OfferInput(kBoxResidual, SupplierCalcSettings.ResidualOption, &panel.CboProCalc(kListResidualMode), kNoResidual);
  OfferInput(kBoxMaintenance, SupplierCalcSettings.MaintenanceOption, nullptr, kNoMaintenance);
  form.loading = before;
}

void NameWhatIsLocked() {
  QuotePanel& panel = MainForm().quote;
  const std::pair<Control*, const char*> inputs[] = {{&panel.ChkPremium, kNoPremium},
                                                     {&panel.TxtProCalc(kBoxResidual), kNoResidual},
                                                     {&panel.CboProCalc(kListResidualMode), kNoResidual},
                                                     {&panel.TxtProCalc(kBoxMaintenance), kNoMaintenance}};
  for (const auto& [input, reason] : inputs) {
    if (!input->ToolTip().empty()) input->SetToolTip(ReplaceAliases(reason));
  }
}

void RepairThresholdOrder(int box) {
  RateCardPanel& card = MainForm().rateCard;
  for (int j = box; j >= 2; --j) {
    if (Threshold(j) > Threshold(j - 1)) card.txtRangeTo(j - 1).SetText(card.txtRangeTo(j).Text());
  }
  for (int j = box; j <= 3; ++j) {
    if (Threshold(j + 1) > Threshold(j)) card.txtRangeTo(j + 1).SetText(card.txtRangeTo(j).Text());
  }
}

void ApplyPremiumSwitch() {
  RateCardPanel& card = MainForm().rateCard;
  const bool locked = !card.ChAddRate(0).Value();
  for (int i = 0; i < 3; ++i) SetControlLocked(card.TxtAddRate(i), locked);
  for (int i = 1; i < 3; ++i) SetControlLocked(card.UpDAddRate(i), locked);
}

}  // namespace tarvolinex
