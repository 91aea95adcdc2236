// The quote panel's controls and handlers.
#include "ui/main/QuotePanel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Aliases.h"
#include "platform/text/Text.h"
#include "ui/NumberBoxes.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

constexpr std::array<LabelWords, kQuoteBoxes> kBoxWords = {{
    {Marked("Capital &Cost (£)"), Marked("<CAPEQUIP> &Cost (£)")},
    {Marked("Num&ber of Payments")},
    {Marked("Deposit"), Marked("<DEPOSIT>")},
    {Marked("Residual Payment"), Marked("<RESIDUAL> Payment")},
    {Marked("&Net Monthly Payment (£)")},
    {Marked("&Yield (%)")},
    {Marked("Maintenance (£)"), Marked("<MAINT> (£)")},
    {Marked("Co&mmission (£)"), "Co&mmission (£)"},
    {Marked("Comm&ission (%)")},
}};

constexpr std::array<LabelWords, kQuoteLists> kListWords = {{
    {Marked("Inter&val")},
    {Marked("Te&rm")},
    {Marked("Deposit as"), Marked("<DEPOSIT> as")},
    {Marked("Residual as"), Marked("<RESIDUAL> as")},
}};

constexpr std::array<LabelWords, kQuoteResults> kResultWords = {{
    {Marked("Net Monthly Payment (£)")},
    {Marked("Payment inc VAT (£)"), Marked("Payment inc <VAT> (£)")},
    {Marked("Deposit (£)"), Marked("<DEPOSIT> (£)")},
    {Marked("Deposit inc VAT (£)"), Marked("<DEPOSIT> inc <VAT> (£)")},
    {Marked("Deposit (%)"), Marked("<DEPOSIT> (%)")},
    {Marked("Residual (£)"), Marked("<RESIDUAL> (£)")},
    {Marked("Residual inc VAT (£)"), Marked("<RESIDUAL> inc <VAT> (£)")},
    {Marked("Residual (%)"), Marked("<RESIDUAL> (%)")},
    {Marked("Net Capital (£)"), "Net Capital (£)"},
    {Marked("Capital Cost (£)"), Marked("<CAPEQUIP> Cost (£)")},
    {Marked("Commission (£)"), "Commission (£)"},
    {Marked("Commission (%)")},
    {Marked("Yield (%)")},
    {Marked("Premium Yield (%)")},
}};

constexpr const char* kNoPremium = Marked("Additional Rate Premium disabled for this <SUPPLIER>");
constexpr const char* kNoResidual = Marked("<RESIDUAL> disabled for this <SUPPLIER>");
constexpr const char* kNoMaintenance = Marked("<MAINT> disabled for this <SUPPLIER>");

int ModeFor(int box, bool locked) {
  switch (box) {
    case kBoxPayment:
      return locked ? kModePayment : kModeCapitalCost;
    case kBoxYield:
      return kModeYield;
    case kBoxCommission:
    case kBoxCommissionPercent:
      return locked ? kModeCommissionLocked : kModeCommission;
    default:
      return kModeForward;
  }
}

}  // namespace

QuotePanel::QuotePanel(Window& window, Run& run, const ShownSupplier& shown)
    : LblProCalc(window, "LblProCalc", kQuoteBoxes),
      LblProList(window, "LblProList", kQuoteLists),
      LblResultName(window, "LblResultName", kQuoteResults),
      TxtProCalc(window, "TxtProCalc", kQuoteBoxes),
      UpDNew(window, "UpDNew", kQuoteBoxes),
      LblUnit(window, "LblUnit", kQuoteBoxes),
      CboProCalc(window, "CboProCalc", kQuoteLists),
      ChkPremium(window, "ChkPremium", -1, Tr("&With premium")),
      ckCapLock(window, "ckCapLock", -1, Tr("Loc&k")),
      LblPremium(window, "LblPremium", -1, Tr("Additional Rate Premium")),
      LblInterval(window, "LblInterval", -1, Tr("Monthly")),
      FraQuote(window, "FraQuote", -1, Tr("Lease")),
      FraRate(window, "FraRate", -1, Tr("Rate and payment")),
      FraResult(window, "FraResult", -1, Tr("Results")),
      LblResult(window, "LblResult", kQuoteResults),
      LblNearest(window, "LblNearest"),
      LblPriced(window, "LblPriced"),
      FraPlan(window, "FraPlan", -1, Tr("What is paid")),
      LblTotal(window, "LblTotal"),
      ChtPayments(window, "ChtPayments"),
      CmdSchedule(window, "CmdSchedule", -1, Tr("Sched&ule...")),
      CmdTerms(window, "CmdTerms", -1, Tr("Comp&are Terms...")),
      CmdSheet(window, "CmdSheet", -1, Tr("&Quote Sheet...")),
      CmdKeepQuote(window, "CmdKeepQuote", -1, Tr("Kee&p...")),
      LblKept(window, "LblKept"),
      FraBands(window, "FraBands", -1, Tr("Rate card in force")),
      LvwBands(window, "LvwBands"),
      run_(run),
      shown_(shown) {
  for (int i = 0; i < kQuoteBoxes; ++i) TxtProCalc(i).SetForNumber("");
  LblKept.SetVisible(false);
  CmdKeepQuote.SetToolTip(Tr("Keep the quote under a number of its own; File, Quotes shows all of them"));
  // What stands in these lists says itself what it is; the captions name them to a screen reader.
  for (const int list : {kListDepositMode, kListResidualMode}) LblProList(list).SetVisible(false);
  SetWords(LblProCalc, kBoxWords);
  SetWords(LblProList, kListWords);
  SetWords(LblResultName, kResultWords);
  ckCapLock.SetToolTip(Tr("Keep the capital cost when the payment or the commission is typed"));
  for (const std::string& interval : {Tr("Monthly"), Tr("Quarterly")}) CboProCalc(kListInterval).Add(interval);
  for (const std::string& term : {Tr("1 Year"), Tr("2 Years"), Tr("3 Years"), Tr("4 Years"), Tr("5 Years")}) {
    CboProCalc(kListTerm).Add(term);
  }
  Wire();
}

