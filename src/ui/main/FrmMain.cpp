#include "ui/main/FrmMain.h"

#include "calc/QuotePanel.h"
#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "distribute/SentMail.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "store/Suppliers.h"

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
    {&MainMenus::MnuAdd, Marked("&Add <SUPPLIER>")},
    {&MainMenus::MnuRemove, Marked("R&emove <SUPPLIER>")},
    {&MainMenus::MnuSaveDefault, Marked("Save <SUPPLIER> as Default")},
    {&MainMenus::MnuRefresh, Marked("&Refresh <SUPPLIER> List")},
    {&MainMenus::MnuUndoRemove, Marked("&Undo Remove <SUPPLIER>")},
    {&MainMenus::MnuPreferences, Marked("<CALCNAME> Options and Preferences...")},
    {&MainMenus::MnuPreview, Marked("&Preview <CALCNAME>")},
};

}  // namespace

FrmMain::FrmMain() {
  WireShell();
  WireMenus();
  WireQuote();
  WireRateCard();
  WireSuppliers();
  WireContacts();
  WireSend();
}

void FrmMain::WireShell() {
  Toolbar1.ButtonClick = [this](const std::string& key) { Toolbar1_ButtonClick(key); };
  TabMain.Click = [this] { TabMain_Click(); };
  Timer1.Tick = [this] { Timer1_Tick(); };
  KeyUp = [this](Key key) { Form_KeyUp(key); };
  Resized = [this](int width, int height) { Arrange(width, height); };
  Unloading = [this] { Unload(); };
  for (int i = 0; i < 2; ++i) send.OpCalcCreate(i).Click = [this, i] { ShowSendFrame(i); };
}

void FrmMain::Load() {
  loading = true;
  LoadingSupplier = true;
  ErrorShown = false;
  LoadStep([&] {
    TabMain.SelectTab(kTabQuote);
    send.OpCalcCreate(0).SetValue(true);
    SetImageForButtonAndDrop();
  });
  LoadStep([&] { LoadIniFileValues(); });
  LoadStep([&] { LoadAppearance(); });
  for (const auto& [menu, tag] : kMenuTags) (menus.*menu).SetTag(std::string("ALAIS=") + tag);
  LoadStep([&] { ApplyCaptions(*this); });
  bool opened = false, askUser = false;
  try {
    opened = OpenDatabase(askUser);
  } catch (const RuntimeError& failure) {
    ShowError(failure.Description());
  }
  if (!opened) throw ProgramEnded{1};
  for (int type = 0; type < 3; ++type) LoadStep([&] { GetInstructions(type); });
  LoadStep([&] {
    if (RememberedMail().empty()) return;
    NoteRememberedMail();
    ListContacts();
  });
  LoadStep([&] { SetDefaults(); });
  loading = false;
}

void FrmMain::Unload() {
  // Closing drops a supplier without a name, or the emptied name.
  if (!ErrorShown && !Nameless()) {
    LeaveField();
    SavePendingChanges();
    SaveContact();
  }
  SaveAppearance();
  for (Recordset* set :
       {&TheStore->SupplierRecords, &TheStore->FormRecords, &TheStore->FormLinkRecords, &TheStore->ContactRecords}) {
    set->Close();
  }
  TheDesktop().DoEvents();
  TheDesktop().DoEvents();
}

void FrmMain::ShowSendFrame(int mode) {
  for (int i = 0; i < 2; ++i) send.FraCalCreate(i).SetVisible(false);
  send.FraCalCreate(mode).SetVisible(true);
}

void FrmMain::SetImageForButtonAndDrop() {
  for (int i = 0; i < static_cast<int>(Toolbar1.Buttons().size()); ++i) {
    Toolbar1.SetButtonImage(i, Toolbar1.Buttons()[static_cast<std::size_t>(i)].key);
  }
}

void FrmMain::TabMain_Click() {
  SavePendingChanges();
  SaveContact();
  if (!loading) RecalculateShownQuote();
  if (TabMain.Selected() == kTabSend && ContactListStale) ListContacts();
}

void FrmMain::Timer1_Tick() {
  const int value = ProgressBar1.Value();
  ProgressBar1.SetValue((value >= 100 ? 0 : value) + 1);
}

void FrmMain::Form_KeyUp(Key key) {
  if (Working) {
    if (key == Key::Escape) StopRequested = true;
    return;
  }
  if (key != Key::Escape || !Nameless()) return;
  SupplierChanged = true;
  SupplierCommand(1);
}

bool FrmMain::Nameless() const {
  return Trim(supplier.TxtSupplier(kSupplierName).Text()).empty();
}

}  // namespace tarvolinex
