#include "setup/Desktop.h"

#include <windows.h>
// After windows.h.
#include <shellapi.h>
#include <shlobj.h>

#include "system/Failure.h"
#include "system/Files.h"
#include "system/Shell.h"

namespace tarvolinex::windows {

namespace {

constexpr wchar_t kApps[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";

template <typename Interface>
class Held {
 public:
  Held() = default;
  ~Held() {
    if (held != nullptr) held->Release();
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  Interface* held = nullptr;
};

class Key {
 public:
  explicit Key(const std::wstring& path) : path_(L"HKEY_CURRENT_USER\\" + path) {
    Check(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_, nullptr));
  }
  ~Key() { RegCloseKey(key_); }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  void Set(const wchar_t* name, const std::wstring& text) {
    Check(RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
  }
  void Set(const wchar_t* name, DWORD number) {
    Check(RegSetValueExW(key_, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number));
  }

 private:
  void Check(LSTATUS status) const {
    if (status != ERROR_SUCCESS) ThrowError(L"Writing the registry key", path_, static_cast<unsigned long>(status));
  }
  std::wstring path_;
  HKEY key_ = nullptr;
};

}  // namespace

std::wstring DesktopFolder() {
  return KnownFolder(FOLDERID_Desktop, L"the desktop's folder");
}
std::wstring StartMenuFolder() {
  return KnownFolder(FOLDERID_Programs, L"the start menu's folder");
}

void WriteShortcut(const Shortcut& shortcut) {
  Held<IShellLinkW> link;
  Held<IPersistFile> file;
  HRESULT result = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                    reinterpret_cast<void**>(&link.held));
  if (SUCCEEDED(result)) result = link.held->SetPath(shortcut.target.c_str());
  if (SUCCEEDED(result)) result = link.held->SetWorkingDirectory(FolderOf(shortcut.target).c_str());
  if (SUCCEEDED(result)) result = link.held->SetIconLocation(shortcut.icon.c_str(), 0);
  if (SUCCEEDED(result)) result = link.held->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file.held));
  if (SUCCEEDED(result)) result = file.held->Save(shortcut.path.c_str(), TRUE);
  if (FAILED(result)) ThrowError(L"Writing the shortcut", shortcut.path, static_cast<unsigned long>(result));
}

void Register(const InstalledApp& app) {
  Key key(kApps + app.key);
  key.Set(L"DisplayName", app.title);
  key.Set(L"Publisher", app.publisher);
  key.Set(L"DisplayIcon", app.icon);
  key.Set(L"InstallLocation", app.folder);
  key.Set(L"UninstallString", L"\"" + app.uninstall + L"\" /uninstall");
  key.Set(L"QuietUninstallString", L"\"" + app.uninstall + L"\" /uninstall /S");
  key.Set(L"EstimatedSize", app.kilobytes);
  key.Set(L"NoModify", 1);
  key.Set(L"NoRepair", 1);
}

void Unregister(const std::wstring& key) {
  RegDeleteKeyW(HKEY_CURRENT_USER, (kApps + key).c_str());
}

}  // namespace tarvolinex::windows
