// The quotes that were kept: found, reopened, changed, removed.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

class FrmQuotes : public Window {
 public:
  // What the window asks of the one behind it.
  struct Surroundings {
    std::function<void(const KeptQuote&)> reopen;   // shows it as it was quoted
    std::function<void(const KeptQuote&)> copyNew;  // begins a new quote with what was asked
  };
  // removed: what was removed from this database and can be put back, the last one at the end.
  FrmQuotes(Run& run, Database& database, Surroundings around, std::vector<RemovedRows>& removed);

  Toolbar Toolbar1;
  Label LblSearch;
  TextBox TxtSearch;  // every word of it is in a quote that is shown
  Label LblSupplier;
  ComboBox CboSupplier;  // item data: the supplier's ID, 0 = all
  Label LblState;
  ComboBox CboState;
  ListView LvwQuotes;
  Label LblCount;
  Frame FraFigures;
  Label LblQuote, LblToday;
  ListView LvwFigures;  // as quoted, and today
  Label LblNote;

  // Reads the quotes. Run before the window is shown, and after each change.
  void Load();

  // The selected quote's number; 0 = none.
  int SelectedNumber() const;

 private:
  // What is looked at to find a quote; of its row the rest.
  struct Listed {
    int supplierId = 0;
    std::string state, folded;
  };
  void MakeToolbar();
  void Wire();
  void Toolbar1_ButtonClick(const std::string& key);
  void ReadQuotes(std::vector<ListView::Row>& rows);
  void ListSuppliersOf(const std::unordered_map<int, std::string>& names);
  void Filter();
  void ShowCount();
  void ShowSelected();
  void ShowFigures(const KeptQuote& quote);
  void LvwQuotes_ColumnClick(int column);
  void Select(int number);
  void With(const std::function<void(const KeptQuote&)>& use);
  void Reopen(const std::function<void(const KeptQuote&)>& show);
  void EditDetails(const KeptQuote& quote);
  void SetState(KeptQuote quote, QuoteState state);
  void Update(int number, const QuoteDetails& details);
  void Remove();
  void Undo();
  void Export();

  Run& run_;
  Database& database_;
  Surroundings around_;
  std::vector<RemovedRows>& removed_;
  std::unordered_map<int, Listed> listed_;  // by number
  std::unordered_map<int, std::string> makers_;
};

}  // namespace tarvolinex
