#include "ui/quotes/FrmKeepQuote.h"

#include <array>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "ui/quotes/TodaysPrice.h"
#include "ui/quotes/TypedInput.h"

namespace tarvolinex {

namespace {

struct KeepText {
  const char* caption;
  int most;
  std::string QuoteDetails::*text;
};
constexpr KeepText kKeepTexts[kKeepBoxes] = {
    {Marked("&Customer"), kMostInCustomer, &QuoteDetails::customer},
    {Marked("&E-mail"), kMostInEmail, &QuoteDetails::customerEmail},
    {Marked("&Telephone"), kMostInTel, &QuoteDetails::customerTel},
    {Marked("E&quipment"), kMostInEquipment, &QuoteDetails::equipment},
    {Marked("&Reference"), kMostInReference, &QuoteDetails::reference},
    {Marked("&Starts on (year-month-day)"), 10, nullptr},
    {Marked("&Valid until (year-month-day)"), 10, nullptr},
    {Marked("&Note"), kMostInNote, &QuoteDetails::note},
};

}  // namespace

FrmKeepQuote::FrmKeepQuote(Run& run, const std::string& quote, QuoteDetails& details)
    : Window("FrmKeepQuote", Tr("Keep Quote")),
      LblKept(*this, "LblKept", -1, CaptionOf(quote)),
      LblKeep(*this, "LblKeep", kKeepBoxes),
      TxtKeep(*this, "TxtKeep", kKeepBoxes),
      LblState(*this, "LblState", -1, Tr("St&ate")),
      CboState(*this, "CboState"),
      CmdKeep(*this, "CmdKeep", -1, Tr("&Keep")),
      CmdCancel(*this, "CmdCancel", -1, Tr("Cancel")),
      run_(run),
      details_(details) {
  for (int i = 0; i < kKeepBoxes; ++i) {
    const KeepText& words = kKeepTexts[i];
    TextBox& box = TxtKeep(i);
    LblKeep(i).SetCaption(Tr(words.caption));
    box.SetMaxLength(words.most);
    if (words.text) box.SetText(details.*words.text);
    box.Validate = [&box] { box.SetText(EscapeQuotes(box.Text())); };
  }
  const std::string equipment = run.CalculatorPreferences.AliasCapEquip.Trimmed();
  if (!equipment.empty()) LblKeep(kKeepEquipment).SetCaption(CaptionOf(equipment));
  TxtKeep(kKeepStart).SetText(DayInput(details.start));
  TxtKeep(kKeepValidUntil).SetText(DayInput(details.validUntil));
  for (const QuoteState state : {QuoteState::Open, QuoteState::Accepted, QuoteState::Declined}) {
    CboState.Add(StateWords(StateName(state)));
  }
  CboState.SetListIndex(static_cast<int>(details.state));
  for (const int day : {kKeepStart, kKeepValidUntil}) TxtKeep(day).Change = [this] { MarkDays(); };
  CmdKeep.Click = [this] { CmdKeep_Click(); };
  CmdCancel.Click = [this] { Close(); };
  KeyUp = [this](Key key) {
    // In the note Return begins a line.
    auto* focused = dynamic_cast<CommandButton*>(ActiveControl());
    if (key == Key::Return && ActiveControl() != &TxtKeep(kKeepNote)) (focused ? *focused : CmdKeep).Press();
    if (key == Key::Escape) CmdCancel.Press();
  };
}

void FrmKeepQuote::MarkDays() {
  for (const int day : {kKeepStart, kKeepValidUntil}) MarkDay(TxtKeep(day), true);
}

void FrmKeepQuote::CmdKeep_Click() {
  MarkDays();
  for (const int day : {kKeepStart, kKeepValidUntil}) {
    const std::string& fault = TxtKeep(day).Fault();
    if (fault.empty()) continue;
    run_.MessageBox(fault, Caption(), BoxButtons::Ok, BoxIcon::Exclamation);
    return TxtKeep(day).SetFocus();
  }
  for (int i = 0; i < kKeepBoxes; ++i) {
    if (kKeepTexts[i].text) details_.*kKeepTexts[i].text = Trim(TxtKeep(i).Text());
  }
  details_.start = DayFromText(Trim(TxtKeep(kKeepStart).Text()));
  details_.validUntil = DayFromText(Trim(TxtKeep(kKeepValidUntil).Text()));
  details_.state = static_cast<QuoteState>(CboState.ListIndex());
  Confirmed = true;
  Close();
}

}  // namespace tarvolinex
