#include "ui/main/FrmMain.h"

#include "core/Aliases.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

// One step of the window's load: its failure is passed over.
template <typename Action>
void LoadStep(Action action) {
  try {
    action();
  } catch (const RuntimeError&) {
    // The window comes up without what this step would have set.
  }
}

struct MenuTag {
  Menu MainMenus::*menu;
  const char* tag;
};

constexpr MenuTag kMenuTags[] = {
    {&MainMenus::MnuOpen, Marked("&Open <SUPPLIER> Database...")},
    {&MainMenus::MnuCreate, Marked("&Create New <SUPPLIER> Database")},
    {&MainMenus::MnuExportSuppliers, Marked("&Export <SUPPLIER>s...")},
    {&MainMenus::MnuBatch, Marked("&All <SUPPLIER>s at Once...")},
    {&MainMenus::MnuAdd, Marked("&Add <SUPPLIER>")},
    {&MainMenus::MnuRemove, Marked("R&emove <SUPPLIER>")},
    {&MainMenus::MnuSaveDefault, Marked("Save <SUPPLIER> as Default")},
    {&MainMenus::MnuRefresh, Marked("&Refresh <SUPPLIER> List")},
    {&MainMenus::MnuUndoRemove, Marked("&Undo Remove <SUPPLIER>")},
    {&MainMenus::MnuPreferences, Marked("<CALCNAME> Options and Preferences...")},
    {&MainMenus::MnuPreview, Marked("&Preview <CALCNAME>")},
};

}  // namespace

FrmMain::FrmMain(Run& theRun)
    : Window("FrmMain", Tr("Tarvolinex")),
      run(theRun),
      database(theRun),
      menus(*this),
      Toolbar1(*this, "Toolbar1"),
      LblFilter(*this, "LblFilter", -1, Tr("Fi&lter")),
      TxtFilter(*this, "TxtFilter"),
      LvwSuppliers(*this, "LvwSuppliers"),
      standing(*this, database, LvwSuppliers, shown),
      LblCompany(*this, "LblCompany"),
      LblChanged(*this, "LblChanged"),
      TabMain(*this, "TabMain"),
      quote(*this, theRun, shown),
      supplier(*this, theRun, shown),
      contacts(*this, theRun, database, shown),
      rateCard(*this, theRun, shown),
      forms(*this, theRun, database, shown),
      send(*this, theRun),
      TxtStatus(*this, "TxtStatus"),
      LblDatabase(*this, "LblDatabase"),
      ProgressBar1(*this, "ProgressBar1"),
      Timer1(*this, "Timer1"),
      TimerOthers(*this, "TimerOthers") {
  MakeToolbar();
  MakeTabs();
  TxtStatus.SetLocked(true);
  LblChanged.SetVisible(false);
  run.Line = {[this](bool flashing, std::string_view text, int progress) { ShowStatus(flashing, text, progress); },
              [this](std::string_view reason) { TxtStatus.SetText(reason); },
              [this](std::string_view text, bool correction) { SetNote(text, correction); }};
  WireShell();
  WireMenus();
  WireSuppliers();
  WirePanels();
}

FrmMain::~FrmMain() {
  run.Line = {};
}

void FrmMain::MakeToolbar() {
  Toolbar1.Add({Tr("New"), "ADDNEW", OwnWordsTag(Marked("Add <SUPPLIER>")), "", ""});
  Toolbar1.Add({Tr("Remove"), "REMSUPP", OwnWordsTag(Marked("Remove <SUPPLIER>")), "", ""});
  Toolbar1.Add({Tr("Save"), "SAVE", OwnWordsTag(Marked("Save <SUPPLIER>")), "", "", true, "Ctrl+S"});
  Toolbar1.Add({Tr("Search"), "SEARCH", OwnWordsTag(Marked("Search For <SUPPLIER>/Contact")), "", ""});
  Toolbar1.Add({Tr("Refresh"), "REFRESH", OwnWordsTag(Marked("Refresh <SUPPLIER> List")), "", ""});
  Toolbar1.Add({Tr("Options"), "EDITPROP", "", Tr("Calculator Options and Preferences"), ""});
  Toolbar1.Add({Tr("Forms"), "FORMS", "", Tr("Form Designer"), ""});
  Toolbar1.Add({Tr("View"), "PREVIEW", OwnWordsTag(Marked("View <CALCNAME>")), "", ""});
  Toolbar1.Add({Tr("Help"), "HELP", "", Tr("Help"), ""});
}

