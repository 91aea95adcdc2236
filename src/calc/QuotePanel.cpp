#include "calc/QuotePanel.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "calc/PricedBy.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

double BoxNumber(int box) {
  return TypedNumber(MainForm().quote.TxtProCalc(box).Text());
}

Currency BoxAmount(int box) {
  return Currency::FromDouble(BoxNumber(box)).value_or(Currency());
}

float BoxRate(int box) {
  return static_cast<float>(BoxNumber(box));
}

std::int16_t BoxCount(int box) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<double>(BoxNumber(box), Limits::min(), Limits::max()));
}

std::string AmountText(Currency amount) {
  return FormatFixed(amount.ToDouble(), 2);
}
std::string RateText(float rate) {
  return FormatNumberInput(kInputPercent, FormatSingle(rate));
}

void ReadDeposit() {
  Quote.DepositMode = static_cast<std::int16_t>(std::max(MainForm().quote.CboProCalc(kListDepositMode).ItemData(), 0));
  Quote.DepositValue = Currency();
  Quote.DepositPercent = 0;
  Quote.AdvancedPayments = 0;
  if (Quote.DepositMode == kDepositValue) Quote.DepositValue = BoxAmount(kBoxDeposit);
  if (Quote.DepositMode == kDepositPercent) Quote.DepositPercent = BoxRate(kBoxDeposit);
  if (Quote.DepositMode == kDepositAdvanced) Quote.AdvancedPayments = BoxCount(kBoxDeposit);
}

void ReadResidual() {
  const bool percent = MainForm().quote.CboProCalc(kListResidualMode).ListIndex() == 1;
  Quote.ResidualValue = percent ? Currency() : BoxAmount(kBoxResidual);
  Quote.ResidualPercent = percent ? BoxRate(kBoxResidual) : 0;
}

QuoteTerms Terms() {
  return {SupplierCalcSettings, CalculatorPreferences.TaxRate, MainForm().quote.ckCapLock.Value()};
}

// The residual and deposit boxes show the unit of their list and step in its kind.
void ApplyUnit(int box, int position) {
  QuotePanel& panel = MainForm().quote;
  const std::string symbol = CalculatorPreferences.CurrencySymbol.Trimmed();
  panel.LblUnit(box).SetCaption(position == 0 ? CaptionOf(symbol) : position == 1 ? "%" : "");
  AttachUpDown(position, panel.UpDNew(box), panel.TxtProCalc(box));
  panel.TxtProCalc(box).SetText("0");
}

// A caption as it reads, without its access key.
std::string Plain(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

double LargestOf(int kind) {
  if (kind == kInputPayments || kind == kInputCount) return kMostPayments;
  return kind == kInputPercent ? 100 : kLargestAmount;
}

void AttachAll(int kind, const ControlArray<UpDown>& upDowns, const ControlArray<TextBox>& boxes) {
  for (int i = boxes.First(); i <= boxes.Last(); ++i) AttachUpDown(kind, upDowns(i), boxes(i));
}

}  // namespace

int QuoteBoxKind(int box) {
  const QuotePanel& panel = MainForm().quote;
  switch (box) {
    case kBoxPayments:
      return kInputPayments;
    case kBoxDeposit:
      return std::max(panel.CboProCalc(kListDepositMode).ListIndex(), 0);
    case kBoxResidual:
      return std::max(panel.CboProCalc(kListResidualMode).ListIndex(), 0);
    case kBoxYield:
    case kBoxCommissionPercent:
      return kInputPercent;
    default:
      return kInputAmount;
  }
}

NumberRule QuoteBoxRule(int box) {
  const QuotePanel& panel = MainForm().quote;
  NumberRule rule;
  rule.kind = QuoteBoxKind(box);
  rule.largest = LargestOf(rule.kind);
  rule.name = Plain(panel.LblProCalc(box).Caption());
  if (box == kBoxDeposit || box == kBoxResidual) {
    const auto& ways = panel.CboProCalc(box == kBoxDeposit ? kListDepositMode : kListResidualMode).Items();
    const bool percent = panel.TxtProCalc(box).Text().find('%') != std::string::npos;
    if (ways.size() > 1) rule.otherWay = ways[percent ? kDepositPercent : kDepositValue].text;
  }
  return rule;
}

