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

// From now on reports go to the standard error handle alone; before, to a message box.
void ReportSilently();
void ReportFailure(const std::wstring& title, const Failure& failure);

// Reports what nothing can be done about, without asking for memory, and ends the program with status 1.
[[noreturn]] void EndProgram(const char* why);

}  // namespace tarvolinex::windows