void FrmMain::MakeTabs() {
  for (const std::string& tab : {Tr("Professional Calculator"), Tr("&<SUPPLIER> &Details"), Tr("Calculator S&ettings"),
                                 Tr("&Send/Create Calculator")}) {
    TabMain.Add(tab);
  }
}

void FrmMain::WireShell() {
  Toolbar1.ButtonClick = [this](const std::string& key) { Toolbar1_ButtonClick(key); };
  TabMain.Click = [this] { TabMain_Click(); };
  Timer1.Tick = [this] { Timer1_Tick(); };
  standing.BrandingNow = [this] { return OwnBranding(); };
  standing.AtRest = [this] { return AtRest(); };
  standing.Changed = [this] { ShowStandings(); };
  TimerOthers.Interval = 500;
  TimerOthers.Tick = [this] { TimerOthers_Tick(); };
  KeyUp = [this](Key key) { Form_KeyUp(key); };
  Resized = [this](int width, int height) { Arrange(width, height); };
  Unloading = [this] { Unload(); };
  MayClose = [this] {
    run.StopRequested = true;
    if (Working || run.ErrorShown || Nameless()) return !Working;
    LeaveField();
    return MayLeave() || LeavesUnstored();
  };
}

void FrmMain::WirePanels() {
  supplier.Changed = [this](int field, bool changedBefore) { TxtSupplier_Changed(field, changedBefore); };
  contacts.Surroundings = {
      [this] { send.lvSendContacts.Clear(); },
      [this](const std::vector<ContactRow>& listed) { send.ListContacts(listed); },
      [this] {
        if (Nameless()) supplier.Name().SetFocus();
        return !Nameless();
      },
      [this] { return SavePendingChanges(); },
      [this](std::vector<MetField>& met) { return Decide(met); },
      [this] { return PutBackOrLeave(); },
      [this] {
        const int row = LvwSuppliers.Selected();
        if (row < 0 || LvwSuppliers.At(row).key != "ID0" || Nameless()) return false;
        return SavePendingChanges();
      },
      [this] { NoteOwnChange(); },
      [this](RemovedRows removed) { OfferUndo(std::move(removed)); },
      [this](const std::vector<ContactRow>& renewed) { send.RenewContacts(renewed); },
      [this](const RuntimeError& loss) { TellOfLoss(loss); },
      [this] { Settle(); },
  };
  forms.View = [this](const std::string& page) { PreviewFormPage(page); };
  quote.CmdSchedule.Click = [this] { ShowSchedule(); };
  quote.CmdTerms.Click = [this] { ShowTerms(); };
  quote.CmdSheet.Click = [this] { ShowSheet(); };
  quote.CmdKeepQuote.Click = [this] { KeepShownQuote(); };
  send.CmdCalcGo(kGoSend).Click = [this] { SendCalculator(); };
  send.CmdCalcGo(kGoCreate).Click = [this] { CreateInstallFile(); };
}

void FrmMain::Load() {
  quote.loading = true;
  shown.LoadingSupplier = true;
  run.ErrorShown = false;
  LoadStep([&] {
    TabMain.SelectTab(kTabQuote);
    send.OpCalcCreate(0).SetValue(true);
    SetImageForButtonAndDrop();
  });
  LoadStep([&] { LoadIniFileValues(); });
  LoadStep([&] { LoadAppearance(); });
  for (const auto& [menu, tag] : kMenuTags) (menus.*menu).SetTag(std::string("ALAIS=") + tag);
  LoadStep([&] { ApplyCaptions(); });
  bool opened = false, askUser = false;
  try {
    opened = OpenDatabase(askUser);
  } catch (const RuntimeError& failure) {
    run.ShowError(failure.Description());
  }
  if (!opened) throw ProgramEnded{1};
  for (int type = 0; type < 3; ++type) {
    send.Instructions.at(static_cast<std::size_t>(type)) = GetInstructions(run.AppFolder, type, run);
  }
  LoadStep([&] { NoteEarlierMail(); });
  LoadStep([&] {
    rateCard.SetDefaults();
    quote.SetDefaults();
  });
  quote.loading = false;
  TimerOthers.SetRunning(true);
}

