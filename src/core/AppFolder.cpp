#include "core/AppFolder.h"

#include <map>

#include "core/Globals.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tarvolinex {

namespace {

constexpr const char* kNeededFiles[] = {
    "Setup.lst", "Xcdsfx32.bin", "calculator\\setup.exe", "inst0.txt", "inst1.txt", "inst2.txt",
};
constexpr const char* kHelpFiles = "\\Help\\*.*";

void CopyIfMissing(const std::string& from, const std::string& to) {
  if (FileExists(from) && !FileExists(to)) CopyFile(from, to);
}

// Which content of each delivered file the program has put into the app folder: a file that is still like that follows
// a new version of the program, one that the user has changed stays.
class DeliveredFiles {
 public:
  DeliveredFiles() : before_(FileExists(Path()) ? ReadFile(Path()) : std::string()) {
    for (const std::string_view line : Split(before_, '\n')) {
      const auto blank = line.find(' ');
      if (blank != std::string_view::npos) known_[std::string(line.substr(blank + 1))] = line.substr(0, blank);
    }
  }
  // Returns true when the app folder's file was made or replaced.
  bool Bring(const std::string& name) {
    const std::string from = DeliveredFolder() + "\\" + name, to = AppFolder + "\\" + name;
    if (!FileExists(from)) return false;
    const std::string content = ReadFile(from), print = Fingerprint(content);
    const std::string present = FileExists(to) ? Fingerprint(ReadFile(to)) : std::string();
    if (present == print) known_[name] = print;
    const auto known = known_.find(name);
    const bool ours = present.empty() || (known != known_.end() && known->second == present);
    if (present == print || !ours) return false;
    WriteFile(to, content);
    known_[name] = print;
    return true;
  }
  void Remember() const {
    std::string text;
    for (const auto& [name, print] : known_) text += print + " " + name + "\n";
    if (text != before_) WriteFile(Path(), text);
  }

 private:
  static std::string Path() { return AppFolder + "\\Delivered.lst"; }
  std::string before_;
  std::map<std::string, std::string> known_;
};

}  // namespace

void ChooseAppFolder(std::string_view chosen) {
  const std::string program = ProgramFolder();
  // An installed program has its delivered files elsewhere, and root can write to its folder.
  const bool portable = FolderExists(program + "/delivered") && IsWritableFolder(program);
  AppFolder = !chosen.empty() ? WholePath(chosen) : portable ? program : UserDataFolder("tarvolinex");
  while (AppFolder.size() > 1 && (AppFolder.back() == '\\' || AppFolder.back() == '/')) AppFolder.pop_back();
  if (!FolderExists(AppFolder)) MakeFolder(AppFolder);
}

std::string DeliveredFolder() {
  const std::string program = ProgramFolder();
  const std::string beside = program + "/delivered";
  return FolderExists(beside) ? beside : program + "/../share/tarvolinex";
}

bool FillAppFolder() {
  const std::string delivered = DeliveredFolder();
  if (!FolderExists(CalculatorFolder())) MakeFolder(CalculatorFolder());
  DeliveredFiles files;
  const bool newTemplate = files.Bring("CalcTemplate.html");
  for (const char* name : kNeededFiles) files.Bring(name);
  for (const std::string& name : ListFiles(delivered + kHelpFiles)) {
    if (!FolderExists(AppFolder + "\\Help")) MakeFolder(AppFolder + "\\Help");
    files.Bring("Help\\" + name);
  }
  files.Remember();
  // A package beside a database would be unpacked over it.
  if (FileExists(AppFolder + "\\Tarvolinex.mdb")) return newTemplate;
  if (FileExists(DataFolder + "\\Tarvolinex.mdb")) {
    CopyIfMissing(delivered + "\\General.dat", AppFolder + "\\General.dat");
    CopyIfMissing(delivered + "\\Database.zip", AppFolder + "\\Database.Bak");
    return newTemplate;
  }
  CopyIfMissing(delivered + "\\General.dat", AppFolder + "\\General.dat");
  CopyIfMissing(delivered + "\\Database.zip", AppFolder + "\\Database.zip");
  return newTemplate;
}

}  // namespace tarvolinex
