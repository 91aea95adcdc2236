#include "core/MainWindow.h"

#include <array>
#include <cassert>

#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

MainWindow* currentMainWindow = nullptr;

// What a label reads before the organisation's own words are known, and how it reads with them.
struct Words {
  const char* caption;
  const char* own = "";
};

std::string OwnWordsTag(const char* own) {
  return *own ? std::string("ALAIS=") + own : std::string();
}

void SetWords(Label& label, const Words& words) {
  label.SetCaption(Tr(words.caption));
  label.SetTag(OwnWordsTag(words.own));
}

template <std::size_t N>
void SetWords(const ControlArray<Label>& labels, const std::array<Words, N>& words) {
  for (std::size_t i = 0; i < N; ++i) {
    SetWords(labels(labels.First() + static_cast<int>(i)), words[i]);
  }
}

constexpr std::array<Words, kQuoteBoxes> kBoxWords = {{
    {Marked("Capital &Cost (£)"), Marked("<CAPEQUIP> &Cost (£)")},
    {Marked("&Number of Payments")},
    {Marked("Deposit"), Marked("<DEPOSIT>")},
    {Marked("Residual Payment"), Marked("<RESIDUAL> Payment")},
    {Marked("Net Monthly &Payment (£)")},
    {Marked("&Yield (%)")},
    {Marked("Maintenance (£)"), Marked("<MAINT> (£)")},
    {Marked("Co&mmission (£)"), "Co&mmission (£)"},
    {Marked("Comm&ission (%)")},
}};

constexpr std::array<Words, kQuoteLists> kListWords = {{
    {Marked("Inter&val")},
    {Marked("Te&rm")},
    {Marked("Deposit as"), Marked("<DEPOSIT> as")},
    {Marked("Residual as"), Marked("<RESIDUAL> as")},
}};

