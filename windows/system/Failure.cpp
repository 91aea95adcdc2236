#include "system/Failure.h"

#include <windows.h>

#include "system/Text.h"

namespace tarvolinex::windows {

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

void ReportFailure(const std::wstring& title, const Failure& failure, bool silent) {
  if (!silent) {
    MessageBoxW(nullptr, failure.message.c_str(), title.c_str(), MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
    return;
  }
  const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
  if (errors == nullptr || errors == INVALID_HANDLE_VALUE) return;
  const std::string line = ToUtf8(failure.message) + "\r\n";
  DWORD written = 0;
  WriteFile(errors, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

}  // namespace tarvolinex::windows
