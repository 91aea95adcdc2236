#include "setup/Installation.h"

#include <windows.h>

#include "setup/Desktop.h"
#include "system/Failure.h"
#include "system/Files.h"
#include "system/InstalledList.h"
#include "system/Names.h"
#include "system/Owner.h"
#include "system/Replacement.h"
#include "system/Shell.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr wchar_t kPage[] = L"calc.html", kIcon[] = L"calc.ico", kProgram[] = L"setup.exe";

std::wstring AppKey(const std::wstring& folder) {
  return L"Tarvolinex " + NameOf(folder);
}

// The listed files that are there, by the names that they really have.
std::vector<std::wstring> PresentFiles(const SetupList& list, const std::wstring& source) {
  const std::vector<std::wstring> present = FileNames(source);
  std::vector<std::wstring> files;
  for (const ListedFile& file : list.files) {
    bool found = false;
    for (const std::wstring& name : present) {
      if (SameName(name, file.name)) {
        files.push_back(name);
        found = true;
      }
    }
    if (!found && !file.optional) {
      throw Failure{L"\"" + file.name + L"\" is missing in " + source + L". Nothing was installed."};
    }
  }
  for (const wchar_t* needed : {kPage, kProgram}) {
    if (!Contains(files, needed)) throw Failure{L"\"" + std::wstring(needed) + L"\" is not in the set-up list."};
  }
  return files;
}

// The shortcut of the older version when there is one in that folder; else a name that nothing else has.
std::wstring ShortcutPath(const std::wstring& folder, const std::wstring& name, const InstalledList& old) {
  for (const std::wstring& shortcut : old.shortcuts) {
    if (SameName(FolderOf(shortcut), folder)) return shortcut;
  }
  std::wstring path = folder + L"\\" + name + L".lnk";
  for (unsigned i = 2; Exists(path); ++i) path = folder + L"\\" + name + L" (" + Decimal(i) + L").lnk";
  return path;
}

unsigned long Kilobytes(const std::wstring& folder, const std::vector<std::wstring>& files) {
  std::uint64_t bytes = 0;
  for (const std::wstring& name : files) bytes += InputFile(folder + L"\\" + name).Size();
  return static_cast<unsigned long>((bytes + 1023) / 1024);
}

// Shortcuts and entry. What was not there before goes away again when a step fails.
void Announce(const InstalledList& list, const InstalledList& old, const InstalledApp& app, const std::wstring& page) {
  try {
    for (const std::wstring& shortcut : list.shortcuts) WriteShortcut({shortcut, page, app.icon});
    Register(app);
  } catch (const Failure&) {
    for (const std::wstring& shortcut : list.shortcuts) {
      if (!Contains(old.shortcuts, shortcut)) DeleteFileW(shortcut.c_str());
    }
    if (old.files.empty()) Unregister(app.key);
    throw;
  }
}

// The same calculator where the first versions of this program put it: among other programs' folders, so that one
// called "Temp" shared that one.
class Former {
 public:
  Former(const std::wstring& name, const std::wstring& company) : folder_(LocalDataFolder() + L"\\" + name) {
    if (SameName(CompanyOf(folder_), company)) list_ = ReadInstalledList(folder_);
  }
  const InstalledList& List() const { return list_; }
  // Its shortcuts lead to the new one now. What cannot be deleted stays.
  void Remove() const {
    if (list_.files.empty()) return;
    for (const std::wstring& file : list_.files) DeleteFileW((folder_ + L"\\" + file).c_str());
    DeleteFileW((folder_ + L"\\" + kInstalledList).c_str());
    RemoveDirectoryW(folder_.c_str());
  }

 private:
  std::wstring folder_;
  InstalledList list_;
};

}  // namespace

std::wstring Install(const SetupList& list, const std::wstring& source) {
  const std::wstring title = OwnTitle(list.title, source), name = FolderNameFor(title), company = CompanyOf(source),
                     folder = CalculatorsFolder() + L"\\" + name;
  const std::vector<std::wstring> files = PresentFiles(list, source);
  Replacement replacement(folder);
  const Former former(name, company);
  const InstalledList& old = replacement.Old().files.empty() ? former.List() : replacement.Old();
  for (const std::wstring& file : files) replacement.Add(source + L"\\" + file);

  InstalledList installed;
  installed.title = title;
  for (const std::wstring& place : {DesktopFolder(), StartMenuFolder()}) {
    installed.shortcuts.push_back(ShortcutPath(place, name, old));
  }
  InstalledApp app;
  app.key = AppKey(folder);
  app.title = title;
  app.publisher = company.empty() ? L"Tarvolinex" : company;
  app.folder = folder;
  app.uninstall = folder + L"\\" + kProgram;
  app.icon = Contains(files, kIcon) ? folder + L"\\" + kIcon : app.uninstall;
  app.kilobytes = Kilobytes(source, files);

  replacement.Exchange(installed);
  Announce(installed, old, app, folder + L"\\" + kPage);
  replacement.Commit();
  former.Remove();
  return folder + L"\\" + kPage;
}

std::wstring InstalledTitle(const std::wstring& folder) {
  const InstalledList list = ReadInstalledList(folder);
  if (list.files.empty()) throw Failure{L"Nothing is installed in " + folder + L"."};
  return list.title;
}

void Uninstall(const std::wstring& folder) {
  const InstalledList list = ReadInstalledList(folder);
  // The program and the list go last, so that a removal that met a held file can be started again.
  for (const std::wstring& file : list.files) {
    if (!SameName(file, kProgram)) Delete(folder + L"\\" + file, 3);
  }
  for (const std::wstring& shortcut : list.shortcuts) Delete(shortcut, 3);
  // The one that started this may still be on its way out.
  Delete(folder + L"\\" + kProgram, 10);
  // Not before: while the program is there, the entry is how the user starts it again.
  Unregister(AppKey(folder));
  Delete(folder + L"\\" + kInstalledList);
  RemoveDirectoryW(folder.c_str());
  RemoveDirectoryW(FolderOf(folder).c_str());  // when it was the only one
}

}  // namespace tarvolinex::windows
