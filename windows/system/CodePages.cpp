// What only the system knows of texts: its code pages and how it compares names.
#include <windows.h>

#include "system/Text.h"

namespace tarvolinex::windows {

bool Decode(std::string_view bytes, unsigned code_page, std::wstring& text) {
  text.clear();
  if (bytes.empty()) return true;
  const DWORD strict = code_page == kUtf8 ? MB_ERR_INVALID_CHARS : 0;
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(code_page, strict, bytes.data(), size, nullptr, 0);
  if (length <= 0) return false;
  text.resize(static_cast<std::size_t>(length));
  MultiByteToWideChar(code_page, strict, bytes.data(), size, text.data(), length);
  return true;
}

std::string ToUtf8(const std::wstring& text) {
  const int size = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

bool SameName(const std::wstring& a, const std::wstring& b) {
  return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
         CSTR_EQUAL;
}

}  // namespace tarvolinex::windows
