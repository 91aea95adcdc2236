#include "ui/main/FRmCreateDB.h"

#include "controls/Desktop.h"
#include "core/Launcher.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/SharedDatabase.h"

namespace tarvolinex {

namespace {
constexpr const char* kDrive = "c:\\";
constexpr int kLongestPath = 260;
}  // namespace

std::string BrowseForFolder(const std::string& title, const std::string& startFolder) {
  const std::string chosen = TheDesktop().ChooseFolder(title.empty() ? Tr("Select A Directory") : title,
                                                       FolderExists(startFolder) ? startFolder : std::string());
  return std::string(FirstCharacters(chosen, kLongestPath));
}

FRmCreateDB::FRmCreateDB(Run& run, OpenDatabase open)
    : Window("FRmCreateDB", Tr("Create New Database")),
      FraFolder(*this, "FraFolder", -1, Tr("Folder for new database")),
      TxtFolder(*this, "TxtFolder"),
      CmdBrowse(*this, "CmdBrowse", -1, Tr("&Browse")),
      cmdaction(*this, "cmdaction", 3),
      run_(run),
      open_(std::move(open)) {
  TxtFolder.SetText(kDrive);
  CmdBrowse.Click = [this] { CmdBrowse_Click(); };
  constexpr const char* kCaptions[] = {Marked("&Create"), Marked("C&ancel"), Marked("&Help")};
  for (int i = 0; i < 3; ++i) cmdaction(i).SetCaption(Tr(kCaptions[i]));
  cmdaction(0).Click = [this] { Create(); };
  cmdaction(1).Click = [this] { Close(); };
  cmdaction(2).Click = [this] { ShowHelpPage(run_, 0); };
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
}

void FRmCreateDB::CmdBrowse_Click() {
  const std::string folder = BrowseForFolder(Tr("Create New Database - Location"), kDrive);
  if (!folder.empty()) TxtFolder.SetText(folder);
}

bool FRmCreateDB::HaveFolder(const std::string& folder) {
  if (FolderExists(folder)) return true;
  const auto answer = TheDesktop().MessageBox(Tr("folder does not exist, Create?"), Tr("Create Database"),
                                              BoxButtons::YesNo, BoxIcon::Question);
  if (answer != Answer::Yes) return false;
  MakeFolder(folder);
  return true;
}

void FRmCreateDB::Create() {
  const BusyWhile busy;
  std::string folder = WholePath(Trim(TxtFolder.Text()));
  if (folder.empty() || (folder.back() != '\\' && folder.back() != '/')) folder += '\\';
  const std::string before = run_.DataFolder, shared = run_.SharedDatabase;
  try {
    if (!HaveFolder(folder)) return;
    if (FileExists(folder + "tarvolinex.mdb")) {
      return run_.ShowError(
          Tr("A database already exists in this folder:\n\n%1\n\nPlease select another folder", {folder}));
    }
    CopyFile(run_.AppFolder + "\\database.bak", folder + "database.zip");
  } catch (const RuntimeError& failure) {
    return run_.ShowError(failure.Description());
  }
  run_.DataFolder = folder;
  run_.SharedDatabase.clear();
  bool askUser = false;
  if (!open_(askUser)) {
    run_.DataFolder = before;
    run_.SharedDatabase = shared;
    return run_.ShowError(
        Tr("Failed to create database in this folder:\n\n%1\n\nPlease select another folder", {folder}));
  }
  if (!shared.empty()) RememberSharedDatabase(run_.AppFolder, {false, RememberedSharedDatabase(run_.AppFolder).text});
  TheDesktop().MessageBox(Tr("New Database successfully created"), Tr("Database Creation"), BoxButtons::Ok,
                          BoxIcon::Information);
  Close();
}

}  // namespace tarvolinex
