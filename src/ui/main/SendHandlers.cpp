// The send tab: a calculator goes out by e-mail, or becomes an install file.
#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "distribute/InstallPackage.h"
#include "distribute/LongWork.h"
#include "distribute/Upload.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorFolder.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/FrmMain.h"
#include "ui/main/frmSendCalc.h"

namespace tarvolinex {

namespace {

enum { kEntryProgram = 0, kEntryZip = 1 };

}  // namespace

void FrmMain::WireSend() {
  send.lvSendContacts.DblClick = [this] { send.lvSendContacts.ToggleCheck(send.lvSendContacts.Selected()); };
  send.CmdCalcGo(kGoSend).Click = [this] {
    SaveShown();
    if (!MayPublish()) return;
    SendCalculator([] {
      frmSendCalc choice;
      TheDesktop().ShowModal(choice);
    });
  };
  send.CmdCalcGo(kGoBrowse).Click = [this] { BrowseForInstallFile(); };
  send.CmdCalcGo(kGoCreate).Click = [this] { CreateInstallFile(); };
  send.CmdCalcGo(kGoCheckAll).Click = [this] { CheckAllContacts(); };
  send.cmboFileType.Click = [this] { cmboFileType_Click(); };
  send.TxtCalcCreate.Change = [this] { TxtCalcCreate_Change(); };
  send.TxtCalcCreate.KeyUp = [this](Key key) {
    if (key == Key::Return) send.CmdCalcGo(kGoCreate).Press();
  };
  menus.MnuUpgrades.Click = [] { LaunchDocument(VersionCheckAddress()); };
  menus.MnuMail.Click = [] {
    SavePendingChanges();
    FrmMailSettings settings;
    TheDesktop().ShowModal(settings);
  };
  MayClose = [] {
    StopRequested = true;
    return !Working;
  };
}

void FrmMain::CheckAllContacts() {
  CommandButton& button = send.CmdCalcGo(kGoCheckAll);
  const bool check = button.Caption() == Tr(kCheckAll);
  for (int row = 0; row < send.lvSendContacts.Count(); ++row) send.lvSendContacts.SetChecked(row, check);
  button.SetCaption(Tr(check ? kUncheckAll : kCheckAll));
}

void FrmMain::BrowseForInstallFile() {
  const std::string file = TheDesktop().SaveFile(
      {Tr("Install setup executable"), FolderOf(Trim(send.TxtCalcCreate.Text())), "CalcInstall.exe",
       Tr("Intall setup executable (*.exe)|*.exe|Intall setup zip file (*.zip)|*.zip|All files (*.*)|*.*")});
  if (!file.empty()) send.TxtCalcCreate.SetText(file);
}

void FrmMain::CreateInstallFile() {
  SaveShown();
  if (!MayPublish() || !CanPack()) return;
  // Without an ending Windows would not start a program nor open an archive.
  const std::string path(Trim(send.TxtCalcCreate.Text())), name = FileNameOf(path);
  if (!name.empty() && name.find('.') == std::string::npos && !FolderExists(path)) {
    send.TxtCalcCreate.SetText(path + (send.cmboFileType.ListIndex() == kEntryZip ? ".zip" : ".exe"));
  }
  WriteIni("General", "OPTIONS", "LASTINSTALLFILE", send.TxtCalcCreate.Text());
  {
    const LongWork work;
    BuildCalculatorFolder();
    if (!BuildDistFiles(true)) return;
  }
  SetStatus(false, "", -1);
  TheDesktop().MessageBox(Tr("Calculator install file created succesfully"), Tr("Calculator Install File"),
                          BoxButtons::Ok, BoxIcon::Information);
}

void FrmMain::cmboFileType_Click() {
  constexpr std::size_t kEnding = 4;
  const std::string path(Trim(send.TxtCalcCreate.Text()));
  const bool zip = send.cmboFileType.ListIndex() == kEntryZip;
  if (!EndsWithNoCase(path, zip ? ".EXE" : ".ZIP")) return;
  send.TxtCalcCreate.SetText(path.substr(0, path.size() - kEnding) + (zip ? ".Zip" : ".Exe"));
}

void FrmMain::TxtCalcCreate_Change() {
  const std::string_view path = Trim(send.TxtCalcCreate.Text());
  if (EndsWithNoCase(path, ".EXE")) send.cmboFileType.SetListIndex(kEntryProgram);
  if (EndsWithNoCase(path, ".ZIP")) send.cmboFileType.SetListIndex(kEntryZip);
}

}  // namespace tarvolinex
