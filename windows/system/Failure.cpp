#include "system/Failure.h"

#include <windows.h>

#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

bool silent = false;

// Whole, also where it is taken in pieces. Without anyone who takes it there is nobody to tell.
void WriteError(std::string_view text) {
  const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
  DWORD written = 0;
  while (!text.empty() && WriteFile(errors, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
         written > 0) {
    text.remove_prefix(written);
  }
}

}  // namespace

void ThrowError(const wchar_t* doing, const std::wstring& path, unsigned long error) {
  wchar_t words[512] = L"";
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, words,
                                sizeof words / sizeof *words, nullptr);
  while (length > 0 && words[length - 1] <= L' ') --length;
  std::wstring message = doing;
  message += L" " + path + L": " + std::wstring(words, length) + L" (" + Decimal(error) + L")";
  throw Failure{message};
}

void ThrowLastError(const wchar_t* doing, const std::wstring& path) {
  ThrowError(doing, path, GetLastError());
}

void ReportSilently() {
  silent = true;
}

void ReportFailure(const std::wstring& title, const Failure& failure) {
  if (silent) {
    WriteError(ToUtf8(failure.message));
    WriteError("\r\n");
  } else {
    MessageBoxW(nullptr, failure.message.c_str(), title.c_str(), MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
  }
}

void EndProgram(const char* why) {
  if (!silent) FatalAppExitA(0, why);
  WriteError(why);
  WriteError("\r\n");
  ExitProcess(1);
}

}  // namespace tarvolinex::windows
