// Names of files and folders that Windows takes.
#pragma once

#include <string>

namespace tarvolinex::windows {

// True for a name that stands for one ordinary file of a folder: no folder part, drive or stream, no name that Windows
// keeps for a device (with or without an extension), no end that Windows would drop (a dot or a blank).
bool IsPlainName(const std::wstring& name);

// A title as the name of a folder or a shortcut: what Windows does not take is replaced by "_".
std::wstring FolderNameFor(const std::wstring& title);

}  // namespace tarvolinex::windows
