// The rate-card panel's handlers.
#include "calc/InputRules.h"
#include "calc/RateCard.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Translation.h"
#include "publish/FolderFiles.h"
#include "publish/LivePage.h"
#include "store/Forms.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {
constexpr double kLargestYield = 100, kLargestCommission = 200;
}

void FrmMain::WireRateBox(TextBox& box, UpDown& upDown, int kind, double largest) {
  box.Change = [] { SupplierChanged = true; };
  // A rate that was only passed through keeps the digits that it has.
  box.GotFocus = [this, &box] { enteredRate_ = box.Text(); };
  box.LostFocus = [this, &box, kind, largest] {
    if (box.Text() != enteredRate_) box.SetText(FormatNumberInput(kind, box.Text(), largest));
    enteredRate_ = box.Text();
  };
  upDown.UpClick = [&box, &upDown, kind] { StepInput(box, true, upDown.Max, kind); };
  upDown.DownClick = [&box, &upDown, kind] { StepInput(box, false, upDown.Min, kind); };
  upDown.Change = [&box, kind] { box.SetText(FormatNumberInput(kind, box.Text())); };
}

void FrmMain::WireRateCard() {
  for (int i = 1; i <= 4; ++i) {
    WireRateBox(rateCard.txtRangeTo(i), rateCard.UpDEquipCost(i), kInputAmount, kLargestAmount);
    rateCard.txtRangeTo(i).Change = [this, i] { txtRangeTo_Change(i); };
    rateCard.txtRangeTo(i).LostFocus = [this, i] { txtRangeTo_LostFocus(i); };
    rateCard.UpDEquipCost(i).Change = [this, i] { txtRangeTo_LostFocus(i); };
  }
  for (int i = 0; i < 5; ++i) {
    WireRateBox(rateCard.TxtRangeYield(i), rateCard.UpDyield(i), kInputPercent, kLargestYield);
    WireRateBox(rateCard.txtComPerc(i), rateCard.UpDCom(i), kInputPercent, kLargestCommission);
  }
  rateCard.TxtAddRate(0).Change = [] { SupplierChanged = true; };
  rateCard.TxtAddRate(0).Validate = [this] {
    rateCard.TxtAddRate(0).SetText(FormatNumberInput(kInputFreeText, rateCard.TxtAddRate(0).Text()));
  };
  WireRateBox(rateCard.TxtAddRate(1), rateCard.UpDAddRate(1), kInputPercent, kLargestYield);
  WireRateBox(rateCard.TxtAddRate(2), rateCard.UpDAddRate(2), kInputAmount, kLargestAmount);
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
  SupplierChanged = true;
  rateCard.lblRangeFrom(box - 1).SetCaption(FormatNumberInput(kInputAmount, rateCard.txtRangeTo(box).Text()));
}

void FrmMain::txtRangeTo_LostFocus(int box) {
  TextBox& field = rateCard.txtRangeTo(box);
  field.SetText(FormatNumberInput(kInputAmount, field.Text(), kLargestAmount));
  RepairThresholdOrder(box);
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
