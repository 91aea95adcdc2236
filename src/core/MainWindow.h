// The main window's controls. They are declared down here because records, lists and status are shown from many
// modules; the handlers are members of FrmMain.
#pragma once

#include "controls/Controls.h"
#include "platform/text/Translation.h"

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

// Item data of the deposit-mode list.
enum DepositModes { kDepositValue = 0, kDepositPercent = 1, kDepositAdvanced = 2 };

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

struct QuotePanel {
  explicit QuotePanel(Window& window);
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
  Frame FraBands;
  ListView LvwBands;  // the rate card in force
};

struct RateCardPanel {
  explicit RateCardPanel(Window& window);
  Frame FraRates, FraPremium, FraShow, FraForms;
  ControlArray<Label> LblRateName;    // column headings and row captions
  ControlArray<TextBox> txtRangeTo;   // 1 to 4: box i holds threshold i - 1
  ControlArray<Label> lblRangeFrom;   // 0 to 3: label i - 1 mirrors box i
  ControlArray<UpDown> UpDEquipCost;  // 1 to 4
  ControlArray<TextBox> TxtRangeYield, txtComPerc;
  ControlArray<UpDown> UpDyield, UpDCom;
  ControlArray<CheckBox> ChAddRate;  // premium, residual, maintenance
  ControlArray<Label> LblAddRate;
  ControlArray<TextBox> TxtAddRate;  // caption, yield, minimum
  ControlArray<UpDown> UpDAddRate;   // 1 and 2
  ListView LvwForms;
};

// Indexes of SupplierPanel::TxtSupplier.
enum SupplierField { kSupplierName = 0, kSupplierFields = 11 };

struct SupplierPanel {
  explicit SupplierPanel(Window& window);
  Frame FraSupplier, FraContacts;
  ControlArray<Label> LblSupplier;
  ControlArray<TextBox>
      TxtSupplier;  // name, two address lines, town, county, post code, tel, fax, e-mail, web, equipment
  ListBox LstContacts;
  ControlArray<Label> LblContact;
  ControlArray<TextBox> TxtContact;        // first name, surname, job title, tel, fax, e-mail
  ControlArray<CommandButton> CmdContact;  // add or save, remove
};

// Indexes of SendPanel::CmdCalcGo, and the captions of the last.
enum SendButton { kGoSend = 0, kGoBrowse = 1, kGoCreate = 2, kGoCheckAll = 3 };
inline constexpr const char *kCheckAll = Marked("Check &All"), *kUncheckAll = Marked("Uncheck &All");

struct SendPanel {
  explicit SendPanel(Window& window);
  ControlArray<OptionButton> OpCalcCreate;  // send by e-mail, create an install file
  ControlArray<Frame> FraCalCreate;
  ControlArray<Label> LblSend;
  ListView lvSendContacts;
  ControlArray<TextBox> TxtEmail;  // subject, message
  TextBox TxtCalcCreate;
  ComboBox cmboFileType;
  ControlArray<CommandButton> CmdCalcGo;  // send, browse, create, check all
};

struct MainMenus {
  explicit MainMenus(Window& window);
  Menu MnuFile, MnuOpen, MnuCreate, MnuExit;
  Menu MnuEdit, MnuAdd, MnuRemove, MnuSaveDefault, MnuRefresh, MnuSearch, MnuUndoRemove;
  Menu MnuOptions, MnuPreferences, MnuDetails, MnuPreview, MnuMail;
  Menu MnuHelp, MnuHelpPage, MnuUpgrades, MnuAbout;
};

// The four tabs.
enum MainTab { kTabQuote = 0, kTabDetails = 1, kTabSettings = 2, kTabSend = 3 };

// One exists at a time, from its construction to its destruction; MainForm() finds it.
class MainWindow : public Window {
 public:
  MainWindow();
  ~MainWindow() override;

  MainMenus menus;
  Toolbar Toolbar1;
  Label LblFilter;
  TextBox TxtFilter;  // hides rows of the list below it
  ListView LvwSuppliers;
  Label LblCompany;
  TabStrip TabMain;
  QuotePanel quote;
  SupplierPanel supplier;
  RateCardPanel rateCard;
  SendPanel send;
  TextBox TxtStatus;
  Label LblDatabase;  // the database in use
  ProgressBar ProgressBar1;
  Timer Timer1;

  // The loading indication: the program itself is filling the quote panel, so its handlers return at once.
  bool loading = false;

  // What the status line reads while nothing goes on.
  std::string note;

  // Names the database in use by its folder.
  void ShowDatabase(const std::string& folder);

  // Blocks or frees the supplier list, the tab headers, the toolbar and the four top-level menus.
  void EnableCommands(bool blocked);
};

// REQUIRES: a MainWindow exists.
MainWindow& MainForm();
bool MainFormExists();

}  // namespace tarvolinex
