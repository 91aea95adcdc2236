// What the tests need on the Windows side. helper hold FILE: keeps the file open, shared with nobody, and the desktop
// with its services alive, until its input ends. helper lock: holds up installations until then. helper press BUTTON
// TITLE: waits for a window, presses its button of that number and prints its text. helper fault: ends as the
// programs do when they meet a fault of their own. helper load NAME...: loads libraries as a careless program does.
// Otherwise, as the started "setup.exe": writes its path and its arguments to the file that the variable SEEN names,
// and ends with status 7.
#include <windows.h>

#include <cstdio>
#include <string>

#include "system/Failure.h"
#include "system/Text.h"

using namespace tarvolinex::windows;

namespace {

bool Hold(const wchar_t* path) {
  GetDesktopWindow();
  return CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr) != INVALID_HANDLE_VALUE;
}

bool Lock() {
  return WaitForSingleObject(CreateMutexW(nullptr, FALSE, L"Local\\TarvolinexSetup"), 0) == WAIT_OBJECT_0;
}

int KeepUntilInputEnds(bool held) {
  std::puts(held ? "held" : "failed");
  std::fflush(stdout);
  std::getchar();
  return 0;
}

int Press(WPARAM button, const wchar_t* title) {
  HWND box = nullptr;
  for (int tries = 0; tries < 300 && box == nullptr; ++tries) {
    Sleep(50);
    box = FindWindowW(nullptr, title);
  }
  wchar_t text[1024] = L"";
  GetDlgItemTextW(box, 0xFFFF, text, 1024);
  std::fputs(ToUtf8(text).c_str(), stdout);
  if (!PostMessageW(box, WM_COMMAND, button, 0)) return 1;
  for (int tries = 0; tries < 300 && IsWindow(box); ++tries) Sleep(50);
  return 0;
}

int Fault() {
  ReportSilently();
  return std::string().append(static_cast<std::size_t>(-1), 'x').empty();
}

int Report(int count, wchar_t** words) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring seen = std::wstring(path) + L"\n";
  for (int i = 1; i < count; ++i) seen += std::wstring(words[i]) + L" ";
  FILE* out = _wfopen(_wgetenv(L"SEEN"), L"wb");
  std::fputs(ToUtf8(seen).c_str(), out);
  std::fclose(out);
  return 7;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  const std::wstring word = count > 1 ? words[1] : L"";
  if (word == L"hold") return KeepUntilInputEnds(Hold(words[2]));
  if (word == L"lock") return KeepUntilInputEnds(Lock());
  if (word == L"press") return Press(static_cast<WPARAM>(words[2][0] - L'0'), words[3]);
  if (word == L"fault") return Fault();
  if (word != L"load") return Report(count, words);
  for (int i = 2; i < count; ++i) LoadLibraryW(words[i]);
  return 0;
}
