#include "ui/options/FrmOptions.h"

#include "controls/Desktop.h"
#include "core/Launcher.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorFolder.h"
#include "publish/PageOptions.h"
#include "publish/Preferences.h"
#include "store/Statements.h"
#include "ui/NumberBoxes.h"

namespace tarvolinex {

namespace {
enum Button { kOk, kCancel, kView, kHelp, kButtons };
constexpr int kDepositTypes = 3, kPreviewTexts = 5;
}  // namespace

FrmOptions::FrmOptions(Run& run, Database& database)
    : Window("FrmOptions", Tr("Calculator Options")),
      TreeOptions(*this, "TreeOptions"),
      Cmd(*this, "Cmd", kButtons),
      FraBlank(*this, "FraBlank"),
      FraTextString(*this, "FraTextString"),
      TxtString(*this, "TxtString"),
      FraValue(*this, "FraValue"),
      TxtIncre(*this, "TxtIncre"),
      UpDown1(*this, "UpDown1"),
      FraColour(*this, "FraColour"),
      PicColour(*this, "PicColour"),
      CmdColor(*this, "CmdColor", -1, Tr("Change")),
      FraYesNo(*this, "FraYesNo"),
      ChkYesNo(*this, "ChkYesNo"),
      FraDepOptions(*this, "FraDepOptions"),
      ChkdepSelect(*this, "ChkdepSelect", kDepositTypes),
      FraForms(*this, "FraForms", -1, Tr("Forms")),
      LblForms(*this, "LblForms", 2),
      txtForms(*this, "txtForms", 2),
      ChkFrmAvailable(*this, "ChkFrmAvailable", -1, Tr("Add/Remove from available forms list")),
      cmdForm(*this, "cmdForm", 3),
      FraIcon(*this, "FraIcon", -1, Tr("Icon")),
      CboIcons(*this, "CboIcons"),
      PicIcon(*this, "PicIcon"),
      CmdIcon(*this, "CmdIcon", -1, Tr("Edit")),
      FraLogo(*this, "FraLogo"),
      TxtLogo(*this, "TxtLogo"),
      CmdCoLog(*this, "CmdCoLog", -1, Tr("Browse...")),
      LblPicture(*this, "LblPicture"),
      PicLogo(*this, "PicLogo"),
      FraLanguage(*this, "FraLanguage"),
      CboLanguage(*this, "CboLanguage"),
      FraMeaning(*this, "FraMeaning"),
      TxtMeaning(*this, "TxtMeaning"),
      LblHint(*this, "LblHint"),
      LblPreviewTitle(*this, "LblPreviewTitle", -1, Tr("Preview")),
      PicPage(*this, "PicPage"),
      LblPreviewPanel(*this, "LblPreviewPanel"),
      PicPageLogo(*this, "PicPageLogo"),
      LblPreview(*this, "LblPreview", kPreviewTexts),
      run_(run),
      database_(database) {
  WireButtons();
  WireEditors();
  WireForms();
  WireGraphics();
  AnswerKeys(*this, Cmd(kOk), Cmd(kCancel));
  // The title bar's button is a Cancel.
  MayClose = [this] {
    LeaveField();
    SaveChangedValue();
    return true;
  };
}

void FrmOptions::WireButtons() {
  constexpr const char* kCaptions[] = {Marked("&OK"), Marked("&Cancel"), Marked("View"), Marked("&Help")};
  for (int i = 0; i < kButtons; ++i) {
    Cmd(i).SetCaption(Tr(kCaptions[i]));
    Cmd(i).Click = [this, i] { Cmd_Click(i); };
  }
  Cmd(kOk).SetToolTip(Tr("Save and Close"));
  Cmd(kCancel).SetToolTip(Tr("Close options without saving"));
}

void FrmOptions::WireEditors() {
  TreeOptions.NodeClick = [this] { TreeOptions_NodeClick(); };
  // What the record cannot hold is seen at once.
  TxtString.Validate = [this] { TxtString.SetText(FromWindows1252(ToWindows1252(EscapeQuotes(TxtString.Text())))); };
  TxtMeaning.Change = [this] { TxtMeaning_Change(); };
  TxtIncre.SetForNumber(run_.CalculatorPreferences.CurrencySymbol.Trimmed());
  TxtIncre.Change = [this] {
    valueTyped_ = true;
    TxtIncre.SetFault(FaultOf(ValueRule(), TxtIncre.Text()));
  };
  TxtIncre.GotFocus = [this] { enteredValue_ = TxtIncre.Text(); };
  TxtIncre.LostFocus = [this] {
    const bool typed = valueTyped_;
    TxtIncre.SetText(TextWhenLeft(ValueRule(), TxtIncre.Text(), enteredValue_));
    valueTyped_ = typed;
  };
  for (const bool up : {true, false}) {
    (up ? UpDown1.UpClick : UpDown1.DownClick) = [this, up] {
      StepInput(TxtIncre, up, up ? valueLimit_ : 0, ValueRule());
      TxtIncre.SetFocus();
    };
  }
  CmdColor.Click = [this] { ChangeColour(); };
  ChkdepSelect(0).SetCaption(Tr("Value ($)"));
  ChkdepSelect(2).SetCaption(Tr("Advanced Payments"));
  for (int i = 0; i < kDepositTypes; ++i) {
    ChkdepSelect(i).Click = [this, i] { ChkdepSelect_Click(i); };
  }
}

void FrmOptions::Load() {
  const BusyWhile busy;
  edited_ = run_.CalculatorPreferences;
  page_ = {};
  pageFault_.clear();
  try {
    page_ = ReadPageOptions(run_.AppFolder);
  } catch (const RuntimeError& failure) {
    pageFault_ = failure.Description();
    run_.ShowError("Initialisation File Loading Error");
  }
  storedPage_ = page_;
  AddRootTree();
  pendingPictures_ = {};
  HidePanels();
  FraBlank.SetVisible(true);
  ShowHint(nullptr);
  Cmd(kView).SetImage("PREVIEW");
  Cmd(kHelp).SetImage("HELP");
  std::string icon = edited_.IconName.Trimmed();
  RefreshIconList(icon);
  edited_.IconName = icon;
  loaded_ = edited_;
  formsListChanged_ = false;
  Cmd(kView).SetToolTip(run_.ReplaceAliases("View <CALCNAME>"));
}

void FrmOptions::ShowForms() {
  TreeOptions.Expand(kFormsKey);
  TreeOptions.ClickNode(kFormsKey);
}

void FrmOptions::AddRootTree() {
  TreeOptions.Clear();
  currentKey_.clear();
  std::vector<FormRow> forms;
  try {
    forms = AllForms(database_);
  } catch (const RuntimeError&) {
    run_.ShowError("Database Error", true);
  }
  for (const OptionNode& node : OptionNodes()) {
    TreeOptions.Add({node.key, node.parent, run_.ReplaceAliases(node.caption)});
    if (std::string_view(node.key) == kFormsKey) AddFormsToTree(forms);
  }
  ChkdepSelect(1).SetCaption(run_.CaptionWithAliases("Percentage  of <CAPEQUIP>"));
}

bool FrmOptions::SavePageOptions() {
  if (page_ == storedPage_) return true;
  std::string reason;
  try {
    // All of them are written: those that could not be read would be lost.
    if (!pageFault_.empty()) {
      reason = Tr("They could not be read: %1", {pageFault_});
    } else {
      WritePageOptions(run_.AppFolder, page_);
    }
  } catch (const RuntimeError& failure) {
    reason = failure.Description();
  }
  if (reason.empty()) {
    storedPage_ = page_;
    return true;
  }
  ReportFailure(run_, "The options of the calculator page could not be saved", reason);
  return false;
}

// What others have stored meanwhile comes into the copy, and what is shown of it is shown anew.
bool FrmOptions::Agrees() {
  Organisation mine = {edited_, page_};
  if (!Around.agree) return true;
  if (!Around.agree({loaded_, storedPage_}, mine)) return false;
  if (mine == Organisation{edited_, page_}) return true;
  edited_ = mine.prefs;
  page_ = mine.page;
  const std::string key = std::exchange(currentKey_, "");
  if (!key.empty()) TreeOptions.ClickNode(key);
  return true;
}

bool FrmOptions::SavePreferences() {
  if (!Agrees() || !SavePageOptions()) return false;
  run_.CalculatorPreferences = loaded_ = edited_;
  const Branding branding = {run_.Places(), edited_, run_.CustomerReference};
  SaveCalculatorPreferences(branding, run_);
  if (Around.preferencesSaved) Around.preferencesSaved();
  CopyInstallIcon(branding, run_);
  return true;
}

void FrmOptions::Cmd_Click(int button) {
  SaveChangedValue();
  if ((button == kOk || button == kView) && !CanPublish(edited_, run_.OwnWords(), run_)) return;
  switch (button) {
    case kOk:
      if (!SavePreferences()) return;
      if (formsListChanged_) RemoveUnavailableForms();
      return Close();
    case kCancel:
      return Close();
    case kView:
      if (!SavePreferences()) return;
      TheDesktop().DoEvents();
      if (Around.preview) Around.preview();
      return TheDesktop().DoEvents();
    default:
      return ShowHelpPage(run_, 1);
  }
}

void FrmOptions::RemoveUnavailableForms() {
  DeleteSupplierLinks();
  if (Around.formsChanged) Around.formsChanged();
}

void FrmOptions::SetSwatch(Colour colour) {
  constexpr Colour kByte = 0xFF;
  PicColour.SetBackColour(colour);
  const auto part = [&](unsigned shift) { return std::to_string(colour >> shift & kByte); };
  PicColour.SetToolTip(Tr("Red %1, green %2, blue %3", {part(0), part(8), part(16)}));
}

void FrmOptions::TxtMeaning_Change() {
  const std::string text = TxtMeaning.Text(), without = ReplaceAll(text, "\r\n", "");
  const bool onlyReturn = without == meaning_;
  meaning_ = onlyReturn ? without : ReplaceAll(text, "\r\n", " ");
  if (text != meaning_) TxtMeaning.SetText(meaning_);
}

void FrmOptions::ChangeColour() {
  const auto chosen = TheDesktop().ChooseColour(PicColour.BackColour());
  if (!chosen) return;
  SetSwatch(*chosen);
  ShowPreview();
}

void FrmOptions::ChkdepSelect_Click(int box) {
  if (!filling_ && TickedDepositTypes() == 0) ChkdepSelect(box).SetValue(true);
}

}  // namespace tarvolinex
