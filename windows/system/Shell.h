// The user's folders, and documents handed to the programs that the user has for them.
#pragma once

#include <windows.h>
// After windows.h.
#include <shtypes.h>

#include <string>

namespace tarvolinex::windows {

// Made when it is missing. `name` is for the message of a failure.
std::wstring KnownFolder(const KNOWNFOLDERID& folder, const wchar_t* name);
std::wstring LocalDataFolder();
// Below it, for calculators alone: whatever one is called, its folder is nobody else's.
std::wstring CalculatorsFolder();

// Opens a file with the program that the user has for it.
void OpenFile(const std::wstring& path);

}  // namespace tarvolinex::windows
