#include "calc/RateCard.h"

#include <utility>

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/Text.h"

namespace tarvolinex {

namespace {

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

double Threshold(int box) { return LeadingNumber(MainForm().rateCard.txtRangeTo(box).Text()); }

}  // namespace

void ApplySupplierOptions() {
  MainWindow& form = MainForm();
  QuotePanel& panel = form.quote;
  const bool before = std::exchange(form.loading, true);
  const bool premium = SupplierCalcSettings.AdditionalPremium;
  panel.LblPremium.SetCaption(PremiumCaption());
  SetControlLocked(panel.ChkPremium, !premium);
  if (!premium) panel.ChkPremium.SetValue(false);
  panel.ChkPremium.SetToolTip(premium ? "" : ReplaceAliases("Additional Rate Premium disabled for this <SUPPLIER>"));
  OfferInput(kBoxResidual, SupplierCalcSettings.ResidualOption, &panel.CboProCalc(kListResidualMode),
             "<RESIDUAL> disabled for this <SUPPLIER>");
  OfferInput(kBoxMaintenance, SupplierCalcSettings.MaintenanceOption, nullptr,
             "<MAINT> disabled for this <SUPPLIER>");
  form.loading = before;
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
