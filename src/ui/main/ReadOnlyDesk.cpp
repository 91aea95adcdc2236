// What a desk does that may only read: the server lets it store nothing, or is out of reach and its copy is looked at.
#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DatabaseCopy.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kDayLength = 10;
constexpr const char* kCopies = "Desk copy ";

// Of the newest; empty when there is none.
std::string DayOfCopy(const std::string& dataFolder) {
  const std::vector<std::string> copies = ListFiles(dataFolder + "\\" + kCopies + "*.mdb");
  return copies.empty() ? std::string() : copies.back().substr(std::string_view(kCopies).size(), kDayLength);
}

std::string CopyPath(const std::string& dataFolder, const std::string& day) {
  return dataFolder + "\\" + kCopies + day + ".mdb";
}

}  // namespace

bool FrmMain::MayStore() {
  if (!database.ReadOnly()) return true;
  run.MessageBox(Tr("Nothing can be stored here: this database can only be read"), Tr("Shared Database"),
                 BoxButtons::Ok, BoxIcon::Information);
  return false;
}

// Fields can be read and copied, and not typed into.
void FrmMain::LockFields() {
  const bool locked = database.ReadOnly();
  if (locked == locked_) return;
  locked_ = locked;
  for (Control* control : Controls()) {
    if (GetTagValue(control->Tag(), "RS").empty()) continue;
    if (auto* box = dynamic_cast<TextBox*>(control)) box->SetLocked(locked);
    if (dynamic_cast<CheckBox*>(control)) control->SetEnabled(!locked);
  }
  forms.LvwForms.SetEnabled(!locked);
  for (CommandButton* button : {&contacts.CmdContact(0), &contacts.CmdContact(1)}) button->SetEnabled(!locked);
  for (Menu* menu : {&menus.MnuAdd, &menus.MnuRemove, &menus.MnuSaveDefault, &menus.MnuCopyRates, &menus.MnuChangeRates,
                     &menus.MnuImport, &menus.MnuBatch}) {
    menu->SetEnabled(!locked);
  }
  LockButtons();
}

void FrmMain::LockButtons() {
  if (!database.ReadOnly()) return;
  for (const char* key : {"ADDNEW", "REMSUPP", "SAVE"}) Toolbar1.SetButtonEnabled(key, false);
}

// Once a day, so that there is something to look at when the server is out of reach.
void FrmMain::KeepDeskCopy() {
  if (run.SharedDatabase.empty()) return;
  const std::string today = IsoDate(TheDesktop().Now()), last = DayOfCopy(run.DataFolder);
  if (last >= today) return;
  try {
    CopyDatabaseToFile(database.Plain(), CopyPath(run.DataFolder, today), [this](int percent, const std::string&) {
      run.SetStatus(false, Tr("Keeping a copy for days without the server"), percent);
    });
    if (!last.empty()) DeleteFile(CopyPath(run.DataFolder, last));
  } catch (const RuntimeError&) {
    // A full disk must not keep the user from his work.
  }
  run.SetStatus(false, "", -1);
}

// After the server could not be reached. False when there is no copy, or the user does not want it.
bool FrmMain::LooksAtCopy() {
  const std::string day = run.SharedDatabase.empty() ? std::string() : DayOfCopy(run.DataFolder);
  if (day.empty()) return false;
  const std::string question =
      Tr("Would you like to look at this desk's copy of %1 instead?\n\nNothing can be changed in it.", {day});
  if (run.MessageBox(question, Tr("Shared Database"), BoxButtons::YesNo, BoxIcon::Question) != Answer::Yes)
    return false;
  const std::string name = Tr("copy of %1 of %2", {database.Name(), day});
  database.OpenToRead(run.DataFolder, CopyPath(run.DataFolder, day), name);
  ShowDatabaseName();
  return true;
}

}  // namespace tarvolinex
