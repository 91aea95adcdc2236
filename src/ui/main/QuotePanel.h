// The quote: its boxes and lists, the calculation that they show, and what the figures were priced by.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "calc/InputRules.h"
#include "calc/Payment.h"
#include "controls/Controls.h"
#include "controls/PaintControls.h"
#include "core/Run.h"
#include "store/KeptQuotes.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

// Indexes of QuotePanel::TxtProCalc.
enum QuoteBox {
  kBoxCapitalCost = 0,
  kBoxPayments = 1,
  kBoxDeposit = 2,
  kBoxResidual = 3,
  kBoxPayment = 4,
  kBoxYield = 5,
  kBoxMaintenance = 6,
  kBoxCommission = 7,
  kBoxCommissionPercent = 8,
  kQuoteBoxes = 9
};

// Indexes of QuotePanel::CboProCalc.
enum QuoteList { kListInterval = 0, kListTerm = 1, kListDepositMode = 2, kListResidualMode = 3, kQuoteLists = 4 };

// Indexes of QuotePanel::LblResult: what the quote comes to.
enum QuoteResult {
  kResultPayment,
  kResultPaymentIncTax,
  kResultDeposit,
  kResultDepositIncTax,
  kResultDepositPercent,
  kResultResidual,
  kResultResidualIncTax,
  kResultResidualPercent,
  kResultNetCapital,
  kResultCapitalCost,
  kResultCommission,
  kResultCommissionPercent,
  kResultYield,
  kResultPremiumYield,
  kQuoteResults
};

class QuotePanel {
 public:
  // Prices with the run's `SupplierCalcSettings`.
  QuotePanel(Window& window, Run& run, const ShownSupplier& shown);

  // Captions beside the boxes, by QuoteBox; those beside the lists, by QuoteList; those beside the results.
  ControlArray<Label> LblProCalc, LblProList, LblResultName;
  ControlArray<TextBox> TxtProCalc;   // by QuoteBox
  ControlArray<UpDown> UpDNew;        // beside each of them
  ControlArray<Label> LblUnit;        // unit after each of them
  ControlArray<ComboBox> CboProCalc;  // by QuoteList
  CheckBox ChkPremium, ckCapLock;
  Label LblPremium;  // the supplier's caption of the premium
  Label LblInterval;
  Frame FraQuote, FraRate, FraResult;
  ControlArray<Label> LblResult;  // by QuoteResult
  Label LblNearest;               // why no capital cost gives the payment, and what comes nearest
  Label LblPriced;                // what the results were priced by
  // What is paid over the whole lease: in words, as bars, and where it leads.
  Frame FraPlan;
  Label LblTotal;
  BarChart ChtPayments;
  CommandButton CmdSchedule, CmdTerms, CmdSheet, CmdKeepQuote;
  Label LblKept;  // which kept quote is shown, and what today's rate card makes of it; else it is not seen
  Frame FraBands;
  ListView LvwBands;  // the rate card in force

  QuoteRecord Quote;       // the calculation that the panel shows
  QuoteRecord AskedQuote;  // what it began with
  // How it came about: the mode, and the box that the user changed (-1 for none).
  int ShownQuoteMode = kModeForward;
  int ShownQuoteBox = -1;

  // The loading indication: the program itself is filling the panel, so its handlers return at once.
  bool loading = false;

  // Up-downs, lists and starting values. Run once, while the window loads.
  void SetDefaults();

  // Fills the lists of units in the organisation's words, and selects their first entries.
  void ListUnits();
  // Captions that name the payment interval.
  void SetIntervalCaptions();
  // What a list's choice changes in the panel, without recalculating.
  void ApplyQuoteList(int list);

  // Sets the panel to what the supplier in hand offers: the premium's caption and check box, the residual and
  // maintenance inputs.
  void ApplySupplierOptions();
  // What is locked says why in the organisation's present words.
  void NameWhatIsLocked();

  // How high the tab is, in twips: the rate card is shown only where it does not press the rest.
  void SetRoom(int height);

