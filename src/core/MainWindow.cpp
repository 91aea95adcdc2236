#include "core/MainWindow.h"

#include <array>
#include <cassert>

namespace tarvolinex {

namespace {

MainWindow* currentMainWindow = nullptr;

// A tag of "ALAIS=" makes the caption follow the organisation's own words.
struct Words {
  const char* caption;
  const char* tag = "";
};

template <std::size_t N>
void SetWords(const ControlArray<Label>& labels, const std::array<Words, N>& words) {
  for (std::size_t i = 0; i < N; ++i) {
    Label& label = labels(labels.First() + static_cast<int>(i));
    label.SetCaption(words[i].caption);
    label.SetTag(words[i].tag);
  }
}

constexpr std::array<Words, kQuoteBoxes> kBoxWords = {{
    {"Capital &Cost (£)", "ALAIS=<CAPEQUIP> &Cost (£)"},
    {"&Number of Payments"},
    {"Deposit", "ALAIS=<DEPOSIT>"},
    {"Residual Payment", "ALAIS=<RESIDUAL> Payment"},
    {"Net Monthly &Payment (£)"},
    {"&Yield (%)"},
    {"Maintenance (£)", "ALAIS=<MAINT> (£)"},
    {"Co&mmission (£)"},
    {"Comm&ission (%)"},
}};

constexpr std::array<Words, kQuoteLists> kListWords = {{
    {"Payment Inter&val"},
    {"Te&rm"},
    {"Deposit as", "ALAIS=<DEPOSIT> as"},
    {"Residual as", "ALAIS=<RESIDUAL> as"},
}};

constexpr std::array<Words, kQuoteResults> kResultWords = {{
    {"Net Monthly Payment (£)"},
    {"Payment inc VAT (£)", "ALAIS=Payment inc <VAT> (£)"},
    {"Deposit (£)", "ALAIS=<DEPOSIT> (£)"},
    {"Deposit inc VAT (£)", "ALAIS=<DEPOSIT> inc <VAT> (£)"},
    {"Deposit (%)", "ALAIS=<DEPOSIT> (%)"},
    {"Residual (£)", "ALAIS=<RESIDUAL> (£)"},
    {"Residual inc VAT (£)", "ALAIS=<RESIDUAL> inc <VAT> (£)"},
    {"Residual (%)", "ALAIS=<RESIDUAL> (%)"},
    {"Net Capital (£)"},
    {"Capital Cost (£)", "ALAIS=<CAPEQUIP> Cost (£)"},
    {"Commission (£)"},
    {"Commission (%)"},
    {"Yield (%)"},
    {"Premium Yield (%)"},
}};

struct BoundField {
  Words words;
  const char* tag;
};

constexpr std::array<BoundField, kSupplierFields> kSupplierFieldTags = {{
    {{"Supplier &Name", "ALAIS=<SUPPLIER> &Name"}, "RS=SUPPLIER;FIELDNAME=CompanyName;NODEF=0"},
    {{"Add&ress"}, "RS=SUPPLIER;FIELDNAME=Address1;NODEF=0"},
    {{""}, "RS=SUPPLIER;FIELDNAME=Address2;NODEF=0"},
    {{"To&wn"}, "RS=SUPPLIER;FIELDNAME=Town;NODEF=0"},
    {{"&County"}, "RS=SUPPLIER;FIELDNAME=County;NODEF=0"},
    {{"&Post Code"}, "RS=SUPPLIER;FIELDNAME=PostCode;NODEF=0"},
    {{"Head Office Te&l"}, "RS=SUPPLIER;FIELDNAME=tel;NODEF=0"},
    {{"Head Office Fa&x"}, "RS=SUPPLIER;FIELDNAME=fax;NODEF=0"},
    {{"Head Office E&mail"}, "RS=SUPPLIER;FIELDNAME=email;NODEF=0"},
    {{"We&b Address"}, "RS=SUPPLIER;FIELDNAME=www;NODEF=0"},
    {{"Equipment T&ype", "ALAIS=<CAPEQUIP> T&ype"}, "RS=SUPPLIER;FIELDNAME=equipment;NODEF=0"},
}};

constexpr std::array<BoundField, 6> kContactFieldTags = {{
    {{"F&irst Name"}, "RS=CONTACT;FIELDNAME=FirstName"},
    {{"S&urname"}, "RS=CONTACT;FIELDNAME=Surname"},
    {{"&Job Title"}, "RS=CONTACT;FIELDNAME=JobTitle"},
    {{"Tel"}, "RS=CONTACT;FIELDNAME=Tel"},
    {{"Fax"}, "RS=CONTACT;FIELDNAME=Fax"},
    {{"Email"}, "RS=CONTACT;FIELDNAME=Email"},
}};

constexpr std::array<Words, 11> kRateWords = {{
    {"<CAPEQUIP> Cost (£)", "ALAIS=<CAPEQUIP> Cost (£)"},
    {"To (£)"},
    {"Yield (%)"},
    {"Commission (%)"},
    {"Greater Than"},
    {"from"},
    {"from"},
    {"from"},
    {"from"},
    {"0.00"},
    {"and above"},
}};

constexpr std::array<Words, 3> kPremiumWords = {{
    {"User &Question"},
    {"Additional Yield (%)"},
    {"Apply When Greater than"},
}};

constexpr std::array<const char*, 3> kSwitchCaptions = {"Additional Rate Premium", "Show <RESIDUAL>", "Show <MAINT>"};
constexpr std::array<const char*, 3> kSwitchTags = {
    "RS=SUPPLIER;FIELDNAME=AdditionalPremium;ALAIS=Additional Rate &Premium",
    "RS=SUPPLIER;FIELDNAME=ResidualOption;ALAIS=Show <RESIDUAL>",
    "RS=SUPPLIER;FIELDNAME=MaintenanceOption;ALAIS=Show <MAINT>"};
constexpr std::array<const char*, 3> kPremiumColumns = {"AdditionalPremiumMsg", "AdditionalPremiumYield",
                                                        "AdditionalPremiumMin"};

std::string SupplierTag(const std::string& column) {
  return "RS=SUPPLIER;FIELDNAME=" + column;
}

constexpr std::array<Words, 4> kSendWords = {{
    {"S&ubject"},
    {"&Message"},
    {"Send &to"},
    {"Install &file"},
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
      ChkPremium(window, "ChkPremium", -1, "&Apply premium"),
      ckCapLock(window, "ckCapLock", -1, "Loc&k"),
      LblPremium(window, "LblPremium", -1, "Additional Rate Premium"),
      LblInterval(window, "LblInterval", -1, "Monthly"),
      FraQuote(window, "FraQuote", -1, "Lease"),
      FraRate(window, "FraRate", -1, "Rate, commission and payment"),
      FraResult(window, "FraResult", -1, "Results"),
      LblResult(window, "LblResult", kQuoteResults) {
  SetWords(LblProCalc, kBoxWords);
  SetWords(LblProList, kListWords);
  SetWords(LblResultName, kResultWords);
  ckCapLock.SetToolTip("Keep the capital cost when the payment or the commission is typed");
  for (const char* interval : {"Monthly", "Quarterly"}) CboProCalc(kListInterval).Add(interval);
  for (const char* term : {"1 Year", "2 Years", "3 Years", "4 Years", "5 Years"}) CboProCalc(kListTerm).Add(term);
}

SupplierPanel::SupplierPanel(Window& window)
    : FraSupplier(window, "FraSupplier", -1, "Supplier"),
      FraContacts(window, "FraContacts", -1, "Contacts"),
      LblSupplier(window, "LblSupplier", kSupplierFields),
      TxtSupplier(window, "TxtSupplier", kSupplierFields),
      LstContacts(window, "LstContacts"),
      LblContact(window, "LblContact", 6),
      TxtContact(window, "TxtContact", 6),
      CmdContact(window, "CmdContact", 2) {
  FraSupplier.SetTag("ALAIS=<SUPPLIER>");
  for (int i = 0; i < kSupplierFields; ++i) {
    const BoundField& field = kSupplierFieldTags[static_cast<std::size_t>(i)];
    LblSupplier(i).SetCaption(field.words.caption);
    LblSupplier(i).SetTag(field.words.tag);
    TxtSupplier(i).SetTag(field.tag);
  }
  for (int i = 0; i < 6; ++i) {
    const BoundField& field = kContactFieldTags[static_cast<std::size_t>(i)];
    LblContact(i).SetCaption(field.words.caption);
    TxtContact(i).SetTag(field.tag);
  }
  CmdContact(0).SetCaption("Add C&ontact");
  CmdContact(1).SetCaption("R&emove Contact");
}

RateCardPanel::RateCardPanel(Window& window)
    : FraRates(window, "FraRates", -1, "Rate card"),
      FraPremium(window, "FraPremium", -1, "Premium"),
      FraShow(window, "FraShow", -1, "Options"),
      FraForms(window, "FraForms", -1, "Available Forms/Information pages"),
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
  for (int i = 0; i < 4; ++i) txtRangeTo(i + 1).SetTag(SupplierTag("RangeEquipFROM" + std::to_string(i)));
  for (int i = 0; i < 5; ++i) {
    TxtRangeYield(i).SetTag(SupplierTag("Yield" + std::to_string(i)));
    txtComPerc(i).SetTag(SupplierTag("Com" + std::to_string(i)));
  }
  for (int i = 0; i < 3; ++i) {
    const auto n = static_cast<std::size_t>(i);
    ChAddRate(i).SetCaption(kSwitchCaptions[n]);
    ChAddRate(i).SetTag(kSwitchTags[n]);
    TxtAddRate(i).SetTag(SupplierTag(kPremiumColumns[n]));
  }
  LvwForms.CheckBoxes = true;
  LvwForms.Columns() = {{"Form", "", 4000}};
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
  OpCalcCreate(0).SetCaption("Send by e-mail");
  OpCalcCreate(1).SetCaption("Create an install file");
  FraCalCreate(0).SetCaption("E-mail");
  FraCalCreate(1).SetCaption("Install file");
  lvSendContacts.CheckBoxes = true;
  lvSendContacts.Columns() = {{"Contact", "", 2600}, {"Email", "", 3800}, {"Last Sent", "", 2400}};
  for (const char* type : {".exe", ".zip"}) cmboFileType.Add(type);
  constexpr std::array<const char*, 4> kCaptions = {"Se&nd", "&Browse", "&Create", "Check &All"};
  for (int i = 0; i < 4; ++i) CmdCalcGo(i).SetCaption(kCaptions[static_cast<std::size_t>(i)]);
}

MainMenus::MainMenus(Window& window)
    : MnuFile(window, "MnuFile", "", "&File"),
      MnuOpen(window, "MnuOpen", "MnuFile", "Open <SUPPLIER> Database...", "Ctrl+O"),
      MnuCreate(window, "MnuCreate", "MnuFile", "Create New <SUPPLIER> Database..."),
      MnuExit(window, "MnuExit", "MnuFile", "Exit", "Ctrl+Q"),
      MnuEdit(window, "MnuEdit", "", "Edi&t"),
      MnuAdd(window, "MnuAdd", "MnuEdit", "&Add New <SUPPLIER>", "Ctrl+N"),
      MnuRemove(window, "MnuRemove", "MnuEdit", "R&emove <SUPPLIER>"),
      MnuSaveDefault(window, "MnuSaveDefault", "MnuEdit", "Save <SUPPLIER> as default"),
      MnuRefresh(window, "MnuRefresh", "MnuEdit", "&Refresh <SUPPLIER> List", "F5"),
      MnuSearch(window, "MnuSearch", "MnuEdit", "&Search For Contact...", "Ctrl+F"),
      MnuUndoRemove(window, "MnuUndoRemove", "MnuEdit", "&Undo Remove <SUPPLIER>"),
      MnuOptions(window, "MnuOptions", "", "&Options"),
      MnuPreferences(window, "MnuPreferences", "MnuOptions", "Options and Preferences..."),
      MnuDetails(window, "MnuDetails", "MnuOptions", "Your Details..."),
      MnuPreview(window, "MnuPreview", "MnuOptions", "View <CALCNAME>"),
      MnuMail(window, "MnuMail", "MnuOptions", "&E-mail Settings..."),
      MnuHelp(window, "MnuHelp", "", "&Help"),
      MnuHelpPage(window, "MnuHelpPage", "MnuHelp", "&Help", "F1"),
      MnuUpgrades(window, "MnuUpgrades", "MnuHelp", "&Check for Tarvolinex upgrades..."),
      MnuAbout(window, "MnuAbout", "MnuHelp", "&About") {}

MainWindow::MainWindow()
    : Window("FrmMain", "Tarvolinex"),
      menus(*this),
      Toolbar1(*this, "Toolbar1"),
      LblFilter(*this, "LblFilter", -1, "Fi&lter"),
      TxtFilter(*this, "TxtFilter"),
      LvwSuppliers(*this, "LvwSuppliers"),
      LblCompany(*this, "LblCompany"),
      TabMain(*this, "TabMain"),
      quote(*this),
      supplier(*this),
      rateCard(*this),
      send(*this),
      TxtStatus(*this, "TxtStatus"),
      ProgressBar1(*this, "ProgressBar1"),
      Timer1(*this, "Timer1") {
  assert(!currentMainWindow && "one main window at a time");
  currentMainWindow = this;
  Toolbar1.Add({"New", "ADDNEW", "ALAIS=Add <SUPPLIER>", "", ""});
  Toolbar1.Add({"Remove", "REMSUPP", "ALAIS=Remove <SUPPLIER>", "", ""});
  Toolbar1.Add({"Save", "SAVE", "ALAIS=Save <SUPPLIER>", "", ""});
  Toolbar1.Add({"Search", "SEARCH", "ALAIS=Search For <SUPPLIER>/Contact", "", ""});
  Toolbar1.Add({"Refresh", "REFRESH", "ALAIS=Refresh <SUPPLIER> List", "", ""});
  Toolbar1.Add({"Options", "EDITPROP", "", "Calculator Options and Preferences", ""});
  Toolbar1.Add({"Forms", "FORMS", "", "Form Designer", ""});
  Toolbar1.Add({"View", "PREVIEW", "ALAIS=View <CALCNAME>", "", ""});
  Toolbar1.Add({"Help", "HELP", "", "Help", ""});
  LvwSuppliers.Columns() = {{"Name", "", 2700},
                            {"Telephone", "FIELDNAME=Tel", 1700},
                            {"Address 1", "FIELDNAME=Address1", 2000},
                            {"Address 2", "FIELDNAME=Address2", 2000},
                            {"Town", "FIELDNAME=Town", 1500},
                            {"County", "FIELDNAME=County", 1500},
                            {"Post Code", "FIELDNAME=PostCode", 1200}};
  for (const char* tab :
       {"Professional Calculator", "&<SUPPLIER> &Details", "Calculator S&ettings", "&Send/Create Calculator"}) {
    TabMain.Add(tab);
  }
  TxtStatus.SetLocked(true);
  TxtFilter.SetToolTip("Show only suppliers whose name, town or post code holds this text");
}

MainWindow::~MainWindow() {
  currentMainWindow = nullptr;
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
