#include "system/Names.h"

#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr std::size_t kLongestTitle = 60;
constexpr std::size_t kLongestName = 200;  // leaves room for the folder

bool IsDeviceName(const std::wstring& name) {
  // Only what stands before the first dot counts, and blanks before the dot do not: "nul .txt" is the device too.
  const std::wstring stem = Trimmed(name.substr(0, name.find(L'.')));
  for (const wchar_t* device : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$", L"CLOCK$"}) {
    if (SameName(stem, device)) return true;
  }
  constexpr std::wstring_view kNumbers = L"0123456789\u00B9\u00B2\u00B3";
  return stem.size() == 4 && (StartsWithName(stem, L"COM") || StartsWithName(stem, L"LPT")) &&
         kNumbers.find(stem[3]) != std::wstring_view::npos;
}

}  // namespace

bool IsPlainName(const std::wstring& name) {
  if (name.empty() || name.size() > kLongestName || name.back() == L'.' || name.back() == L' ') return false;
  for (const wchar_t c : name) {
    if (c < L' ' || std::wstring_view(L"<>:\"/\\|?*").find(c) != std::wstring_view::npos) return false;
  }
  return !IsDeviceName(name);
}

std::wstring FolderNameFor(const std::wstring& title) {
  std::wstring name = title.substr(0, kLongestTitle);
  for (wchar_t& c : name) {
    if (!IsPlainName(std::wstring(1, c) + L"x")) c = L'_';
  }
  while (!name.empty() && (name.back() == L'.' || name.back() == L' ')) name.pop_back();
  return IsPlainName(name) ? name : L"_" + name;
}

}  // namespace tarvolinex::windows
