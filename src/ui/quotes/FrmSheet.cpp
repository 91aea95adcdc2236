#include "ui/quotes/FrmSheet.h"

#include "calc/InputRules.h"
#include "calc/Schedule.h"
#include "core/Launcher.h"
#include "distribute/SheetMail.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/PdfDocument.h"
#include "platform/network/MailMessage.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "ui/quotes/PlanWords.h"
#include "ui/quotes/TypedInput.h"

namespace tarvolinex {

namespace {

struct SheetText {
  const char* caption;
  int most;
  std::string QuoteDetails::*text;
};
constexpr SheetText kSheetTexts[kSheetBoxes] = {
    {Marked("&Customer"), kMostInCustomer, &QuoteDetails::customer},
    {Marked("&E-mail"), kMostInEmail, &QuoteDetails::customerEmail},
    {Marked("E&quipment"), kMostInEquipment, &QuoteDetails::equipment},
    {Marked("&Reference"), kMostInReference, &QuoteDetails::reference},
    {Marked("&Starts on (year-month-day)"), 10, nullptr},
    {Marked("&Valid until (year-month-day)"), 10, nullptr},
    {Marked("&Numbers of payments, side by side"), 100, nullptr},
};

}  // namespace

FrmSheet::FrmSheet(Run& run, const SheetContents& contents, const QuoteFigures& figures, QuoteDetails& details)
    : Window("FrmSheet", Tr("Quote Sheet")),
      LblQuoted(*this, "LblQuoted"),
      LblSheet(*this, "LblSheet", kSheetBoxes),
      TxtSheet(*this, "TxtSheet", kSheetBoxes),
      ChkSchedule(*this, "ChkSchedule", -1, Tr("With the sc&hedule of payments")),
      ChkInternal(*this, "ChkInternal", -1, Tr("With &internal figures: yield, commission, interest and balance")),
      LblMessage(*this, "LblMessage", -1, Tr("&Message of the e-mail")),
      TxtMessage(*this, "TxtMessage"),
      CmdPreview(*this, "CmdPreview", -1, Tr("&Preview")),
      CmdSavePdf(*this, "CmdSavePdf", -1, Tr("S&ave as PDF...")),
      CmdPrint(*this, "CmdPrint", -1, Tr("Prin&t...")),
      CmdMail(*this, "CmdMail", -1, Tr("Mai&l it")),
      CmdClose(*this, "CmdClose", -1, Tr("Cl&ose")),
      run_(run),
      contents_(contents),
      figures_(figures),
      details_(details) {
  LblQuoted.SetCaption(
      CaptionOf(contents.supplier.CompanyName.Trimmed() + "\n" + PaymentsWords(figures.priced, run.OwnWords())));
  CmdMail.SetToolTip(Tr("To the customer's address, with the sheet attached"));
  MakeBoxes();
  Wire();
  RefreshMessage();
}

void FrmSheet::MakeBoxes() {
  for (int i = 0; i < kSheetBoxes; ++i) {
    const SheetText& words = kSheetTexts[i];
    TextBox& box = TxtSheet(i);
    LblSheet(i).SetCaption(Tr(words.caption));
    box.SetMaxLength(words.most);
    if (words.text) box.SetText(details_.*words.text);
    box.Validate = [&box] { box.SetText(EscapeQuotes(box.Text())); };
  }
  const std::string equipment = run_.CalculatorPreferences.AliasCapEquip.Trimmed();
  if (!equipment.empty()) LblSheet(kSheetEquipment).SetCaption(CaptionOf(equipment));
  TxtSheet(kSheetStart).SetText(DayInput(details_.start));
  TxtSheet(kSheetValidUntil).SetText(DayInput(details_.validUntil));
  TxtSheet(kSheetTerms).SetText(std::to_string(figures_.priced.NumberOfPayments));
  TxtSheet(kSheetTerms).SetToolTip(Tr("Such as 24, 36, 48: the sheet shows them side by side"));
}

void FrmSheet::Wire() {
  for (int i = 0; i < kSheetBoxes; ++i) TxtSheet(i).Change = [this] { TxtSheet_Change(); };
  CmdPreview.Click = [this] { Preview(); };
  CmdSavePdf.Click = [this] { SavePdf(); };
  CmdPrint.Click = [this] { With([&](const RichDocument& document) { TheDesktop().Print(document); }); };
  CmdMail.Click = [this] { Mail(); };
  CmdClose.Click = [this] { Close(); };
  MayClose = [this] { return !sending_; };
  KeyUp = [this](Key key) {
    if (sending_) {
      run_.StopRequested = run_.StopRequested || key == Key::Escape;
      return;
    }
    // In the message Return begins a line.
    auto* focused = dynamic_cast<CommandButton*>(ActiveControl());
    if (key == Key::Return && ActiveControl() != &TxtMessage) (focused ? *focused : CmdPreview).Press();
    if (key == Key::Escape) CmdClose.Press();
  };
}

void FrmSheet::TxtSheet_Change() {
  for (int i = 0; i < kSheetBoxes; ++i) {
    if (kSheetTexts[i].text) details_.*kSheetTexts[i].text = Trim(TxtSheet(i).Text());
  }
  MarkFaults();
  RefreshMessage();
}

// A text that is no day is marked and leaves the last one.
void FrmSheet::ReadDays() {
  const auto start = MarkDay(TxtSheet(kSheetStart), false), end = MarkDay(TxtSheet(kSheetValidUntil), true);
  if (start) details_.start = start;
  if (TxtSheet(kSheetValidUntil).Fault().empty()) details_.validUntil = end;
}

void FrmSheet::MarkFaults() {
  ReadDays();
  std::string fault;
  Variants(fault);
  TxtSheet(kSheetTerms).SetFault(fault);
}

// In the organisation's words as long as the user has typed no others.
void FrmSheet::RefreshMessage() {
  if (TxtMessage.Edited()) return;
  try {
    TxtMessage.Load(SheetMessage(run_.Places(), Contents()));
  } catch (const RuntimeError&) {
    // It is reported when the sheet is made.
  }
}

std::optional<std::vector<QuoteRecord>> FrmSheet::Variants(std::string& fault) const {
  const std::vector<std::int16_t> terms = TermsOf(TxtSheet(kSheetTerms).Text());
  if (terms.empty() || terms.size() > kMostVariants) {
    fault = Tr("Write numbers of payments, such as 24, 36, 48");
    return std::nullopt;
  }
  std::vector<QuoteRecord> quotes;
  for (const std::int16_t term : terms) {
    QuoteRecord asked = figures_.asked;
    asked.NumberOfPayments = term;
    // What the window shows is not computed anew: it may be a kept quote.
    const auto quote =
        term == figures_.priced.NumberOfPayments
            ? figures_.priced
            : Priced(figures_.mode, asked, {contents_.supplier, contents_.prefs.TaxRate, figures_.capitalCostLocked});
    if (!quote || term > kMostPayments) {
      fault = Tr("%1 payments cannot be priced", {std::to_string(term)});
      return std::nullopt;
    }
    quotes.push_back(*quote);
  }
  return quotes;
}

SheetContents FrmSheet::Contents() const {
  SheetContents contents = contents_;
  contents.customer = details_.customer;
  contents.equipment = details_.equipment;
  contents.reference = details_.reference;
  contents.start = details_.start.value_or(contents_.start);
  contents.validUntil = details_.validUntil;
  contents.schedule = ChkSchedule.Value();
  contents.internal = ChkInternal.Value();
  std::string fault;
  contents.variants = Variants(fault).value_or(std::vector{figures_.priced});
  return contents;
}

template <typename Use>
void FrmSheet::With(Use use) {
  MarkFaults();
  for (const int box : {kSheetStart, kSheetValidUntil, kSheetTerms}) {
    if (!TxtSheet(box).Fault().empty()) return TxtSheet(box).SetFocus();
  }
  const SheetContents contents = Contents();
  try {
    const BusyWhile busy;
    use(FillSheet(run_.Places(), contents));
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

std::string FrmSheet::PathOfSheet() const {
  return run_.AppFolder + "\\QuoteSheet.pdf";
}

std::string FrmSheet::NameOfFile() const {
  const std::string name = details_.reference.empty() ? "Quote.pdf" : "Quote " + details_.reference + ".pdf";
  return IsPortableFileName(name) ? name : "Quote.pdf";
}

void FrmSheet::Preview() {
  With([&](const RichDocument& document) {
    WritePdf(document, PathOfSheet());
    LaunchDocument(run_, PathOfSheet());
  });
}

void FrmSheet::SavePdf() {
  With([&](const RichDocument& document) {
    const std::string title = Tr("Save the quote sheet");
    const std::string path =
        TheDesktop().SaveFile({title, "", NameOfFile(), Tr("Documents (*.pdf)|*.pdf|All files (*.*)|*.*")});
    if (path.empty()) return;
    if (FileExists(path) && run_.MessageBox(Tr("%1 exists. Replace it?", {path}), title, BoxButtons::YesNo,
                                            BoxIcon::Question) != Answer::Yes) {
      return;
    }
    WritePdf(document, path);
    run_.SetNote(Tr("Saved %1", {path}));
  });
}

void FrmSheet::Mail() {
  const std::string to = details_.customerEmail, title = Tr("Quote Sheet");
  if (!IsMailAddress(to)) {
    run_.MessageBox(Tr("Please enter the customer's e-mail address."), title, BoxButtons::Ok, BoxIcon::Exclamation);
    return TxtSheet(kSheetEmail).SetFocus();
  }
  if (ChkInternal.Value() &&
      run_.MessageBox(Tr("The sheet shows yield, commission, interest and balance. Send it to %1 all the same?", {to}),
                      title, BoxButtons::YesNo, BoxIcon::Exclamation) != Answer::Yes) {
    return;
  }
  With([&](const RichDocument& document) {
    WritePdf(document, PathOfSheet());
    sending_ = true;
    run_.StopRequested = false;
    const SheetMail mail = {to, details_.customer, document.title, TxtMessage.Text(), PathOfSheet(), NameOfFile()};
    const std::string taker = MailSheet(run_.AppFolder, run_.CalculatorPreferences, mail, run_);
    sending_ = false;
    if (taker.empty()) return;
    run_.MessageBox(Tr("The quote sheet for %1 went to %2.", {to, taker}), title, BoxButtons::Ok, BoxIcon::Information);
  });
}

}  // namespace tarvolinex
