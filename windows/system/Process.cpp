#include "system/Process.h"

#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include "system/Failure.h"
#include "system/Files.h"

namespace tarvolinex::windows {

void GuardLibraries() {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetDllDirectoryW(L"");
}

void LoadSystemLibrary(const wchar_t* name) {
  if (!LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) ThrowLastError(L"Loading", name);
}

std::wstring ProgramPath() {
  std::wstring path(32768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  if (length == 0 || length >= path.size()) ThrowLastError(L"Finding", L"this program");
  path.resize(length);
  return path;
}

std::wstring BesideProgram(const std::wstring& name) {
  return FolderOf(ProgramPath()) + L"\\" + name;
}

std::vector<std::wstring> Arguments() {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> arguments;
  for (int i = 1; i < count; ++i) arguments.emplace_back(words[i]);
  LocalFree(words);
  return arguments;
}

unsigned long Run(const std::wstring& path, const std::wstring& arguments, bool wait) {
  std::wstring line = L"\"" + path + L"\" " + arguments;
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) {
    ThrowLastError(L"Starting", path);
  }
  CloseHandle(process.hThread);
  DWORD status = 0;
  if (wait) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
  }
  CloseHandle(process.hProcess);
  return status;
}

}  // namespace tarvolinex::windows
