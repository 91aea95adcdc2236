// The same request at several terms and deposits, side by side.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calc/Schedule.h"
#include "controls/Controls.h"
#include "core/Run.h"

namespace tarvolinex {

class FrmTerms : public Window {
 public:
  // What was asked, and what it is priced by; must outlive the window.
  struct Request {
    int mode;
    const QuoteRecord& asked;
    const QuoteTerms terms;
    // The quote has its figures from another day: no row is this quote until one is taken.
    bool kept = false;
  };
  // Takes a variant into the panel: its number of payments and its deposit, as texts for the boxes.
  using TakeVariant = std::function<void(const std::string& payments, const std::string& deposit)>;
  FrmTerms(Run& run, const Request& request, TakeVariant take);

  Label LblTerms;
  TextBox TxtTerms;  // numbers of payments
  Label LblDeposits;
  TextBox TxtDeposits;  // in the unit of the request's deposit mode
  ListView LvwTerms;
  Label LblHint;
  CommandButton CmdCopy, CmdSave, CmdClose;

 private:
  struct Variant {
    std::string payments, deposit;
  };
  QuoteRecord With(double deposit) const;
  std::vector<double> Deposits() const;
  void Compare();
  void ListVariants(const std::vector<double>& deposits, const std::vector<std::int16_t>& terms);
  void AddDeposit(double deposit, const std::vector<std::int16_t>& terms);
  void LvwTerms_ItemClick();
  void Save();
  Run& run_;
  const QuoteRecord asked_;
  const int mode_;
  const QuoteTerms terms_;
  TakeVariant take_;
  std::string hint_;
  std::vector<Variant> variants_;  // of the rows
  Variant present_;                // this quote; nothing in it when no row is
  std::string saved_;              // the rows as CSV
};

}  // namespace tarvolinex
