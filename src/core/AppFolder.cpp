#include "core/AppFolder.h"

#include "core/Globals.h"
#include "platform/Files.h"

namespace tarvolinex {

namespace {

constexpr const char* kNeededFiles[] = {
    "CalcTemplate.html", "Setup.lst", "Xcdsfx32.bin", "calculator\\setup.exe", "inst0.txt", "inst1.txt", "inst2.txt",
};
constexpr const char* kHelpFiles = "\\Help\\*.*";

void CopyIfMissing(const std::string& from, const std::string& to) {
  if (FileExists(from) && !FileExists(to)) CopyFile(from, to);
}

}  // namespace

void ChooseAppFolder(std::string_view chosen) {
  const std::string program = ProgramFolder();
  // An installed program has its delivered files elsewhere, and root can write to its folder.
  const bool portable = FolderExists(program + "/delivered") && IsWritableFolder(program);
  AppFolder = !chosen.empty() ? std::string(chosen) : portable ? program : UserDataFolder("tarvolinex");
  while (AppFolder.size() > 1 && (AppFolder.back() == '\\' || AppFolder.back() == '/')) AppFolder.pop_back();
  if (!FolderExists(AppFolder)) MakeFolder(AppFolder);
}

std::string DeliveredFolder() {
  const std::string program = ProgramFolder();
  const std::string beside = program + "/delivered";
  return FolderExists(beside) ? beside : program + "/../share/tarvolinex";
}

bool FillAppFolder() {
  const bool hadTemplate = FileExists(AppFolder + "\\CalcTemplate.html");
  const std::string delivered = DeliveredFolder();
  if (!FolderExists(CalculatorFolder())) MakeFolder(CalculatorFolder());
  for (const char* name : kNeededFiles) {
    CopyIfMissing(delivered + "\\" + name, AppFolder + "\\" + name);
  }
  for (const std::string& name : ListFiles(delivered + kHelpFiles)) {
    if (!FolderExists(AppFolder + "\\Help")) MakeFolder(AppFolder + "\\Help");
    CopyIfMissing(delivered + "\\Help\\" + name, AppFolder + "\\Help\\" + name);
  }
  // A package beside a database would be unpacked over it.
  for (const std::string& folder : {DataFolder, AppFolder}) {
    if (FileExists(folder + "\\Tarvolinex.mdb")) return !hadTemplate;
  }
  CopyIfMissing(delivered + "\\General.dat", AppFolder + "\\General.dat");
  CopyIfMissing(delivered + "\\Database.zip", AppFolder + "\\Database.zip");
  return !hadTemplate;
}

}  // namespace tarvolinex
