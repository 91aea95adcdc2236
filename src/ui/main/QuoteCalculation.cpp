// Between the quote panel's boxes and its `Quote`.
#include <algorithm>
#include <limits>
#include <utility>

#include "calc/PricedBy.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/NumberBoxes.h"
#include "ui/main/QuotePanel.h"
#include "ui/quotes/PlanWords.h"

namespace tarvolinex {

namespace {

std::string AmountText(Currency amount) {
  return FormatFixed(amount.ToDouble(), 2);
}

double LargestOf(int kind) {
  if (kind == kInputPayments || kind == kInputCount) return kMostPayments;
  return kind == kInputPercent ? 100 : kLargestAmount;
}

std::string BandAmount(Currency amount) {
  return WithThousands(AmountText(amount));
}

std::string Bound(const RateCard& card, int threshold) {
  return threshold < 0 || threshold > 3 ? "" : BandAmount(card.RangeEquipFROM[static_cast<std::size_t>(threshold)]);
}

std::vector<ListView::Row> BandRows(const RateCard& card, int used) {
  std::vector<ListView::Row> rows;
  for (int band = 0; band < 5; ++band) {
    const auto n = static_cast<std::size_t>(band);
    ListView::Row row;
    row.key = row.text = std::to_string(band + 1);
    row.cells = {Bound(card, band), Bound(card, band - 1), RateText(card.Yield[n]), RateText(card.Com[n]),
                 band == used ? Tr("this quote") : std::string()};
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

double QuotePanel::BoxNumber(int box) const {
  return TypedNumber(TxtProCalc(box).Text(), run_.CalculatorPreferences.CurrencySymbol.Trimmed());
}

Currency QuotePanel::BoxAmount(int box) const {
  return Currency::FromDouble(BoxNumber(box)).value_or(Currency());
}

float QuotePanel::BoxRate(int box) const {
  return static_cast<float>(BoxNumber(box));
}

std::int16_t QuotePanel::BoxCount(int box) const {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<double>(BoxNumber(box), Limits::min(), Limits::max()));
}

void QuotePanel::ReadDeposit() {
  Quote.DepositMode = static_cast<std::int16_t>(std::max(CboProCalc(kListDepositMode).ItemData(), 0));
  Quote.DepositValue = Currency();
  Quote.DepositPercent = 0;
  Quote.AdvancedPayments = 0;
  if (Quote.DepositMode == kDepositValue) Quote.DepositValue = BoxAmount(kBoxDeposit);
  if (Quote.DepositMode == kDepositPercent) Quote.DepositPercent = BoxRate(kBoxDeposit);
  if (Quote.DepositMode == kDepositAdvanced) Quote.AdvancedPayments = BoxCount(kBoxDeposit);
}

void QuotePanel::ReadResidual() {
  const bool percent = CboProCalc(kListResidualMode).ListIndex() == 1;
  Quote.ResidualValue = percent ? Currency() : BoxAmount(kBoxResidual);
  Quote.ResidualPercent = percent ? BoxRate(kBoxResidual) : 0;
}

QuoteTerms QuotePanel::Terms() const {
  return {run_.SupplierCalcSettings, run_.CalculatorPreferences.TaxRate, ckCapLock.Value()};
}

// The residual and deposit boxes show the unit of their list and step in its kind.
void QuotePanel::ApplyUnit(int box, int position) {
  const std::string symbol = run_.CalculatorPreferences.CurrencySymbol.Trimmed();
  LblUnit(box).SetCaption(position == 0 ? CaptionOf(symbol) : position == 1 ? "%" : "");
  AttachUpDown(position, UpDNew(box), TxtProCalc(box));
  TxtProCalc(box).SetText("0");
}

int QuotePanel::QuoteBoxKind(int box) const {
  switch (box) {
    case kBoxPayments:
      return kInputPayments;
    case kBoxDeposit:
      return std::max(CboProCalc(kListDepositMode).ListIndex(), 0);
    case kBoxResidual:
      return std::max(CboProCalc(kListResidualMode).ListIndex(), 0);
    case kBoxYield:
    case kBoxCommissionPercent:
      return kInputPercent;
    default:
      return kInputAmount;
  }
}

NumberRule QuotePanel::QuoteBoxRule(int box) const {
  NumberRule rule;
  rule.kind = QuoteBoxKind(box);
  rule.largest = LargestOf(rule.kind);
  rule.symbol = run_.CalculatorPreferences.CurrencySymbol.Trimmed();
  rule.name = PlainCaption(LblProCalc(box).Caption());
  if (box == kBoxDeposit || box == kBoxResidual) {
    const auto& ways = CboProCalc(box == kBoxDeposit ? kListDepositMode : kListResidualMode).Items();
    const bool percent = TxtProCalc(box).Text().find('%') != std::string::npos;
    if (ways.size() > 1) rule.otherWay = ways[percent ? kDepositPercent : kDepositValue].text;
  }
  return rule;
}

void QuotePanel::MarkQuote() {
  for (int box = 0; box < kQuoteBoxes; ++box) {
    TxtProCalc(box).SetFault(FaultOf(QuoteBoxRule(box), TxtProCalc(box).Text()));
  }
  constexpr Colour kRed = 0x0000C0;
  for (const int result : {kResultCommission, kResultCommissionPercent}) {
    LblResult(result).SetForeColour(Quote.CommissionValue < Currency() ? kRed : kSystemWindowText);
  }
}

void QuotePanel::ReadQuotePanel(int typedBox) {
  const bool yieldIsResult = typedBox != kBoxYield && TxtProCalc(kBoxYield).Text() == RateText(Quote.Yield);
  Quote.CapitalCost = BoxAmount(kBoxCapitalCost);
  ReadDeposit();
  ReadResidual();
  Quote.NumberOfPayments = BoxCount(kBoxPayments);
  Quote.Quarterly = CboProCalc(kListInterval).ListIndex() == 1;
  Quote.Maintenance = BoxAmount(kBoxMaintenance);
  Quote.ApplyPremium = ChkPremium.Value() && ChkPremium.Visible();
  if (!yieldIsResult) Quote.Yield = BoxRate(kBoxYield);
  Quote.CommissionPercent = BoxRate(kBoxCommissionPercent);
  Quote.CommissionValue = BoxAmount(kBoxCommission);
  Quote.Payment = BoxAmount(kBoxPayment);
}

void QuotePanel::CalculateQuote(int mode) {
  tarvolinex::CalculateQuote(mode, Quote, Terms());
  if (shown_.RateCardFault.empty()) return;
  // No figure of these rates is shown, for none of them is known.
  QuoteRecord unpriced;
  unpriced.NumberOfPayments = Quote.NumberOfPayments;
  unpriced.Quarterly = Quote.Quarterly;
  unpriced.CapitalCost = Quote.CapitalCost;
  Quote = unpriced;
}

void QuotePanel::ShowQuoteResults(int typedBox) {
  const auto show = [&](int box, const std::string& text) {
    if (box != typedBox) TxtProCalc(box).SetText(text);
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
  for (const auto& [label, text] : results) LblResult(label).SetCaption(text);
}

void QuotePanel::RecalculateQuote(int mode, int typedBox) {
  const bool before = std::exchange(loading, true);
  LeaveKept();
  ReadQuotePanel(typedBox);
  if (typedBox == kBoxCommission && Quote.CapitalCost != Currency()) {
    Quote.CommissionPercent = static_cast<float>(Quote.CommissionValue.ToDouble() / Quote.CapitalCost.ToDouble() * 100);
  }
  if (typedBox == kBoxCommissionPercent) {
    const double amount = Quote.CapitalCost.ToDouble() * static_cast<double>(Quote.CommissionPercent) / 100;
    Quote.CommissionValue = Currency::FromDouble(amount).value_or(Currency());
  }
  AskedQuote = Quote;
  CalculateQuote(mode);
  ShowQuoteResults(typedBox);
  ShowPricing(mode, AskedQuote, Terms());
  ShowPlan();
  MarkQuote();
  ShownQuoteMode = mode;
  ShownQuoteBox = typedBox;
  loading = before;
}

void QuotePanel::RecalculateShownQuote() {
  if (kept_) return ShowKept(KeptQuote(*kept_));
  RecalculateQuote(ShownQuoteMode, ShownQuoteBox);
}

void QuotePanel::ShowBands(const RateCard& card, int used) {
  ListView& list = LvwBands;
  const std::string symbol = run_.CalculatorPreferences.CurrencySymbol.Trimmed();
  const std::vector<ListView::Row> rows = BandRows(card, used);
  const bool same = !list.Columns().empty() && list.Columns()[1].header == Tr("Over (%1)", {symbol}) &&
                    std::equal(rows.begin(), rows.end(), list.Rows().begin(), list.Rows().end(),
                               [](const ListView::Row& a, const ListView::Row& b) { return a.cells == b.cells; });
  if (same) return;
  list.BeginFill();
  list.Columns() = {{Tr("Band"), "", 800},
                    {Tr("Over (%1)", {symbol}), "", 1800, true},
                    {Tr("Up to (%1)", {symbol}), "", 1800, true},
                    {Tr("Yield (%)"), "", 1500, true},
                    {Tr("Commission (%)"), "", 1900, true},
                    {Tr("Used by"), "", 1300}};
  list.Clear();
  for (const ListView::Row& row : rows) list.Add(row);
  list.EndFill();
}

void QuotePanel::ShowPricing(int mode, const QuoteRecord& asked, const QuoteTerms& terms) {
  LblPriced.SetCaption(CaptionOf(PricedBy(Quote, mode, terms.card)));
  const bool search = mode == kModeCapitalCost;
  const auto nearest = search ? NearestTo(asked, Quote.CapitalCost, terms) : std::nullopt;
  LblNearest.SetCaption(nearest ? NearestText(asked.Payment, *nearest) : std::string());
  const bool byBand = search || mode == kModeForward || mode == kModeCommissionLocked;
  ShowBands(terms.card, byBand ? BandOf(terms.card, Quote.CapitalCost) : -1);
}

UnchangedQuote::UnchangedQuote(QuotePanel& panel) : panel_(panel), wasLoading_(std::exchange(panel.loading, true)) {
  for (const auto& [list, box] :
       {std::pair(kListDepositMode, kBoxDeposit), std::pair(kListResidualMode, kBoxResidual)}) {
    choices_.push_back({list, box, panel.CboProCalc(list).ListIndex(), panel.TxtProCalc(box).Text()});
  }
}

UnchangedQuote::~UnchangedQuote() {
  for (const Choice& choice : choices_) {
    if (choice.position < 0) continue;
    panel_.CboProCalc(choice.list).SetListIndex(choice.position);
    panel_.ApplyQuoteList(choice.list);
    panel_.TxtProCalc(choice.box).SetText(choice.text);
  }
  panel_.SetIntervalCaptions();
  panel_.loading = wasLoading_;
  if (!wasLoading_) panel_.RecalculateShownQuote();
}

void QuotePanel::SetIntervalCaptions() {
  const bool quarterly = CboProCalc(kListInterval).ListIndex() == 1;
  LblUnit(kBoxPayments).SetCaption(quarterly ? Tr("Quarters") : Tr("Months"));
  LblInterval.SetCaption(quarterly ? Tr("Quarterly") : Tr("Monthly"));
  LblProCalc(kBoxPayment)
      .SetCaption(quarterly ? run_.CaptionWithAliases("&Net Quarterly Payment (£)")
                            : run_.CaptionWithAliases("&Net Monthly Payment (£)"));
  LblResultName(kResultPayment)
      .SetCaption(quarterly ? run_.CaptionWithAliases("Net Quarterly Payment (£)")
                            : run_.CaptionWithAliases("Net Monthly Payment (£)"));
}

void QuotePanel::ApplyQuoteList(int list) {
  const int position = CboProCalc(list).ListIndex();
  const bool quarterly = CboProCalc(kListInterval).ListIndex() == 1;
  switch (list) {
    case kListInterval:
      SetIntervalCaptions();
      ApplyQuoteList(kListTerm);
      break;
    case kListTerm:
      if (position >= 0) {
        TxtProCalc(kBoxPayments).SetText(std::to_string((position + 1) * (quarterly ? 4 : 12)));
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

}  // namespace tarvolinex
