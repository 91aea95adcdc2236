#include "system/Text.h"

namespace tarvolinex::windows {

std::wstring Decimal(unsigned long long number) {
  std::wstring digits;
  do {
    digits.insert(digits.begin(), static_cast<wchar_t>(L'0' + number % 10));
    number /= 10;
  } while (number > 0);
  return digits;
}

std::vector<std::wstring> Lines(const std::wstring& text) {
  std::vector<std::wstring> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find(L'\n', start) == std::wstring::npos ? text.size() : text.find(L'\n', start);
    std::wstring line = text.substr(start, end - start);
    if (!line.empty() && line.back() == L'\r') line.pop_back();
    lines.push_back(line);
    start = end + 1;
  }
  return lines;
}

std::wstring Trimmed(const std::wstring& text) {
  std::size_t first = 0, last = text.size();
  while (first < last && (text[first] == L' ' || text[first] == L'\t')) ++first;
  while (last > first && (text[last - 1] == L' ' || text[last - 1] == L'\t')) --last;
  return text.substr(first, last - first);
}

std::wstring Squeezed(const std::wstring& text) {
  std::wstring squeezed;
  for (const wchar_t c : Trimmed(text)) {
    if (c != L' ' || squeezed.back() != L' ') squeezed += c;
  }
  return squeezed;
}

bool StartsWithName(const std::wstring& text, const std::wstring& start) {
  return text.size() >= start.size() && SameName(text.substr(0, start.size()), start);
}

}  // namespace tarvolinex::windows
