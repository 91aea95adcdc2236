// The quote sheet of a quote: for whom it is, what it shows, and where it goes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "publish/QuoteSheet.h"

namespace tarvolinex {

// Indexes of FrmSheet::TxtSheet.
enum SheetBox {
  kSheetCustomer,
  kSheetEmail,
  kSheetEquipment,
  kSheetReference,
  kSheetStart,
  kSheetValidUntil,
  kSheetTerms,  // numbers of payments, side by side
  kSheetBoxes
};

class FrmSheet : public Window {
 public:
  // contents: of the quote by itself, as the window finds it. figures: what it was asked and came to.
  // details: what is known of the customer already, or proposed; what the user types stands there when the window is
  // left.
  FrmSheet(Run& run, const SheetContents& contents, const QuoteFigures& figures, QuoteDetails& details);

  Label LblQuoted;
  ControlArray<Label> LblSheet;    // by SheetBox
  ControlArray<TextBox> TxtSheet;  // by SheetBox
  CheckBox ChkSchedule, ChkInternal;
  Label LblMessage;
  TextBox TxtMessage;  // what the e-mail says; begins with the organisation's words
  CommandButton CmdPreview, CmdSavePdf, CmdPrint, CmdMail, CmdClose;

 private:
  void MakeBoxes();
  void Wire();
  void TxtSheet_Change();
  void ReadDays();
  void MarkFaults();
  void RefreshMessage();
  // The variants of the terms box; nullopt when it holds none, or one that cannot be priced.
  std::optional<std::vector<QuoteRecord>> Variants(std::string& fault) const;
  SheetContents Contents() const;
  // Runs with what the boxes say, when they can be read; a failure is reported.
  template <typename Use>
  void With(Use use);
  std::string PathOfSheet() const;
  std::string NameOfFile() const;
  void Preview();
  void SavePdf();
  void Mail();

  Run& run_;
  const SheetContents contents_;
  const QuoteFigures figures_;
  QuoteDetails& details_;
  bool sending_ = false;
};

}  // namespace tarvolinex