void FrmMain::NoteEarlierMail() {
  const SentList list = {run.AppFolder, database.Folder()};
  if (RememberedMail(list).empty()) return;
  NoteRememberedMail(list, database);
  contacts.ListContacts();
}

void FrmMain::LoadIniFileValues() {
  try {
    send.LoadPath();
    run.DataFolder = RememberedDataFolder(run);
    send.LoadTexts();
  } catch (const RuntimeError&) {
    run.ShowError("Initialisation File Loading Error");
  }
}

void FrmMain::Unload() {
  // Closing drops a supplier without a name, or the emptied name.
  if (!run.ErrorShown && !Nameless()) {
    LeaveField();
    static_cast<void>(SaveAll());
  }
  SaveAppearance();
  TheDesktop().DoEvents();
  TheDesktop().DoEvents();
}

void FrmMain::ApplyCaptions() {
  tarvolinex::ApplyCaptions(*this, run.OwnWords());
  quote.ListUnits();
  TabMain.SetTabCaption(kTabDetails, run.CaptionWithAliases("<SUPPLIER> &Detail"));
}

void FrmMain::UsePreferences() {
  const UnchangedQuote kept(quote);
  ApplyCaptions();
  quote.NameWhatIsLocked();
  standing.LookAtAll();
  NoteAgreed(database, OwnBranding());
}

void FrmMain::ShowStatus(bool flashing, std::string_view text, int progress) {
  busy_ = progress >= 0 || flashing;
  Timer1.SetRunning(progress < 0 && flashing);
  TxtStatus.SetText(busy_ ? Tr(text) : note_);
  if (progress >= 0) ProgressBar1.SetValue(progress);
  if (!busy_) ProgressBar1.SetValue(0);
}

void FrmMain::SetNote(std::string_view text, bool correction) {
  if (TxtStatus.Text() == note_) TxtStatus.SetText(text);
  note_ = text;
  correction_ = correction;
}

void FrmMain::SetImageForButtonAndDrop() {
  for (int i = 0; i < static_cast<int>(Toolbar1.Buttons().size()); ++i) {
    Toolbar1.SetButtonImage(i, Toolbar1.Buttons()[static_cast<std::size_t>(i)].key);
  }
}

void FrmMain::EnableCommands(bool blocked) {
  const bool enabled = !blocked;
  LvwSuppliers.SetEnabled(enabled);
  for (int i = 0; i < static_cast<int>(TabMain.Tabs().size()); ++i) TabMain.SetTabEnabled(i, enabled);
  for (int i = 0; i < static_cast<int>(Toolbar1.Buttons().size()); ++i) Toolbar1.SetButtonEnabled(i, enabled);
  for (Menu* menu : {&menus.MnuFile, &menus.MnuEdit, &menus.MnuOptions, &menus.MnuHelp}) menu->SetEnabled(enabled);
  LockButtons();
}

void FrmMain::TabMain_Click() {
  static_cast<void>(SaveAll());
  if (!quote.loading) quote.RecalculateShownQuote();
  if (TabMain.Selected() == kTabSend && contacts.ContactListStale) contacts.ListContacts();
}

void FrmMain::Timer1_Tick() {
  const int value = ProgressBar1.Value();
  ProgressBar1.SetValue((value >= 100 ? 0 : value) + 1);
}

void FrmMain::Form_KeyUp(Key key) {
  if (Working) {
    if (key == Key::Escape) run.StopRequested = true;
    return;
  }
  if (key != Key::Escape || !Nameless()) return;
  shown.SupplierChanged = true;
  SupplierCommand(1);
}

}  // namespace tarvolinex
