#include "ui/main/SendPanel.h"

#include <algorithm>

#include "core/Settings.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "store/Suppliers.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

enum { kEntryProgram = 0, kEntryZip = 1 };

constexpr std::array<LabelWords, 4> kSendWords = {{
    {Marked("S&ubject")},
    {Marked("&Message")},
    {Marked("Send to")},
    {Marked("&Install file")},
}};

// Those that a calculator can be sent to.
std::vector<ListView::Row> RowsOf(const std::vector<ContactRow>& contacts) {
  std::vector<ListView::Row> rows;
  for (const ContactRow& contact : contacts) {
    if (contact.email.empty()) continue;
    const std::string key = "ID" + std::to_string(contact.id);
    rows.push_back({key, contact.name, {contact.email, contact.dateLastSent}, contact.name});
  }
  return rows;
}

}  // namespace

SendPanel::SendPanel(Window& window, Run& run)
    : OpCalcCreate(window, "OpCalcCreate", 2),
      FraCalCreate(window, "FraCalCreate", 2),
      LblSend(window, "LblSend", static_cast<int>(kSendWords.size())),
      lvSendContacts(window, "lvSendContacts"),
      TxtEmail(window, "TxtEmail", 2),
      TxtCalcCreate(window, "TxtCalcCreate"),
      cmboFileType(window, "cmboFileType"),
      CmdCalcGo(window, "CmdCalcGo", 4),
      run_(run) {
  SetWords(LblSend, kSendWords);
  OpCalcCreate(0).SetCaption(Tr("Send b&y e-mail"));
  OpCalcCreate(1).SetCaption(Tr("C&reate an install file"));
  FraCalCreate(0).SetCaption(Tr("E-mail"));
  FraCalCreate(1).SetCaption(Tr("Install file"));
  lvSendContacts.CheckBoxes = true;
  lvSendContacts.Columns() = {{Tr("Contact"), "", 2200}, {Tr("Email"), "", 3200}, {Tr("Last Sent"), "", 2900}};
  for (const char* type : {".exe", ".zip"}) cmboFileType.Add(type);
  constexpr std::array<const char*, 4> kCaptions = {Marked("Se&nd"), Marked("&Browse"), Marked("&Create"), kCheckAll};
  for (int i = 0; i < 4; ++i) CmdCalcGo(i).SetCaption(Tr(kCaptions[static_cast<std::size_t>(i)]));
  Wire();
}

void SendPanel::Wire() {
  for (int i = 0; i < 2; ++i) OpCalcCreate(i).Click = [this, i] { ShowSendFrame(i); };
  lvSendContacts.DblClick = [this] { lvSendContacts.ToggleCheck(lvSendContacts.Selected()); };
  CmdCalcGo(kGoBrowse).Click = [this] { BrowseForInstallFile(); };
  CmdCalcGo(kGoCheckAll).Click = [this] { CheckAllContacts(); };
  cmboFileType.Click = [this] { cmboFileType_Click(); };
  TxtCalcCreate.Change = [this] { TxtCalcCreate_Change(); };
  TxtCalcCreate.KeyUp = [this](Key key) {
    if (key == Key::Return) CmdCalcGo(kGoCreate).Press();
  };
}

void SendPanel::LoadPath() {
  // Before the path, which chooses its own type: a remembered ".zip" stays one.
  cmboFileType.SetListIndex(kEntryProgram);
  TxtCalcCreate.SetText(ReadOption(run_.AppFolder, "LASTINSTALLFILE", "C:\\CalcInstall.exe"));
}

void SendPanel::LoadTexts() {
  TxtEmail(0).SetText(ReadOption(run_.AppFolder, "LASTSUBJECT", ""));
  TxtEmail(1).SetText(ReplaceAll(ReadOption(run_.AppFolder, "LASTMSG", ""), "|+|", "\r\n"));
}