void QuotePanel::Wire() {
  for (int i = 0; i < kQuoteBoxes; ++i) {
    TxtProCalc(i).Change = [this, i] { TxtProCalc_Change(i); };
    TxtProCalc(i).LostFocus = [this, i] { TxtProCalc_LostFocus(i); };
    TxtProCalc(i).Refused = [this] { SayNumbersOnly(run_); };
    UpDNew(i).UpClick = [this, i] { UpDNew_Step(i, true); };
    UpDNew(i).DownClick = [this, i] { UpDNew_Step(i, false); };
    UpDNew(i).Change = [this, i] { TxtProCalc_LostFocus(i); };
  }
  for (int i = 0; i < kQuoteLists; ++i) {
    CboProCalc(i).Click = [this, i] { CboProCalc_Click(i); };
  }
  ckCapLock.Click = [this] { ckCapLock_Click(); };
  ChkPremium.Click = [this] { ChkPremium_Click(); };
}

void QuotePanel::TxtProCalc_Change(int box) {
  if (loading) {
    numbers_[&TxtProCalc(box)] = TxtProCalc(box).Text();
    return;
  }
  const bool nothing = BoxNumber(kBoxCapitalCost) == 0;
  if (nothing) {
    loading = true;  // the lock goes off by itself: the cursor stays, and so does what is typed
    ckCapLock.SetValue(false);
    loading = false;
  }
  ckCapLock.SetEnabled(!nothing);
  if (box == kBoxPayments) ShowTermOf(static_cast<int>(std::clamp(BoxNumber(kBoxPayments), 0.0, kMostPayments + 1)));
  RecalculateQuote(ModeFor(box, ckCapLock.Value()), box);
}

void QuotePanel::ShowTermOf(int payments) {
  const int aYear = CboProCalc(kListInterval).ListIndex() == 1 ? 4 : 12;
  const int years = payments / aYear;
  if (payments % aYear != 0 || years < 1 || years > 5) return;
  const bool before = std::exchange(loading, true);
  CboProCalc(kListTerm).SetListIndex(years - 1);
  loading = before;
}

void QuotePanel::TxtProCalc_LostFocus(int box) {
  TextBox& field = TxtProCalc(box);
  const NumberRule rule = QuoteBoxRule(box);
  const std::string fault = FaultOf(rule, field.Text());
  const bool typed = field.Text() != numbers_[&field];
  const std::string formatted = TextWhenLeft(rule, field.Text(), numbers_[&field]);
  // The same number in another dress is nothing to calculate with: what the user typed last stays in force.
  const bool before = loading;
  loading = loading || LeadingNumber(formatted) == BoxNumber(box);
  field.SetText(formatted);
  loading = before;
  numbers_[&field] = formatted;
  MarkQuote();
  // A box that was only passed through says nothing, and leaves what another one has said.
  if (typed || !fault.empty()) SayFault(run_, fault, field);
  // Where the calculation did not take what was typed, the box shows what it came to.
  const bool computed = box == kBoxPayment || box == kBoxYield || box == kBoxCommission || box == kBoxCommissionPercent;
  if (!computed || box != ShownQuoteBox || loading) return;
  loading = true;
  ShowQuoteResults();
  loading = false;
}

void QuotePanel::UpDNew_Step(int box, bool up) {
  const UpDown& arrows = UpDNew(box);
  NumberRule rule = QuoteBoxRule(box);
  if (rule.kind == kInputPayments) rule.kind = kInputCount;
  StepInput(TxtProCalc(box), up, up ? arrows.Max : arrows.Min, rule);
}

