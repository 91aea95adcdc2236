// "Installed.lst": what an installation put on the machine, so that exactly that can be taken away or replaced.
#pragma once

#include <string>
#include <vector>

namespace tarvolinex::windows {

constexpr wchar_t kInstalledList[] = L"Installed.lst";

struct InstalledList {
  std::wstring title;
  std::vector<std::wstring> files;      // plain names, in the folder of the list; the list itself is not among them
  std::vector<std::wstring> shortcuts;  // full paths
};

// The list in the folder; an empty one when there is none. Entries that no installation would write are left out.
InstalledList ReadInstalledList(const std::wstring& folder);
// As the bytes of the file.
std::string InstalledListText(const InstalledList& list);

bool Contains(const std::vector<std::wstring>& names, const std::wstring& name);  // without regard to case

}  // namespace tarvolinex::windows