void SendPanel::ListContacts(const std::vector<ContactRow>& contacts) {
  lvSendContacts.BeginFill();
  lvSendContacts.Clear();
  for (ListView::Row& row : RowsOf(contacts)) lvSendContacts.Add(std::move(row));
  lvSendContacts.EndFill();
  // No tick is left that could be taken away.
  CmdCalcGo(kGoCheckAll).SetCaption(Tr(kCheckAll));
}

void SendPanel::RenewContacts(const std::vector<ContactRow>& contacts) {
  lvSendContacts.Renew(RowsOf(contacts));
}

std::vector<Recipient> SendPanel::TickedContacts() const {
  std::vector<Recipient> ticked;
  for (const ListView::Row& row : lvSendContacts.Rows()) {
    if (row.checked) ticked.push_back({IdOfKey(row.key), row.text, row.cells.at(0)});
  }
  return ticked;
}

void SendPanel::TickContacts(const std::vector<Recipient>& contacts) {
  for (int row = 0; row < lvSendContacts.Count(); ++row) {
    const int id = IdOfKey(lvSendContacts.At(row).key);
    const bool ticked =
        std::any_of(contacts.begin(), contacts.end(), [&](const Recipient& contact) { return contact.id == id; });
    lvSendContacts.SetChecked(row, ticked);
  }
}

void SendPanel::ShowSendFrame(int mode) {
  for (int i = 0; i < 2; ++i) FraCalCreate(i).SetVisible(false);
  FraCalCreate(mode).SetVisible(true);
}

void SendPanel::Block(bool blocked) {
  for (int i = 0; i < 2; ++i) {
    FraCalCreate(i).SetEnabled(!blocked);
    OpCalcCreate(i).SetEnabled(!blocked);
  }
  for (int i = 0; i < 4; ++i) CmdCalcGo(i).SetEnabled(!blocked);
}

void SendPanel::CompletePath() {
  const std::string path(Trim(TxtCalcCreate.Text())), name = FileNameOf(path);
  if (name.empty() || name.find('.') != std::string::npos || FolderExists(path)) return;
  TxtCalcCreate.SetText(path + (cmboFileType.ListIndex() == kEntryZip ? ".zip" : ".exe"));
}

void SendPanel::CheckAllContacts() {
  CommandButton& button = CmdCalcGo(kGoCheckAll);
  const bool check = button.Caption() == Tr(kCheckAll);
  for (int row = 0; row < lvSendContacts.Count(); ++row) lvSendContacts.SetChecked(row, check);
  button.SetCaption(Tr(check ? kUncheckAll : kCheckAll));
}

void SendPanel::BrowseForInstallFile() {
  const std::string file = TheDesktop().SaveFile(
      {Tr("Install setup executable"), FolderOf(Trim(TxtCalcCreate.Text())), "CalcInstall.exe",
       Tr("Intall setup executable (*.exe)|*.exe|Intall setup zip file (*.zip)|*.zip|All files (*.*)|*.*")});
  if (!file.empty()) TxtCalcCreate.SetText(file);
}

void SendPanel::cmboFileType_Click() {
  constexpr std::size_t kEnding = 4;
  const std::string path(Trim(TxtCalcCreate.Text()));
  const bool zip = cmboFileType.ListIndex() == kEntryZip;
  if (!EndsWithNoCase(path, zip ? ".EXE" : ".ZIP")) return;
  TxtCalcCreate.SetText(path.substr(0, path.size() - kEnding) + (zip ? ".Zip" : ".Exe"));
}

void SendPanel::TxtCalcCreate_Change() {
  const std::string_view path = Trim(TxtCalcCreate.Text());
  if (EndsWithNoCase(path, ".EXE")) cmboFileType.SetListIndex(kEntryProgram);
  if (EndsWithNoCase(path, ".ZIP")) cmboFileType.SetListIndex(kEntryZip);
}

}  // namespace tarvolinex
