// Between the quote panel's boxes and the `Quote`.
#pragma once

#include <string>
#include <vector>

#include "calc/InputRules.h"
#include "calc/Payment.h"

namespace tarvolinex {

// The up-down kind of a quote box, as the deposit and residual modes make it.
int QuoteBoxKind(int box);

// What a quote box may hold, as the modes make it.
NumberRule QuoteBoxRule(int box);

// Marks the boxes that hold what they may not, and a commission below 0.
void MarkQuote();

// Fills the `Quote` from the panel. A yield box that still shows the last result stands for the result's exact value
// (the box has two decimals), unless it is the box that the user changed.
// typedBox: the box that the user changed, -1 for none.
void ReadQuotePanel(int typedBox = -1);

// Runs the calculation on the globals.
void CalculateQuote(int mode);

// Writes the results into the panel's labels and into the boxes that the calculation derives; the box that the user is
// typing in, and boxes that are inputs in every mode (deposit and residual keep their unit), are left alone.
void ShowQuoteResults(int typedBox = -1);

// The three of them, with the loading indication set meanwhile.
void RecalculateQuote(int mode = kModeForward, int typedBox = -1);

// The same calculation once more, after its surroundings have changed: what the user typed last still decides what is
// given and what is derived.
void RecalculateShownQuote();

// While it lives, the panel's lists may be made anew; afterwards they, the deposit and the residual are as they were,
// and the quote is computed again as the user left it.
// REQUIRES: a main window.
class KeptQuote {
 public:
  KeptQuote();
  ~KeptQuote();
  KeptQuote(const KeptQuote&) = delete;
  KeptQuote& operator=(const KeptQuote&) = delete;

 private:
  struct Choice {
    int list, box, position;
    std::string text;
  };
  std::vector<Choice> choices_;
  bool wasLoading_;
};

// Captions that name the payment interval.
void SetIntervalCaptions();

// What a list's choice changes in the panel, without recalculating.
void ApplyQuoteList(int list);

// Up-downs, lists and starting values of the quote panel and of the rate card. Run once, while the window loads.
void SetDefaults();

}  // namespace tarvolinex
