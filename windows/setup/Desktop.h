// Where the user's things lie, shortcuts to them, and the list of installed apps.
#pragma once

#include <string>

namespace tarvolinex::windows {

std::wstring DesktopFolder();
std::wstring StartMenuFolder();

struct Shortcut {
  std::wstring path;    // of the shortcut itself, "....lnk"; one that exists is replaced
  std::wstring target;  // what it opens
  std::wstring icon;    // the file with its icon
};
// REQUIRES: COM is ready on this thread.
void WriteShortcut(const Shortcut& shortcut);

struct InstalledApp {
  std::wstring key;  // its name in the list, kept from version to version
  std::wstring title, publisher, folder, icon;
  std::wstring uninstall;  // the full path of the program that removes it
  unsigned long kilobytes = 0;
};
void Register(const InstalledApp& app);  // for this user; an older entry is replaced
void Unregister(const std::wstring& key);

}  // namespace tarvolinex::windows