void MarkQuote() {
  QuotePanel& panel = MainForm().quote;
  for (int box = 0; box < kQuoteBoxes; ++box) {
    panel.TxtProCalc(box).SetFault(FaultOf(QuoteBoxRule(box), panel.TxtProCalc(box).Text()));
  }
  constexpr Colour kRed = 0x0000C0;
  for (const int result : {kResultCommission, kResultCommissionPercent}) {
    panel.LblResult(result).SetForeColour(Quote.CommissionValue < Currency() ? kRed : kSystemWindowText);
  }
}

void ReadQuotePanel(int typedBox) {
  QuotePanel& panel = MainForm().quote;
  const bool yieldIsResult = typedBox != kBoxYield && panel.TxtProCalc(kBoxYield).Text() == RateText(Quote.Yield);
  Quote.CapitalCost = BoxAmount(kBoxCapitalCost);
  ReadDeposit();
  ReadResidual();
  Quote.NumberOfPayments = BoxCount(kBoxPayments);
  Quote.Quarterly = panel.CboProCalc(kListInterval).ListIndex() == 1;
  Quote.Maintenance = BoxAmount(kBoxMaintenance);
  Quote.ApplyPremium = panel.ChkPremium.Value() && panel.ChkPremium.Visible();
  if (!yieldIsResult) Quote.Yield = BoxRate(kBoxYield);
  Quote.CommissionPercent = BoxRate(kBoxCommissionPercent);
  Quote.CommissionValue = BoxAmount(kBoxCommission);
  Quote.Payment = BoxAmount(kBoxPayment);
}

void CalculateQuote(int mode) {
  CalculateQuote(mode, Quote, Terms());
  if (RateCardFault.empty()) return;
  // No figure of these rates is shown, for none of them is known.
  QuoteRecord unpriced;
  unpriced.NumberOfPayments = Quote.NumberOfPayments;
  unpriced.Quarterly = Quote.Quarterly;
  unpriced.CapitalCost = Quote.CapitalCost;
  Quote = unpriced;
}

void ShowQuoteResults(int typedBox) {
  QuotePanel& panel = MainForm().quote;
  const auto show = [&](int box, const std::string& text) {
    if (box != typedBox) panel.TxtProCalc(box).SetText(text);
  };
  if (typedBox == kBoxPayment) show(kBoxCapitalCost, AmountText(Quote.CapitalCost));
  show(kBoxPayment, AmountText(Quote.Payment));
  show(kBoxYield, RateText(Quote.Yield));
  show(kBoxCommission, AmountText(Quote.CommissionValue));
  show(kBoxCommissionPercent, RateText(Quote.CommissionPercent));

  const double capital = Quote.CapitalCost.ToDouble();
  const double depositPercent = capital > 0 ? Quote.DepositValue.ToDouble() / capital * 100 : 0;
  const std::pair<int, std::string> results[] = {
      {kResultPayment, AmountText(Quote.Payment)},
      {kResultPaymentIncTax, AmountText(Quote.PaymentIncTax)},
      {kResultDeposit, AmountText(Quote.DepositValue)},
      {kResultDepositIncTax, AmountText(Quote.DepositIncTax)},
      {kResultDepositPercent, FormatFixed(depositPercent, 2)},
      {kResultResidual, AmountText(Quote.ResidualValue)},
      {kResultResidualIncTax, AmountText(Quote.ResidualIncTax)},
      {kResultResidualPercent, RateText(Quote.ResidualPercent)},
      {kResultNetCapital, AmountText(Quote.NetCapital)},
      {kResultCapitalCost, AmountText(Quote.CapitalCost)},
      {kResultCommission, AmountText(Quote.CommissionValue)},
      {kResultCommissionPercent, RateText(Quote.CommissionPercent)},
      {kResultYield, RateText(Quote.Yield)},
      {kResultPremiumYield, RateText(Quote.PremiumYield)},
  };
  for (const auto& [label, text] : results) panel.LblResult(label).SetCaption(text);
}

void RecalculateQuote(int mode, int typedBox) {
  MainWindow& form = MainForm();
  const bool before = std::exchange(form.loading, true);
  ReadQuotePanel(typedBox);
  if (typedBox == kBoxCommission && Quote.CapitalCost != Currency()) {
    Quote.CommissionPercent = static_cast<float>(Quote.CommissionValue.ToDouble() / Quote.CapitalCost.ToDouble() * 100);
  }
  if (typedBox == kBoxCommissionPercent) {
    const double amount = Quote.CapitalCost.ToDouble() * static_cast<double>(Quote.CommissionPercent) / 100;
    Quote.CommissionValue = Currency::FromDouble(amount).value_or(Currency());
  }
  const QuoteRecord asked = Quote;
  CalculateQuote(mode);
  ShowQuoteResults(typedBox);
  ShowPricing(mode, asked, Terms());
  MarkQuote();
  ShownQuoteMode = mode;
  ShownQuoteBox = typedBox;
  form.loading = before;
}

