// The running program, its arguments, and the programs that it starts.
#pragma once

#include <string>
#include <vector>

namespace tarvolinex::windows {

// Libraries that are loaded from now on come from the system's folder and from nowhere else: neither the program's own
// folder nor the current one is searched. Comes first in the program; all but the innermost two are loaded later.
void GuardLibraries();
// Loads a library of the system's folder.
void LoadSystemLibrary(const wchar_t* name);

std::wstring ProgramPath();
std::vector<std::wstring> Arguments();
// A file beside the program.
std::wstring BesideProgram(const std::wstring& name);

// Starts the program of that full path. `arguments` follow its name on the command line.
// With `wait` its exit status is returned, else 0. Handles that may be inherited are.
unsigned long Run(const std::wstring& path, const std::wstring& arguments, bool wait);

}  // namespace tarvolinex::windows
