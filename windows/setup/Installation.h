// Installs a calculator for the user, and removes it.
#pragma once

#include <string>

#include "setup/SetupList.h"

namespace tarvolinex::windows {

// The files that the list names, from `source`, into the user's folder named by the title; shortcuts to the page on the
// desktop and in the start menu; an entry among the installed apps. An older version is replaced whole or not at all;
// a failure names the file and leaves everything as it was. Returns the full path of the installed page.
std::wstring Install(const SetupList& list, const std::wstring& source);

// The title of what is installed in the folder; a folder without an installation is a failure.
std::wstring InstalledTitle(const std::wstring& folder);

// Removes what was installed in the folder: its files, its shortcuts and its entry. The user's own files stay, and
// with them the folder. A file that another program holds is a failure; then the removal can be started again.
// REQUIRES: InstalledTitle finds an installation there.
void Uninstall(const std::wstring& folder);

}  // namespace tarvolinex::windows
