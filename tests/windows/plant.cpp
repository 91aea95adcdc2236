// A library that leaves a mark beside itself when it is loaded.
#include <windows.h>

#include <string>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(library, path, MAX_PATH);
  CloseHandle(
      CreateFileW((std::wstring(path) + L".loaded").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  return TRUE;
}
