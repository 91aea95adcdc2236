#include "system/InstalledList.h"

#include "system/Files.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

InstalledList ReadInstalledList(const std::wstring& folder) {
  InstalledList list;
  const std::wstring path = folder + L"\\" + kInstalledList;
  std::wstring text;
  if (!Exists(path) || !Decode(ReadWhole(path), kUtf8, text)) return list;
  for (const std::wstring& line : Lines(text)) {
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring::npos) continue;
    const std::wstring key = line.substr(0, equals), value = line.substr(equals + 1);
    if (key == L"Title") list.title = value;
    if (key == L"File" && IsPlainName(value)) list.files.push_back(value);
    if (key == L"Shortcut" && value.ends_with(L".lnk")) list.shortcuts.push_back(value);
  }
  return list;
}

std::string InstalledListText(const InstalledList& list) {
  std::wstring text = L"Title=" + list.title + L"\r\n";
  for (const std::wstring& file : list.files) text += L"File=" + file + L"\r\n";
  for (const std::wstring& shortcut : list.shortcuts) text += L"Shortcut=" + shortcut + L"\r\n";
  return ToUtf8(text);
}

bool Contains(const std::vector<std::wstring>& names, const std::wstring& name) {
  for (const std::wstring& each : names) {
    if (SameName(each, name)) return true;
  }
  return false;
}

}  // namespace tarvolinex::windows
