#include "core/ProgramFiles.h"

#include <set>
#include <utility>
#include <vector>

#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr const char* kNeededFiles[] = {
    "Setup.lst", "Xcdsfx32.bin", "calculator\\setup.exe", "inst0.txt", "inst1.txt", "inst2.txt", "QuoteSheet.html",
};
constexpr const char* kList = "Delivered.lst";
constexpr const char* kHelpFiles = "\\Help\\*.*";

void CopyIfMissing(const std::string& from, const std::string& to) {
  if (FileExists(from) && !FileExists(to)) CopyFile(from, to);
}

// Which content of each delivered file the program has put into the app folder: a file that is still like that follows
// a new version of the program, one that the user has changed stays. The list names what is coming before it comes, so
// that a start that is cut off takes none of it for the user's.
class DeliveredFiles {
 public:
  explicit DeliveredFiles(std::string appFolder)
      : appFolder_(std::move(appFolder)), listed_(FileExists(Path()) ? ReadFile(Path()) : std::string()) {
    for (const std::string_view line : Split(listed_, '\n')) {
      const auto blank = line.find(' ');
      if (blank != std::string_view::npos) known_.emplace(line.substr(blank + 1), line.substr(0, blank));
    }
  }
  // Returns true when the app folder's file is to be made or replaced.
  bool Want(const std::string& name) {
    const std::string from = DeliveredFolder() + "\\" + name, to = appFolder_ + "\\" + name;
    if (!FileExists(from)) return false;
    std::string content = ReadFile(from);
    const std::string print = Fingerprint(content);
    const std::string present = FileExists(to) ? PrintOf(ReadFile(to), content, print) : std::string();
    if (present == print) Settle(name, print);
    if (present == print || (!present.empty() && !known_.contains({name, present}))) return false;
    known_.emplace(name, print);
    wanted_.push_back({name, print, std::move(content)});
    return true;
  }
  void Bring() {
    Remember();
    for (const Wanted& file : wanted_) {
      WriteFile(appFolder_ + "\\" + file.name, file.content);
      Settle(file.name, file.print);
    }
    Remember();
  }

 private:
  struct Wanted {
    std::string name, print, content;
  };
  std::string Path() const { return appFolder_ + "\\" + kList; }
  // Mostly they are the same, and comparing is quicker.
  static std::string PrintOf(const std::string& there, const std::string& content, const std::string& print) {
    return there == content ? print : Fingerprint(there);
  }
  void Settle(const std::string& name, const std::string& print) {
    std::erase_if(known_, [&](const auto& entry) { return entry.first == name; });
    known_.emplace(name, print);
  }
  void Remember() {
    std::string text;
    for (const auto& [name, print] : known_) text += print + " " + name + "\n";
    if (text == listed_) return;
    WriteFile(Path(), text);
    listed_ = text;
  }
  std::string appFolder_, listed_;
  std::set<std::pair<std::string, std::string>> known_;  // name and print
  std::vector<Wanted> wanted_;
};

std::vector<std::string> WrittenFolders(const Folders& in) {
  std::vector<std::string> folders = {in.app, in.calculator, in.app + "\\Help"};
  for (const char* name : {"", "\\Forms", "\\logo", "\\icons", "\\Backup"}) folders.push_back(in.data + name);
  return folders;
}

}  // namespace

std::string ChooseAppFolder(std::string_view chosen) {
  const std::string program = ProgramFolder();
  // An installed program has its delivered files elsewhere, and root can write to its folder.
  const bool portable = FolderExists(program + "/delivered") && IsWritableFolder(program);
  std::string folder = !chosen.empty() ? WholePath(chosen) : portable ? program : UserDataFolder("tarvolinex");
  while (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
  if (!FolderExists(folder)) MakeFolder(folder);
  return folder;
}

std::string DeliveredFolder() {
  const std::string program = ProgramFolder();
  const std::string beside = program + "/delivered";
  return FolderExists(beside) ? beside : program + "/../share/tarvolinex";
}

bool FillAppFolder(const Folders& folders, std::string_view only) {
  const std::string delivered = DeliveredFolder();
  if (!only.empty() && FileExists(folders.app + "\\" + kList)) {
    DeliveredFiles files(folders.app);
    if (files.Want(std::string(only))) files.Bring();
    return false;
  }
  if (!FolderExists(folders.calculator)) MakeFolder(folders.calculator);
  DeliveredFiles files(folders.app);
  const bool newTemplate = files.Want("CalcTemplate.html");
  for (const char* name : kNeededFiles) files.Want(name);
  for (const std::string& name : ListFiles(delivered + kHelpFiles)) {
    if (!FolderExists(folders.app + "\\Help")) MakeFolder(folders.app + "\\Help");
    files.Want("Help\\" + name);
  }
  files.Bring();
  for (const std::string& written : WrittenFolders(folders)) RemoveUnfinished(written);
  if (FileExists(folders.app + "\\Tarvolinex.mdb")) return newTemplate;
  CopyIfMissing(delivered + "\\General.dat", folders.app + "\\General.dat");
  // For new databases. The package itself comes when its database is opened here, and to no other folder: beside a
  // database it would be unpacked over it.
  if (UpperCase(folders.data) != UpperCase(folders.app)) {
    CopyIfMissing(delivered + "\\Database.zip", folders.app + "\\Database.Bak");
  }
  return newTemplate;
}

}  // namespace tarvolinex
