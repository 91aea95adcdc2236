#include "ui/main/RateCardPanel.h"

#include <array>

#include "platform/text/Text.h"
#include "ui/NumberBoxes.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

constexpr double kLargestYield = 100, kLargestCommission = 200;

constexpr std::array<LabelWords, 11> kRateWords = {{
    {Marked("<CAPEQUIP> Cost (£)"), Marked("<CAPEQUIP> Cost (£)")},
    {Marked("To (£)"), "To (£)"},
    {Marked("Yield (%)")},
    {Marked("Commission (%)")},
    {Marked("Greater Than")},
    {Marked("from")},
    {Marked("from")},
    {Marked("from")},
    {Marked("from")},
    {"0.00"},
    {Marked("and above")},
}};

constexpr std::array<LabelWords, 3> kPremiumWords = {{
    {Marked("User &Question")},
    {Marked("Additional &Yield (%)")},
    {Marked("Apply &When Greater than")},
}};

struct Switch {
  LabelWords words;
  const char* column;
};

constexpr std::array<Switch, 3> kSwitches = {{
    {{Marked("Additional Rate Premium"), Marked("Additional Rate Premium")}, "AdditionalPremium"},
    {{"", Marked("Show <RESIDUAL>")}, "ResidualOption"},
    {{"", Marked("Show <MAINT>")}, "MaintenanceOption"},
}};
constexpr std::array<const char*, 3> kPremiumColumns = {"AdditionalPremiumMsg", "AdditionalPremiumYield",
                                                        "AdditionalPremiumMin"};

std::string SupplierTag(const std::string& column) {
  return "RS=SUPPLIER;FIELDNAME=" + column;
}

void AttachAll(int kind, const ControlArray<UpDown>& upDowns, const ControlArray<TextBox>& boxes) {
  for (int i = boxes.First(); i <= boxes.Last(); ++i) AttachUpDown(kind, upDowns(i), boxes(i));
}

}  // namespace

RateCardPanel::RateCardPanel(Window& window, Run& run, ShownSupplier& shown)
    : FraRates(window, "FraRates", -1, Tr("Rate card")),
      FraPremium(window, "FraPremium", -1, Tr("Premium")),
      FraShow(window, "FraShow", -1, Tr("Options")),
      LblRateName(window, "LblRateName", static_cast<int>(kRateWords.size())),
      txtRangeTo(window, "txtRangeTo", 4, 1),
      lblRangeFrom(window, "lblRangeFrom", 4),
      UpDEquipCost(window, "UpDEquipCost", 4, 1),
      TxtRangeYield(window, "TxtRangeYield", 5),
      txtComPerc(window, "txtComPerc", 5),
      UpDyield(window, "UpDyield", 5),
      UpDCom(window, "UpDCom", 5),
      ChAddRate(window, "ChAddRate", 3),
      LblAddRate(window, "LblAddRate", 3),
      TxtAddRate(window, "TxtAddRate", 3),
      UpDAddRate(window, "UpDAddRate", 2, 1),
      run_(run),
      shown_(shown) {
  SetWords(LblRateName, kRateWords);
  SetWords(LblAddRate, kPremiumWords);
  for (const ControlArray<TextBox>* boxes : {&txtRangeTo, &TxtRangeYield, &txtComPerc, &TxtAddRate}) {
    for (int i = boxes == &TxtAddRate ? 1 : boxes->First(); i <= boxes->Last(); ++i) (*boxes)(i).SetForNumber("");
  }
  for (int i = 0; i < 4; ++i) txtRangeTo(i + 1).SetTag(SupplierTag("RangeEquipFROM" + std::to_string(i)));
  for (int i = 0; i < 5; ++i) {
    TxtRangeYield(i).SetTag(SupplierTag("Yield" + std::to_string(i)));
    txtComPerc(i).SetTag(SupplierTag("Com" + std::to_string(i)));
  }
  for (int i = 0; i < 3; ++i) {
    const auto n = static_cast<std::size_t>(i);
    ChAddRate(i).SetCaption(Tr(kSwitches[n].words.caption));
    ChAddRate(i).SetTag(SupplierTag(kSwitches[n].column) + ";" + OwnWordsTag(kSwitches[n].words.own));
    TxtAddRate(i).SetTag(SupplierTag(kPremiumColumns[n]));
  }
  Wire();
}

void RateCardPanel::SetDefaults() {
  AttachAll(kInputAmount, UpDEquipCost, txtRangeTo);
  AttachAll(kInputPercent, UpDyield, TxtRangeYield);
  AttachAll(kInputPercent, UpDCom, txtComPerc);
  AttachUpDown(kInputPercent, UpDAddRate(1), TxtAddRate(1));
  AttachUpDown(kInputAmount, UpDAddRate(2), TxtAddRate(2));
}