  // What rates and prices: the rate card and tax in force.
  QuoteTerms Terms() const;
  // Whether there is a quote to show, keep or send: payments to come, at rates that are known.
  bool HasQuote() const;
  // Whether it can be priced otherwise: a kept quote only while its own supplier is shown, with rates that are known.
  bool MayPriceAnew() const;
  // When the lease begins as far as it is known: as a kept quote says, else on the day it was kept, else today.
  CalendarDay Start() const;
  // What is shown, with what was asked.
  QuoteFigures Figures() const;
  // Shows a kept quote with the figures that it had. It stays so until the user changes something or another supplier
  // is shown; then the quote goes on at today's rates. While its own supplier is not shown its inputs are disabled.
  void ShowKept(const KeptQuote& quote);
  // The kept quote is no longer kept: it goes on at today's rates when its own supplier is shown, else it is emptied.
  void LoseKept();
  const std::optional<KeptQuote>& Kept() const { return kept_; }
  // Asks the same once more, at today's rates.
  void TakeRequest(const QuoteFigures& figures);
  // Takes another number of payments and deposit, in the unit of its list; what the user typed last stays in force.
  void TakeVariant(const std::string& payments, const std::string& deposit);

  // Reads the boxes, runs the calculation, shows its results in the labels and in the boxes that it derives, with the
  // loading indication set meanwhile. The box that the user is typing in, and boxes that are inputs in every mode
  // (deposit and residual keep their unit), are left alone.
  // typedBox: the box that the user changed, -1 for none.
  void RecalculateQuote(int mode = kModeForward, int typedBox = -1);

  // The same calculation once more, after its surroundings have changed: what the user typed last still decides what is
  // given and what is derived. A kept quote stays as it is.
  void RecalculateShownQuote();

 private:
  void Wire();
  void TxtProCalc_Change(int box);
  void TxtProCalc_LostFocus(int box);
  void UpDNew_Step(int box, bool up);
  void CboProCalc_Click(int list);
  void ckCapLock_Click();
  void ChkPremium_Click();

  double BoxNumber(int box) const;
  Currency BoxAmount(int box) const;
  float BoxRate(int box) const;
  std::int16_t BoxCount(int box) const;
  // The up-down kind of a quote box, and what it may hold, as the deposit and residual modes make it.
  int QuoteBoxKind(int box) const;
  NumberRule QuoteBoxRule(int box) const;
  // Marks the boxes that hold what they may not, and a commission below 0.
  void MarkQuote();
  // A yield box that still shows the last result stands for the result's exact value (the box has two decimals), unless
  // it is the box that the user changed.
  void ReadQuotePanel(int typedBox);
  void ReadDeposit();
  void ReadResidual();
  void CalculateQuote(int mode);
  void ShowPlan();
  // Chooses the year of a number of payments that is a whole one of the list.
  void ShowTermOf(int payments);
  void ShowQuoteResults(int typedBox = -1);
  void ShowPricing(int mode, const QuoteRecord& asked, const QuoteTerms& terms);
  void ShowBands(const RateCard& card, int used);
  void FillInputs(const QuoteFigures& figures);
  bool IsOfShownSupplier() const;
  void ShowKeptWords();
  void FitBands();
  void LeaveKept();
  void ApplyUnit(int box, int position);
  void OfferInput(int box, bool offered, ComboBox* list, const char* reason);

  Run& run_;
  const ShownSupplier& shown_;
  std::optional<KeptQuote> kept_;                  // that is shown as it was quoted
  int room_ = 0;                                   // see SetRoom
  std::map<const TextBox*, std::string> numbers_;  // what each box was last left with or given
};

// While it lives, the panel's lists may be made anew; afterwards they, the deposit and the residual are as they were,
// and the quote is computed again as the user left it.
class UnchangedQuote {
 public:
  explicit UnchangedQuote(QuotePanel& panel);
  ~UnchangedQuote();
  UnchangedQuote(const UnchangedQuote&) = delete;
  UnchangedQuote& operator=(const UnchangedQuote&) = delete;

 private:
  struct Choice {
    int list, box, position;
    std::string text;
  };
  QuotePanel& panel_;
  std::vector<Choice> choices_;
  bool wasLoading_;
};

}  // namespace tarvolinex