void RecalculateShownQuote() {
  RecalculateQuote(ShownQuoteMode, ShownQuoteBox);
}

KeptQuote::KeptQuote() : wasLoading_(std::exchange(MainForm().loading, true)) {
  const QuotePanel& panel = MainForm().quote;
  for (const auto& [list, box] :
       {std::pair(kListDepositMode, kBoxDeposit), std::pair(kListResidualMode, kBoxResidual)}) {
    choices_.push_back({list, box, panel.CboProCalc(list).ListIndex(), panel.TxtProCalc(box).Text()});
  }
}

KeptQuote::~KeptQuote() {
  QuotePanel& panel = MainForm().quote;
  for (const Choice& choice : choices_) {
    if (choice.position < 0) continue;
    panel.CboProCalc(choice.list).SetListIndex(choice.position);
    ApplyQuoteList(choice.list);
    panel.TxtProCalc(choice.box).SetText(choice.text);
  }
  SetIntervalCaptions();
  MainForm().loading = wasLoading_;
  if (!wasLoading_) RecalculateShownQuote();
}

void SetIntervalCaptions() {
  QuotePanel& panel = MainForm().quote;
  const bool quarterly = panel.CboProCalc(kListInterval).ListIndex() == 1;
  panel.LblUnit(kBoxPayments).SetCaption(quarterly ? Tr("Quarters") : Tr("Months"));
  panel.LblInterval.SetCaption(quarterly ? Tr("Quarterly") : Tr("Monthly"));
  panel.LblProCalc(kBoxPayment)
      .SetCaption(quarterly ? CaptionWithAliases("Net Quarterly &Payment (£)")
                            : CaptionWithAliases("Net Monthly &Payment (£)"));
  panel.LblResultName(kResultPayment)
      .SetCaption(quarterly ? CaptionWithAliases("Net Quarterly Payment (£)")
                            : CaptionWithAliases("Net Monthly Payment (£)"));
}

void ApplyQuoteList(int list) {
  QuotePanel& panel = MainForm().quote;
  const int position = panel.CboProCalc(list).ListIndex();
  const bool quarterly = panel.CboProCalc(kListInterval).ListIndex() == 1;
  switch (list) {
    case kListInterval:
      SetIntervalCaptions();
      ApplyQuoteList(kListTerm);
      break;
    case kListTerm:
      if (position >= 0) {
        panel.TxtProCalc(kBoxPayments).SetText(std::to_string((position + 1) * (quarterly ? 4 : 12)));
      }
      break;
    case kListDepositMode:
      ApplyUnit(kBoxDeposit, std::max(position, 0));
      break;
    case kListResidualMode:
      ApplyUnit(kBoxResidual, std::max(position, 0));
      break;
    default:
      break;
  }
}

void SetDefaults() {
  MainWindow& form = MainForm();
  QuotePanel& quote = form.quote;
  RateCardPanel& card = form.rateCard;
  const bool before = std::exchange(form.loading, true);
  constexpr int kKinds[kQuoteBoxes] = {kInputAmount,  kInputPayments, kInputAmount, kInputAmount, kInputAmount,
                                       kInputPercent, kInputAmount,   kInputAmount, kInputPercent};
  for (int i = 0; i < kQuoteBoxes; ++i) AttachUpDown(kKinds[i], quote.UpDNew(i), quote.TxtProCalc(i));
  quote.ckCapLock.SetEnabled(BoxNumber(kBoxCapitalCost) != 0);
  AttachAll(kInputAmount, card.UpDEquipCost, card.txtRangeTo);
  AttachAll(kInputPercent, card.UpDyield, card.TxtRangeYield);
  AttachAll(kInputPercent, card.UpDCom, card.txtComPerc);
  AttachUpDown(kInputPercent, card.UpDAddRate(1), card.TxtAddRate(1));
  AttachUpDown(kInputAmount, card.UpDAddRate(2), card.TxtAddRate(2));
  for (int i = 0; i < kQuoteLists; ++i) quote.CboProCalc(i).SetListIndex(0);
  for (int i = 0; i < kQuoteLists; ++i) ApplyQuoteList(i);
  RecalculateQuote();
  form.loading = before;
}

}  // namespace tarvolinex