// The currency may change while the window stands.
NumberRule RateCardPanel::WithSymbol(NumberRule rule) const {
  rule.symbol = run_.CalculatorPreferences.CurrencySymbol.Trimmed();
  return rule;
}

void RateCardPanel::WireRateBox(TextBox& box, UpDown& upDown, const NumberRule& rule) {
  words_[&box] = rule.name;
  box.Change = [this, &box, rule] {
    shown_.SupplierChanged = true;
    if (!box.Edited()) numbers_[&box] = box.Text();
    box.SetFault(FaultOf(WithSymbol(rule), box.Text()));
  };
  box.LostFocus = [this, &box, rule] { LeaveRateBox(box, rule); };
  box.Refused = [this] { SayNumbersOnly(run_); };
  upDown.UpClick = [this, &box, &upDown, rule] { StepInput(box, true, upDown.Max, WithSymbol(rule)); };
  upDown.DownClick = [this, &box, &upDown, rule] { StepInput(box, false, upDown.Min, WithSymbol(rule)); };
  upDown.Change = [&box, rule] { box.SetText(FormatNumberInput(rule.kind, box.Text())); };
}

// What nobody edited keeps the digits that it has.
bool RateCardPanel::LeaveRateBox(TextBox& box, NumberRule rule) {
  if (!box.Edited()) return false;
  rule = WithSymbol(rule);
  const std::string fault = FaultOf(rule, box.Text());
  box.SetText(TextWhenLeft(rule, box.Text(), numbers_[&box]));
  numbers_[&box] = box.Text();
  SayFault(run_, fault, box);
  return true;
}

void RateCardPanel::Wire() {
  for (int i = 1; i <= 4; ++i) {
    const NumberRule rule = {kInputAmount, kLargestAmount, Tr("Threshold of band %1", {std::to_string(i + 1)}), "", ""};
    WireRateBox(txtRangeTo(i), UpDEquipCost(i), rule);
    txtRangeTo(i).Change = [this, i, mark = txtRangeTo(i).Change] {
      mark();
      txtRangeTo_Change(i);
    };
    const Event left = [this, i, rule] {
      if (LeaveRateBox(txtRangeTo(i), rule)) RepairThresholdOrder(i);
    };
    txtRangeTo(i).LostFocus = UpDEquipCost(i).Change = left;
  }
  for (int i = 0; i < 5; ++i) {
    const std::string band = std::to_string(i + 1);
    WireRateBox(TxtRangeYield(i), UpDyield(i), {kInputPercent, kLargestYield, Tr("Yield of band %1", {band}), "", ""});
    WireRateBox(txtComPerc(i), UpDCom(i),
                {kInputPercent, kLargestCommission, Tr("Commission of band %1", {band}), "", ""});
  }
  TxtAddRate(0).Change = [this] { shown_.SupplierChanged = true; };
  TxtAddRate(0).Validate = [this] { TxtAddRate(0).SetText(FormatNumberInput(kInputFreeText, TxtAddRate(0).Text())); };
  WireRateBox(TxtAddRate(1), UpDAddRate(1),
              {kInputPercent, kLargestYield, Tr("Additional yield of the premium"), "", ""});
  WireRateBox(TxtAddRate(2), UpDAddRate(2), {kInputAmount, kLargestAmount, Tr("Least cost of the premium"), "", ""});
  for (int i = 0; i < 3; ++i) {
    ChAddRate(i).Click = [this, i] {
      shown_.SupplierChanged = true;
      if (i == 0) ApplyPremiumSwitch();
    };
  }
}

void RateCardPanel::txtRangeTo_Change(int box) {
  lblRangeFrom(box - 1).SetCaption(FormatNumberInput(kInputAmount, txtRangeTo(box).Text()));
}

std::string RateCardPanel::WordsOf(const Control* box) const {
  if (box == &TxtAddRate(0)) return PlainCaption(LblAddRate(0).Caption());
  const auto found = words_.find(box);
  return found == words_.end() ? std::string() : found->second;
}

double RateCardPanel::Threshold(int box) const {
  return LeadingNumber(txtRangeTo(box).Text());
}

void RateCardPanel::RepairThresholdOrder(int box) {
  for (int j = box; j >= 2; --j) {
    if (Threshold(j) > Threshold(j - 1)) txtRangeTo(j - 1).SetText(txtRangeTo(j).Text());
  }
  for (int j = box; j <= 3; ++j) {
    if (Threshold(j + 1) > Threshold(j)) txtRangeTo(j + 1).SetText(txtRangeTo(j).Text());
  }
}

void RateCardPanel::ApplyPremiumSwitch() {
  const bool locked = !ChAddRate(0).Value();
  for (int i = 0; i < 3; ++i) SetControlLocked(TxtAddRate(i), locked);
  for (int i = 1; i < 3; ++i) SetControlLocked(UpDAddRate(i), locked);
}

}  // namespace tarvolinex
