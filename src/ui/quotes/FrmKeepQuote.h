// Asks for whom and what a quote is, and until when it is valid.
#pragma once

#include <string>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

// Indexes of FrmKeepQuote::TxtKeep.
enum KeepBox {
  kKeepCustomer,
  kKeepEmail,
  kKeepTel,
  kKeepEquipment,
  kKeepReference,
  kKeepStart,
  kKeepValidUntil,
  kKeepNote,
  kKeepBoxes
};

class FrmKeepQuote : public Window {
 public:
  // quote: what is kept, in words. Starts with the details, and changes them when they are confirmed.
  FrmKeepQuote(Run& run, const std::string& quote, QuoteDetails& details);

  Label LblKept;
  ControlArray<Label> LblKeep;    // by KeepBox
  ControlArray<TextBox> TxtKeep;  // by KeepBox
  Label LblState;
  ComboBox CboState;  // in the order of QuoteState
  CommandButton CmdKeep, CmdCancel;

  bool Confirmed = false;

 private:
  void MarkDays();
  void CmdKeep_Click();
  Run& run_;
  QuoteDetails& details_;
};

}  // namespace tarvolinex
