#include "system/Shell.h"

#include <shellapi.h>
#include <shlobj.h>

#include "system/Failure.h"
#include "system/Files.h"

namespace tarvolinex::windows {

std::wstring KnownFolder(const KNOWNFOLDERID& folder, const wchar_t* name) {
  wchar_t* path = nullptr;
  const HRESULT result = SHGetKnownFolderPath(folder, KF_FLAG_CREATE, nullptr, &path);
  const std::wstring found = SUCCEEDED(result) ? path : L"";
  CoTaskMemFree(path);
  if (found.empty()) ThrowError(L"Finding", name, static_cast<unsigned long>(result));
  return found;
}

std::wstring LocalDataFolder() {
  return KnownFolder(FOLDERID_LocalAppData, L"the folder of local application data");
}

std::wstring CalculatorsFolder() {
  return LocalDataFolder() + L"\\Tarvolinex";
}

void OpenFile(const std::wstring& path) {
  SHELLEXECUTEINFOW open = {};
  open.cbSize = sizeof open;
  open.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  open.lpFile = path.c_str();
  const std::wstring folder = FolderOf(path);
  open.lpDirectory = folder.c_str();
  open.nShow = SW_SHOWNORMAL;
  if (!ShellExecuteExW(&open)) ThrowLastError(L"Opening", path);
}

}  // namespace tarvolinex::windows
