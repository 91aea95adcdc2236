// A supplier's rate card: its bands, the premium and the switches.
#pragma once

#include <map>
#include <string>

#include "calc/InputRules.h"
#include "controls/Controls.h"
#include "core/Run.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

class RateCardPanel {
 public:
  RateCardPanel(Window& window, Run& run, ShownSupplier& shown);
  Frame FraRates, FraPremium, FraShow;
  ControlArray<Label> LblRateName;    // column headings and row captions
  ControlArray<TextBox> txtRangeTo;   // 1 to 4: box i holds threshold i - 1
  ControlArray<Label> lblRangeFrom;   // 0 to 3: label i - 1 mirrors box i
  ControlArray<UpDown> UpDEquipCost;  // 1 to 4
  ControlArray<TextBox> TxtRangeYield, txtComPerc;
  ControlArray<UpDown> UpDyield, UpDCom;
  ControlArray<CheckBox> ChAddRate;  // premium, residual, maintenance
  ControlArray<Label> LblAddRate;
  ControlArray<TextBox> TxtAddRate;  // caption, yield, minimum
  ControlArray<UpDown> UpDAddRate;   // 1 and 2

  // Up-downs. Run once, while the window loads.
  void SetDefaults();

  // The premium's caption, yield and minimum can be edited when its switch is on.
  void ApplyPremiumSwitch();

  // What the tab calls the box; empty when it is none of these.
  std::string WordsOf(const Control* box) const;

  // After threshold box i (1 to 4) was left: boxes above it are raised to at least its value and boxes below it lowered
  // to at most its value, each only if it has to.
  void RepairThresholdOrder(int box);

 private:
  void Wire();
  void WireRateBox(TextBox& box, UpDown& upDown, const NumberRule& rule);
  bool LeaveRateBox(TextBox& box, NumberRule rule);
  void txtRangeTo_Change(int box);
  double Threshold(int box) const;
  NumberRule WithSymbol(NumberRule rule) const;

  Run& run_;
  ShownSupplier& shown_;
  std::map<const TextBox*, std::string> numbers_;  // what each box was last left with or given
  std::map<const Control*, std::string> words_;
};

}  // namespace tarvolinex
