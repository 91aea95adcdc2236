// The one road of failures in the Windows programs: whoever started the work catches it and reports it.
#pragma once

#include <string>

namespace tarvolinex::windows {

struct Failure {
  std::wstring message;  // what was being done, with the file at fault; for people to read
};

// Throws a Failure with the system's own words for the last error: "Writing C:\...\calc.html: Access denied. (5)".
[[noreturn]] void ThrowLastError(const wchar_t* doing, const std::wstring& path);
[[noreturn]] void ThrowError(const wchar_t* doing, const std::wstring& path, unsigned long error);

// Tells the user: in a message box, or on the standard error handle when the program is silent.
void ReportFailure(const std::wstring& title, const Failure& failure, bool silent);

}  // namespace tarvolinex::windows
