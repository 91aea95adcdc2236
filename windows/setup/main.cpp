#include <windows.h>
// After windows.h.
#include <objbase.h>

#include "setup/Desktop.h"
#include "setup/Installation.h"
#include "system/Failure.h"
#include "system/Files.h"
#include "system/InstalledList.h"
#include "system/OnlyOne.h"
#include "system/Process.h"
#include "system/Replacement.h"
#include "system/Shell.h"
#include "system/TemporaryFolder.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr unsigned long kStopped = 2;

struct SetupOptions {
  bool silent = false;     // /S
  bool uninstall = false;  // /uninstall
  std::wstring from;       // /from=FOLDER: the folder to remove, given to the copy that does it
};

SetupOptions ReadSetupOptions() {
  SetupOptions options;
  for (const std::wstring& argument : Arguments()) {
    if (SameName(argument, L"/S")) {
      options.silent = true;
      ReportSilently();
    } else if (SameName(argument, L"/uninstall")) {
      options.uninstall = true;
    } else if (StartsWithName(argument, L"/from=")) {
      options.from = argument.substr(6);
    } else {
      throw Failure{L"\"" + argument + L"\" is not understood. Known are /S (silent) and /uninstall."};
    }
  }
  return options;
}

bool Agreed(const std::wstring& title, const std::wstring& question) {
  return MessageBoxW(nullptr, question.c_str(), title.c_str(), MB_OKCANCEL | MB_ICONQUESTION | MB_SETFOREGROUND) ==
         IDOK;
}

void OpenInstalled(const std::wstring& page) {
  try {
    OpenFile(page);
  } catch (const Failure& failure) {
    throw Failure{failure.message + L"\n\nThe calculator is installed; its shortcut is on the desktop."};
  }
}

unsigned long InstallHere(bool silent) {
  const std::wstring path = BesideProgram(L"Setup.lst");
  const SetupList list = ReadSetupList(path);
  if (!silent && !Agreed(list.title, L"Install \"" + list.title +
                                         L"\" on this computer, for you alone?\n\nIt gets a "
                                         L"shortcut on the desktop and in the start menu.")) {
    return kStopped;
  }
  std::wstring page;
  {
    const OnlyOne only;
    page = Install(list, FolderOf(path));
  }
  if (!silent) OpenInstalled(page);
  return 0;
}

// A running program cannot be deleted, so a copy in the temporary folder does the work, and Windows deletes the copy
// when the last handle to it, which the copy inherits, is closed.
void StartRemoval(const std::wstring& folder, bool silent) {
  const std::wstring copy = TemporaryName(L".exe");
  if (!CopyFileW(ProgramPath().c_str(), copy.c_str(), TRUE)) ThrowLastError(L"Writing", copy);
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const HANDLE held = CreateFileW(copy.c_str(), GENERIC_READ | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, &inherited,
                                  OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (held == INVALID_HANDLE_VALUE) ThrowLastError(L"Reading", copy);
  Run(copy, L"/uninstall \"/from=" + folder + L"\"" + (silent ? L" /S" : L""), false);
  CloseHandle(held);
}

// Asks, and has a copy do the work.
unsigned long AskToRemove(const std::wstring& folder, bool silent) {
  std::wstring title;
  {
    const OnlyOne only;
    Recover(folder);
    title = InstalledTitle(folder);
  }
  if (!silent && !Agreed(title, L"Remove \"" + title + L"\" from this computer?")) return kStopped;
  StartRemoval(folder, silent);
  return 0;
}

unsigned long Remove(const SetupOptions& options) {
  if (options.from.empty()) return AskToRemove(FolderOf(ProgramPath()), options.silent);
  std::wstring title;
  {
    const OnlyOne only;
    Recover(options.from);
    title = InstalledTitle(options.from);
    Uninstall(options.from);
  }
  if (!options.silent) {
    MessageBoxW(nullptr, (L"\"" + title + L"\" was removed.").c_str(), title.c_str(), MB_OK | MB_ICONINFORMATION);
  }
  return 0;
}

unsigned long RunSetup(const SetupOptions& options) {
  // Opened by itself where it is installed, it is the uninstaller.
  const bool installed = Exists(BesideProgram(kInstalledList)) && !Exists(BesideProgram(L"Setup.lst"));
  return options.uninstall || installed ? Remove(options) : InstallHere(options.silent);
}

}  // namespace

}  // namespace tarvolinex::windows

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  using namespace tarvolinex::windows;
  GuardLibraries();
  try {
    const SetupOptions options = ReadSetupOptions();
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) throw Failure{L"Windows cannot write shortcuts."};
    return static_cast<int>(RunSetup(options));
  } catch (const Failure& failure) {
    ReportFailure(L"Setup", failure);
    return 1;
  }
}