constexpr std::array<Words, kQuoteResults> kResultWords = {{
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

struct BoundField {
  Words words;
  const char* tag;
};

constexpr std::array<BoundField, kSupplierFields> kSupplierFieldTags = {{
    {{Marked("Supplier &Name"), Marked("<SUPPLIER> &Name")}, "RS=SUPPLIER;FIELDNAME=CompanyName;NODEF=0"},
    {{Marked("Add&ress")}, "RS=SUPPLIER;FIELDNAME=Address1;NODEF=0"},
    {{""}, "RS=SUPPLIER;FIELDNAME=Address2;NODEF=0"},
    {{Marked("To&wn")}, "RS=SUPPLIER;FIELDNAME=Town;NODEF=0"},
    {{Marked("Co&unty")}, "RS=SUPPLIER;FIELDNAME=County;NODEF=0"},
    {{Marked("&Post Code")}, "RS=SUPPLIER;FIELDNAME=PostCode;NODEF=0"},
    {{Marked("Head Office Tel")}, "RS=SUPPLIER;FIELDNAME=tel;NODEF=0"},
    {{Marked("Head Office Fa&x")}, "RS=SUPPLIER;FIELDNAME=fax;NODEF=0"},
    {{Marked("Head Office E&mail")}, "RS=SUPPLIER;FIELDNAME=email;NODEF=0"},
    {{Marked("We&b Address")}, "RS=SUPPLIER;FIELDNAME=www;NODEF=0"},
    {{Marked("Equipment T&ype"), Marked("<CAPEQUIP> T&ype")}, "RS=SUPPLIER;FIELDNAME=equipment;NODEF=0"},
}};

constexpr std::array<BoundField, 6> kContactFieldTags = {{
    {{Marked("F&irst Name")}, "RS=CONTACT;FIELDNAME=FirstName"},
    {{Marked("Surn&ame")}, "RS=CONTACT;FIELDNAME=Surname"},
    {{Marked("&Job Title")}, "RS=CONTACT;FIELDNAME=JobTitle"},
    {{Marked("Tel")}, "RS=CONTACT;FIELDNAME=Tel"},
    {{Marked("Fax")}, "RS=CONTACT;FIELDNAME=Fax"},
    {{Marked("Email")}, "RS=CONTACT;FIELDNAME=Email"},
}};

constexpr std::array<Words, 11> kRateWords = {{
    {Marked("<CAPEQUIP> Cost (£)"), Marked("<CAPEQUIP> Cost (£)")},
    {Marked("To (£)"), "To (£)"},
    {Marked("Yield (%)")},
    {Marked("Commission (%)")},
    {Marked("Greater Than")},
    {Marked("from")},
    {Marked("from")},
    {Marked("from")},
    {Marked("from")},
    {"0.00"},
    {Marked("and above")},
}};

constexpr std::array<Words, 3> kPremiumWords = {{
    {Marked("User &Question")},
    {Marked("Additional &Yield (%)")},
    {Marked("Apply &When Greater than")},
}};

struct Switch {
  Words words;
  const char* column;
};

constexpr std::array<Switch, 3> kSwitches = {{
    {{Marked("Additional Rate Premium"), Marked("Additional Rate Premium")}, "AdditionalPremium"},
    {{"", Marked("Show <RESIDUAL>")}, "ResidualOption"},
    {{"", Marked("Show <MAINT>")}, "MaintenanceOption"},
}};
constexpr std::array<const char*, 3> kPremiumColumns = {"AdditionalPremiumMsg", "AdditionalPremiumYield",
                                                        "AdditionalPremiumMin"};

std::string SupplierTag(const std::string& column) {
  return "RS=SUPPLIER;FIELDNAME=" + column;
}

constexpr std::array<Words, 4> kSendWords = {{
    {Marked("S&ubject")},
    {Marked("&Message")},
    {Marked("Send to")},
    {Marked("&Install file")},
}};

}  // namespace

QuotePanel::QuotePanel(Window& window)
    : LblProCalc(window, "LblProCalc", kQuoteBoxes),
      LblProList(window, "LblProList", kQuoteLists),
      LblResultName(window, "LblResultName", kQuoteResults),
      TxtProCalc(window, "TxtProCalc", kQuoteBoxes),
      UpDNew(window, "UpDNew", kQuoteBoxes),
      LblUnit(window, "LblUnit", kQuoteBoxes),
      CboProCalc(window, "CboProCalc", kQuoteLists),
      ChkPremium(window, "ChkPremium", -1, Tr("&Apply premium")),
      ckCapLock(window, "ckCapLock", -1, Tr("Loc&k")),
      LblPremium(window, "LblPremium", -1, Tr("Additional Rate Premium")),
      LblInterval(window, "LblInterval", -1, Tr("Monthly")),
      FraQuote(window, "FraQuote", -1, Tr("Lease")),
      FraRate(window, "FraRate", -1, Tr("Rate and payment")),
      FraResult(window, "FraResult", -1, Tr("Results")),
      LblResult(window, "LblResult", kQuoteResults),
      LblNearest(window, "LblNearest"),
      LblPriced(window, "LblPriced"),
      FraBands(window, "FraBands", -1, Tr("Rate card in force")),
      LvwBands(window, "LvwBands") {
  for (int i = 0; i < kQuoteBoxes; ++i) TxtProCalc(i).SetForNumber("");
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
}

SupplierPanel::SupplierPanel(Window& window)
    : FraSupplier(window, "FraSupplier", -1, Tr("Supplier")),
      FraContacts(window, "FraContacts", -1, Tr("Contacts")),
      LblSupplier(window, "LblSupplier", kSupplierFields),
      TxtSupplier(window, "TxtSupplier", kSupplierFields),
      LstContacts(window, "LstContacts"),
      LblContact(window, "LblContact", 6),
      TxtContact(window, "TxtContact", 6),
      CmdContact(window, "CmdContact", 2) {
  FraSupplier.SetTag(OwnWordsTag("<SUPPLIER>"));
  for (int i = 0; i < kSupplierFields; ++i) {
    const BoundField& field = kSupplierFieldTags[static_cast<std::size_t>(i)];
    SetWords(LblSupplier(i), field.words);
    TxtSupplier(i).SetTag(field.tag);
  }
  for (int i = 0; i < 6; ++i) {
    const BoundField& field = kContactFieldTags[static_cast<std::size_t>(i)];
    SetWords(LblContact(i), field.words);
    TxtContact(i).SetTag(field.tag);
  }
  CmdContact(0).SetCaption(Tr("Add C&ontact"));
  CmdContact(1).SetCaption(Tr("R&emove Contact"));
}

RateCardPanel::RateCardPanel(Window& window)
    : FraRates(window, "FraRates", -1, Tr("Rate card")),
      FraPremium(window, "FraPremium", -1, Tr("Premium")),
      FraShow(window, "FraShow", -1, Tr("Options")),
      FraForms(window, "FraForms", -1, Tr("Available Forms/Information pages")),
      LblRateName(window, "LblRateName", static_cast<int>(kRateWords.size())),
      txtRangeTo(window, "txtRangeTo", 4, 1),
      lblRangeFrom(window, "lblRangeFrom", 4),
      UpDEquipCost(window, "UpDEquipCost", 4, 1),
      TxtRangeYield(window, "TxtRangeYield", 5),
      txtComPerc(window, "txtComPerc", 5),
      UpDyield(window, "UpDyield", 5),
      UpDCom(window, "UpDCom", 5),
      ChAddRate(window, "ChAddRate", 3),
      LblAddRate(window, "LblAddRate", 3),
      TxtAddRate(window, "TxtAddRate", 3),
      UpDAddRate(window, "UpDAddRate", 2, 1),
      LvwForms(window, "LvwForms") {
  SetWords(LblRateName, kRateWords);
  SetWords(LblAddRate, kPremiumWords);
  for (const ControlArray<TextBox>* boxes : {&txtRangeTo, &TxtRangeYield, &txtComPerc, &TxtAddRate}) {
    for (int i = boxes == &TxtAddRate ? 1 : boxes->First(); i <= boxes->Last(); ++i) (*boxes)(i).SetForNumber("");
  }
  for (int i = 0; i < 4; ++i) txtRangeTo(i + 1).SetTag(SupplierTag("RangeEquipFROM" + std::to_string(i)));
  for (int i = 0; i < 5; ++i) {
    TxtRangeYield(i).SetTag(SupplierTag("Yield" + std::to_string(i)));
    txtComPerc(i).SetTag(SupplierTag("Com" + std::to_string(i)));
  }
  for (int i = 0; i < 3; ++i) {
    const auto n = static_cast<std::size_t>(i);
    ChAddRate(i).SetCaption(Tr(kSwitches[n].words.caption));
    ChAddRate(i).SetTag(SupplierTag(kSwitches[n].column) + ";" + OwnWordsTag(kSwitches[n].words.own));
    TxtAddRate(i).SetTag(SupplierTag(kPremiumColumns[n]));
  }
  LvwForms.CheckBoxes = true;
  LvwForms.Columns() = {{Tr("Form"), "", 4000}};
}

SendPanel::SendPanel(Window& window)
    : OpCalcCreate(window, "OpCalcCreate", 2),
      FraCalCreate(window, "FraCalCreate", 2),
      LblSend(window, "LblSend", static_cast<int>(kSendWords.size())),
      lvSendContacts(window, "lvSendContacts"),
      TxtEmail(window, "TxtEmail", 2),
      TxtCalcCreate(window, "TxtCalcCreate"),
      cmboFileType(window, "cmboFileType"),
      CmdCalcGo(window, "CmdCalcGo", 4) {
  SetWords(LblSend, kSendWords);
  OpCalcCreate(0).SetCaption(Tr("Send b&y e-mail"));
  OpCalcCreate(1).SetCaption(Tr("C&reate an install file"));
  FraCalCreate(0).SetCaption(Tr("E-mail"));
  FraCalCreate(1).SetCaption(Tr("Install file"));
  lvSendContacts.CheckBoxes = true;
  lvSendContacts.Columns() = {{Tr("Contact"), "", 2300}, {Tr("Email"), "", 3700}, {Tr("Last Sent"), "", 2200}};
  for (const char* type : {".exe", ".zip"}) cmboFileType.Add(type);
  constexpr std::array<const char*, 4> kCaptions = {Marked("Se&nd"), Marked("&Browse"), Marked("&Create"), kCheckAll};
  for (int i = 0; i < 4; ++i) CmdCalcGo(i).SetCaption(Tr(kCaptions[static_cast<std::size_t>(i)]));
}

MainMenus::MainMenus(Window& window)
    : MnuFile(window, "MnuFile", "", Tr("&File")),
      MnuOpen(window, "MnuOpen", "MnuFile", Tr("Open <SUPPLIER> Database..."), "Ctrl+O"),
      MnuCreate(window, "MnuCreate", "MnuFile", Tr("Create New <SUPPLIER> Database...")),
      MnuExit(window, "MnuExit", "MnuFile", Tr("Exit"), "Ctrl+Q"),
      MnuEdit(window, "MnuEdit", "", Tr("Edi&t")),
      MnuAdd(window, "MnuAdd", "MnuEdit", Tr("&Add New <SUPPLIER>"), "Ctrl+N"),
      MnuRemove(window, "MnuRemove", "MnuEdit", Tr("R&emove <SUPPLIER>")),
      MnuSaveDefault(window, "MnuSaveDefault", "MnuEdit", Tr("Save <SUPPLIER> as default")),
      MnuRefresh(window, "MnuRefresh", "MnuEdit", Tr("&Refresh <SUPPLIER> List"), "F5"),
      MnuSearch(window, "MnuSearch", "MnuEdit", Tr("&Search For Contact..."), "Ctrl+F"),
      MnuUndoRemove(window, "MnuUndoRemove", "MnuEdit", Tr("&Undo Remove <SUPPLIER>")),
      MnuOptions(window, "MnuOptions", "", Tr("&Options")),
      MnuPreferences(window, "MnuPreferences", "MnuOptions", Tr("Options and Preferences...")),
      MnuDetails(window, "MnuDetails", "MnuOptions", Tr("Your Details...")),
      MnuPreview(window, "MnuPreview", "MnuOptions", Tr("View <CALCNAME>")),
      MnuMail(window, "MnuMail", "MnuOptions", Tr("&E-mail Settings...")),
      MnuHelp(window, "MnuHelp", "", Tr("&Help")),
      MnuHelpPage(window, "MnuHelpPage", "MnuHelp", Tr("&Help"), "F1"),
      MnuUpgrades(window, "MnuUpgrades", "MnuHelp", Tr("&Check for Tarvolinex upgrades...")),
      MnuAbout(window, "MnuAbout", "MnuHelp", Tr("&About")) {}

MainWindow::MainWindow()
    : Window("FrmMain", Tr("Tarvolinex")),
      menus(*this),
      Toolbar1(*this, "Toolbar1"),
      LblFilter(*this, "LblFilter", -1, Tr("Fi&lter")),
      TxtFilter(*this, "TxtFilter"),
      LvwSuppliers(*this, "LvwSuppliers"),
      LblCompany(*this, "LblCompany"),
      TabMain(*this, "TabMain"),
      quote(*this),
      supplier(*this),
      rateCard(*this),
      send(*this),
      TxtStatus(*this, "TxtStatus"),
      LblDatabase(*this, "LblDatabase"),
      ProgressBar1(*this, "ProgressBar1"),
      Timer1(*this, "Timer1") {
  assert(!currentMainWindow && "one main window at a time");
  currentMainWindow = this;
  Toolbar1.Add({Tr("New"), "ADDNEW", OwnWordsTag(Marked("Add <SUPPLIER>")), "", ""});
  Toolbar1.Add({Tr("Remove"), "REMSUPP", OwnWordsTag(Marked("Remove <SUPPLIER>")), "", ""});
  Toolbar1.Add({Tr("Save"), "SAVE", OwnWordsTag(Marked("Save <SUPPLIER>")), "", "", true, "Ctrl+S"});
  Toolbar1.Add({Tr("Search"), "SEARCH", OwnWordsTag(Marked("Search For <SUPPLIER>/Contact")), "", ""});
  Toolbar1.Add({Tr("Refresh"), "REFRESH", OwnWordsTag(Marked("Refresh <SUPPLIER> List")), "", ""});
  Toolbar1.Add({Tr("Options"), "EDITPROP", "", Tr("Calculator Options and Preferences"), ""});
  Toolbar1.Add({Tr("Forms"), "FORMS", "", Tr("Form Designer"), ""});
  Toolbar1.Add({Tr("View"), "PREVIEW", OwnWordsTag(Marked("View <CALCNAME>")), "", ""});
  Toolbar1.Add({Tr("Help"), "HELP", "", Tr("Help"), ""});
  LvwSuppliers.Columns() = {{Tr("Name"), "", 3600},
                            {Tr("Telephone"), "FIELDNAME=Tel", 1700},
                            {Tr("Address 1"), "FIELDNAME=Address1", 2000},
                            {Tr("Address 2"), "FIELDNAME=Address2", 2000},
                            {Tr("Town"), "FIELDNAME=Town", 1500},
                            {Tr("County"), "FIELDNAME=County", 1500},
                            {Tr("Post Code"), "FIELDNAME=PostCode", 1200}};
  for (const std::string& tab : {Tr("Professional Calculator"), Tr("&<SUPPLIER> &Details"), Tr("Calculator S&ettings"),
                                 Tr("&Send/Create Calculator")}) {
    TabMain.Add(tab);
  }
  TxtStatus.SetLocked(true);
  TxtFilter.SetToolTip(
      Tr("Show only suppliers whose name, town or post code holds this text, or a contact of whom is called so"));
}

MainWindow::~MainWindow() {
  currentMainWindow = nullptr;
}

void MainWindow::ShowDatabase(const std::string& folder) {
  const std::string text = Tr("Database: %1", {folder});
  LblDatabase.SetCaption(CaptionOf(text));
  LblDatabase.SetToolTip(text);
}

void MainWindow::EnableCommands(bool blocked) {
  const bool enabled = !blocked;
  LvwSuppliers.SetEnabled(enabled);
  for (int i = 0; i < static_cast<int>(TabMain.Tabs().size()); ++i) TabMain.SetTabEnabled(i, enabled);
  for (int i = 0; i < static_cast<int>(Toolbar1.Buttons().size()); ++i) Toolbar1.SetButtonEnabled(i, enabled);
  for (Menu* menu : {&menus.MnuFile, &menus.MnuEdit, &menus.MnuOptions, &menus.MnuHelp}) menu->SetEnabled(enabled);
}

MainWindow& MainForm() {
  assert(currentMainWindow && "the main window must exist");
  return *currentMainWindow;
}

bool MainFormExists() {
  return currentMainWindow != nullptr;
}

}  // namespace tarvolinex
