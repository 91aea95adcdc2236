// What the programs keep in the user's temporary folder while they run. Every failure throws a Failure.
#pragma once

#include <string>

namespace tarvolinex::windows {

// A new folder in the user's temporary folder that nobody but the user can enter.
std::wstring MakeTemporaryFolder();
// A path in the user's temporary folder where nothing stands yet.
std::wstring TemporaryName(const wchar_t* extension);

}  // namespace tarvolinex::windows