void QuotePanel::CboProCalc_Click(int list) {
  if (loading) return;
  // A unit that is chosen once more keeps what the box holds.
  const int box = list == kListDepositMode ? kBoxDeposit : list == kListResidualMode ? kBoxResidual : -1;
  if (box >= 0 && UpDNew(box).Kind == CboProCalc(list).ListIndex()) return;
  loading = true;
  ApplyQuoteList(list);
  loading = false;
  RecalculateQuote();
}

void QuotePanel::ckCapLock_Click() {
  const bool locked = ckCapLock.Value();
  SetControlLocked(TxtProCalc(kBoxCapitalCost), locked);
  SetControlLocked(UpDNew(kBoxCapitalCost), locked);
  if (loading) return;
  // Only the search moves the cost: from now on the commission gives the payment.
  if (locked && ShownQuoteMode == kModeCapitalCost) RecalculateQuote(kModePayment, ShownQuoteBox);
  if (locked) return;
  TxtProCalc(kBoxCapitalCost).SetFocus();
  TxtProCalc_Change(kBoxCapitalCost);
}

void QuotePanel::ChkPremium_Click() {
  if (loading) return;
  TxtProCalc(kBoxCapitalCost).SetFocus();
  TxtProCalc_Change(kBoxCapitalCost);
}

void QuotePanel::SetDefaults() {
  const bool before = std::exchange(loading, true);
  constexpr int kKinds[kQuoteBoxes] = {kInputAmount,  kInputPayments, kInputAmount, kInputAmount, kInputAmount,
                                       kInputPercent, kInputAmount,   kInputAmount, kInputPercent};
  for (int i = 0; i < kQuoteBoxes; ++i) AttachUpDown(kKinds[i], UpDNew(i), TxtProCalc(i));
  ckCapLock.SetEnabled(BoxNumber(kBoxCapitalCost) != 0);
  for (int i = 0; i < kQuoteLists; ++i) CboProCalc(i).SetListIndex(0);
  for (int i = 0; i < kQuoteLists; ++i) ApplyQuoteList(i);
  RecalculateQuote();
  loading = before;
}

void QuotePanel::ListUnits() {
  const CalculatorPreferencesRecord& words = run_.CalculatorPreferences;
  const std::string value = Tr("Value (%1)", {words.CurrencySymbol.Trimmed()});
  const std::string percent = Tr("% of %1 Cost", {words.AliasCapEquip.Trimmed()});
  ComboBox &deposit = CboProCalc(kListDepositMode), &residual = CboProCalc(kListResidualMode);
  deposit.Clear();
  deposit.Add(value, kDepositValue);
  deposit.Add(percent, kDepositPercent);
  deposit.Add(Tr("Advanced Payments"), kDepositAdvanced);
  residual.Clear();
  residual.Add(value);
  residual.Add(percent);
  deposit.SetListIndex(0);
  residual.SetListIndex(0);
}

// Locks or frees one input with what belongs to it; a locked one holds 0 and says why.
void QuotePanel::OfferInput(int box, bool offered, ComboBox* list, const char* reason) {
  const std::string toolTip = offered ? "" : run_.ReplaceAliases(reason);
  SetControlLocked(TxtProCalc(box), !offered);
  SetControlLocked(UpDNew(box), !offered);
  TxtProCalc(box).SetToolTip(toolTip);
  if (list) {
    SetControlLocked(*list, !offered);
    list->SetToolTip(toolTip);
  }
  if (!offered) TxtProCalc(box).SetText("0");
}

void QuotePanel::ApplySupplierOptions() {
  const bool before = std::exchange(loading, true);
  const SupplierCalcSettingsRecord& offers = run_.SupplierCalcSettings;
  const bool premium = offers.AdditionalPremium;
  LblPremium.SetCaption(CaptionOf(PremiumCaption(offers)));
  SetControlLocked(ChkPremium, !premium);
  if (!premium) ChkPremium.SetValue(false);
  ChkPremium.SetToolTip(premium ? "" : run_.ReplaceAliases(kNoPremium));
  OfferInput(kBoxResidual, offers.ResidualOption, &CboProCalc(kListResidualMode), kNoResidual);
  OfferInput(kBoxMaintenance, offers.MaintenanceOption, nullptr, kNoMaintenance);
  loading = before;
}

void QuotePanel::NameWhatIsLocked() {
  const std::pair<Control*, const char*> inputs[] = {{&ChkPremium, kNoPremium},
                                                     {&TxtProCalc(kBoxResidual), kNoResidual},
                                                     {&CboProCalc(kListResidualMode), kNoResidual},
                                                     {&TxtProCalc(kBoxMaintenance), kNoMaintenance}};
  for (const auto& [input, reason] : inputs) {
    if (!input->ToolTip().empty()) input->SetToolTip(run_.ReplaceAliases(reason));
  }
}

}  // namespace tarvolinex
