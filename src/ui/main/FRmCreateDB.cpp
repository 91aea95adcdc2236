#include "ui/main/FRmCreateDB.h"

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DatabaseFile.h"

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

FRmCreateDB::FRmCreateDB()
    : Window("FRmCreateDB", Tr("Create New Database")),
      FraFolder(*this, "FraFolder", -1, Tr("Folder for new database")),
      TxtFolder(*this, "TxtFolder"),
      CmdBrowse(*this, "CmdBrowse", -1, Tr("&Browse")),
      cmdaction(*this, "cmdaction", 3) {
  TxtFolder.SetText(kDrive);
  CmdBrowse.Click = [this] { CmdBrowse_Click(); };
  constexpr const char* kCaptions[] = {Marked("&Create"), Marked("C&ancel"), Marked("&Help")};
  for (int i = 0; i < 3; ++i) cmdaction(i).SetCaption(Tr(kCaptions[i]));
  cmdaction(0).Click = [this] { Create(); };
  cmdaction(1).Click = [this] { Close(); };
  cmdaction(2).Click = [] { ShowHelpPage(0); };
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
  const std::string before = DataFolder;
  try {
    if (!HaveFolder(folder)) return;
    if (FileExists(folder + "tarvolinex.mdb")) {
      return ShowError(Tr("A database already exists in this folder:\n\n%1\n\nPlease select another folder", {folder}));
    }
    CopyFile(AppFolder + "\\database.bak", folder + "database.zip");
  } catch (const RuntimeError& failure) {
    return ShowError(failure.Description());
  }
  DataFolder = folder;
  bool askUser = false;
  if (!OpenDatabase(askUser)) {
    DataFolder = before;
    return ShowError(Tr("Failed to create database in this folder:\n\n%1\n\nPlease select another folder", {folder}));
  }
  TheDesktop().MessageBox(Tr("New Database successfully created"), Tr("Database Creation"), BoxButtons::Ok,
                          BoxIcon::Information);
  Close();
}

}  // namespace tarvolinex
