// The rate-card panel's handlers.
#include "calc/InputRules.h"
#include "calc/RateCard.h"
#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "publish/FolderFiles.h"
#include "publish/LivePage.h"
#include "store/Forms.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {
constexpr double kLargestYield = 100, kLargestCommission = 200;
}

void FrmMain::WireRateBox(TextBox& box, UpDown& upDown, const NumberRule& rule) {
  box.Change = [this, &box, rule] {
    SupplierChanged = true;
    if (!box.Edited()) numbers_[&box] = box.Text();
    box.SetFault(FaultOf(rule, box.Text()));
  };
  box.LostFocus = [this, &box, rule] { LeaveRateBox(box, rule); };
  box.Refused = [] { SayNumbersOnly(); };
  upDown.UpClick = [&box, &upDown, rule] { StepInput(box, true, upDown.Max, rule.kind); };
  upDown.DownClick = [&box, &upDown, rule] { StepInput(box, false, upDown.Min, rule.kind); };
  upDown.Change = [&box, rule] { box.SetText(FormatNumberInput(rule.kind, box.Text())); };
}

// What nobody edited keeps the digits that it has.
bool FrmMain::LeaveRateBox(TextBox& box, const NumberRule& rule) {
  if (!box.Edited()) return false;
  const std::string fault = FaultOf(rule, box.Text());
  box.SetText(TextWhenLeft(rule, box.Text(), numbers_[&box]));
  numbers_[&box] = box.Text();
  SayFault(fault, box);
  return true;
}

void FrmMain::WireRateCard() {
  for (int i = 1; i <= 4; ++i) {
    const NumberRule rule = {kInputAmount, kLargestAmount, Tr("Threshold of band %1", {std::to_string(i + 1)}), ""};
    WireRateBox(rateCard.txtRangeTo(i), rateCard.UpDEquipCost(i), rule);
    rateCard.txtRangeTo(i).Change = [this, i, mark = rateCard.txtRangeTo(i).Change] {
      mark();
      txtRangeTo_Change(i);
    };
    const Event left = [this, i, rule] {
      if (LeaveRateBox(rateCard.txtRangeTo(i), rule)) RepairThresholdOrder(i);
    };
    rateCard.txtRangeTo(i).LostFocus = rateCard.UpDEquipCost(i).Change = left;
  }
  for (int i = 0; i < 5; ++i) {
    const std::string band = std::to_string(i + 1);
    WireRateBox(rateCard.TxtRangeYield(i), rateCard.UpDyield(i),
                {kInputPercent, kLargestYield, Tr("Yield of band %1", {band}), ""});
    WireRateBox(rateCard.txtComPerc(i), rateCard.UpDCom(i),
                {kInputPercent, kLargestCommission, Tr("Commission of band %1", {band}), ""});
  }
  rateCard.TxtAddRate(0).Change = [] { SupplierChanged = true; };
  rateCard.TxtAddRate(0).Validate = [this] {
    rateCard.TxtAddRate(0).SetText(FormatNumberInput(kInputFreeText, rateCard.TxtAddRate(0).Text()));
  };
  WireRateBox(rateCard.TxtAddRate(1), rateCard.UpDAddRate(1),
              {kInputPercent, kLargestYield, Tr("Additional yield of the premium"), ""});
  WireRateBox(rateCard.TxtAddRate(2), rateCard.UpDAddRate(2),
              {kInputAmount, kLargestAmount, Tr("Least cost of the premium"), ""});
  for (int i = 0; i < 3; ++i) {
    rateCard.ChAddRate(i).Click = [i] {
      SupplierChanged = true;
      if (i == 0) ApplyPremiumSwitch();
    };
  }
  rateCard.LvwForms.ItemCheck = [this](int) { LvwForms_ItemCheck(); };
  rateCard.LvwForms.DblClick = [this] { LvwForms_DblClick(); };
}

void FrmMain::txtRangeTo_Change(int box) {
  rateCard.lblRangeFrom(box - 1).SetCaption(FormatNumberInput(kInputAmount, rateCard.txtRangeTo(box).Text()));
}

// A copy of the form's page is opened, so that nothing the reader does there touches the form itself.
void FrmMain::LvwForms_DblClick() {
  const int row = rateCard.LvwForms.Selected();
  if (row < 0) return;
  const std::string copy = AppFolder + "\\temp.html";
  try {
    DeleteFileIfPresent(copy);
    CopyFile(FormPagePath(IdOfKey(rateCard.LvwForms.At(row).key)), copy);
  } catch (const RuntimeError&) {
    TheDesktop().MessageBox(Tr("File Not Found"), "", BoxButtons::Ok, BoxIcon::None);
    return;
  }
  PreviewFormPage(copy);
}

void FrmMain::LvwForms_ItemCheck() {
  FormLinksChanged = formTicksChanged_ = true;
  SupplierChanged = true;
}

}  // namespace tarvolinex
