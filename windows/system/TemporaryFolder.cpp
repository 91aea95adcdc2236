#include "system/TemporaryFolder.h"

#include <windows.h>
// After windows.h.
#include <ntsecapi.h>
#include <sddl.h>

#include "system/Failure.h"

namespace tarvolinex::windows {

namespace {

std::wstring TemporaryRoot() {
  wchar_t path[MAX_PATH + 2] = L"";
  const DWORD length = GetTempPathW(MAX_PATH + 1, path);
  if (length == 0 || length > MAX_PATH) ThrowLastError(L"Finding", L"the temporary folder");
  return path;
}

std::wstring RandomLetters() {
  unsigned char bytes[16] = {};
  if (!RtlGenRandom(bytes, sizeof bytes)) throw Failure{L"Windows gave no random numbers for a temporary name."};
  std::wstring letters;
  for (const unsigned char byte : bytes) letters += static_cast<wchar_t>(L'a' + byte % 26);
  return letters;
}

// Access for the user and the system, for nobody else, and for what is made inside as well.
std::wstring OwnersOnly() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) ThrowLastError(L"Asking for", L"the user");
  alignas(TOKEN_USER) unsigned char user[256] = {};
  DWORD length = 0;
  const BOOL known = GetTokenInformation(token, TokenUser, user, sizeof user, &length);
  CloseHandle(token);
  wchar_t* identifier = nullptr;
  if (!known || !ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user)->User.Sid, &identifier)) {
    ThrowLastError(L"Asking for", L"the user");
  }
  const std::wstring rights = L"D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;" + std::wstring(identifier) + L")";
  LocalFree(identifier);
  return rights;
}

}  // namespace

std::wstring TemporaryName(const wchar_t* extension) {
  return TemporaryRoot() + L"tarvolinex-" + RandomLetters() + extension;
}

std::wstring MakeTemporaryFolder() {
  const std::wstring path = TemporaryName(L"");
  SECURITY_ATTRIBUTES security = {sizeof security, nullptr, FALSE};
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(OwnersOnly().c_str(), SDDL_REVISION_1,
                                                            &security.lpSecurityDescriptor, nullptr)) {
    ThrowLastError(L"Making the folder", path);
  }
  // Fails when the folder exists, so it is always a new one.
  const BOOL made = CreateDirectoryW(path.c_str(), &security);
  const DWORD error = GetLastError();
  LocalFree(security.lpSecurityDescriptor);
  if (!made) ThrowError(L"Making the folder", path, error);
  return path;
}

}  // namespace tarvolinex::windows
