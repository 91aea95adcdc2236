// What the tests need on the Windows side. helper hold FILE: keeps the file open, shared with nobody, and the desktop
// with its services alive, until its input ends. helper load NAME...: loads libraries as a careless program does.
// Otherwise, as the started "setup.exe": writes its path, its arguments and the names beside it to the file that the
// variable SEEN names, and ends with status 7.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

int Hold(const wchar_t* path) {
  GetDesktopWindow();
  const HANDLE file = CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  std::puts(file == INVALID_HANDLE_VALUE ? "failed" : "held");
  std::fflush(stdout);
  std::getchar();
  return 0;
}

int Report(int count, wchar_t** words) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring seen = std::wstring(path) + L"\n";
  for (int i = 1; i < count; ++i) seen += std::wstring(words[i]) + L" ";
  const std::wstring folder(path, std::wstring(path).find_last_of(L'\\'));
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  do seen += std::wstring(L"\n") + found.cFileName;
  while (FindNextFileW(search, &found));
  char bytes[8192];
  const int size = WideCharToMultiByte(CP_UTF8, 0, seen.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
  FILE* out = _wfopen(_wgetenv(L"SEEN"), L"wb");
  std::fwrite(bytes, 1, static_cast<std::size_t>(size - 1), out);
  std::fclose(out);
  return 7;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  if (count == 3 && std::wstring(words[1]) == L"hold") return Hold(words[2]);
  if (count < 3 || std::wstring(words[1]) != L"load") return Report(count, words);
  for (int i = 2; i < count; ++i) LoadLibraryW(words[i]);
  return 0;
}
