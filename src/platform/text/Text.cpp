#include "platform/text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvolinex {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Code points of the bytes 0x80 to 0x9F; the five that the code page leaves open stand for themselves.
constexpr std::array<std::uint16_t, 32> kHighHalf = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                     0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

void AppendUtf8(std::string& out, std::uint32_t code) {
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
}

// Reads one code point and moves past it. A byte that starts nothing valid is taken for itself.
std::uint32_t NextCodePoint(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at++);
  const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
  if (more == 0 || at + static_cast<std::size_t>(more) > text.size()) return lead;
  std::uint32_t code = lead & (0x3Fu >> more);
  for (int i = 0; i < more; ++i) {
    const unsigned char next = byte(at + static_cast<std::size_t>(i));
    if ((next & 0xC0) != 0x80) return lead;
    code = (code << 6) | (next & 0x3F);
  }
  at += static_cast<std::size_t>(more);
  return code;
}

std::uint32_t Lower(std::uint32_t code) {
  if (code >= 'A' && code <= 'Z') return code + 32;
  if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return code + 32;
  if (code == 0x160 || code == 0x152 || code == 0x17D) return code + 1;
  return code == 0x178 ? 0xFF : code;
}

std::uint32_t Upper(std::uint32_t code) {
  if (code >= 'a' && code <= 'z') return code - 32;
  if (code >= 0xE0 && code <= 0xFE && code != 0xF7) return code - 32;
  if (code == 0x161 || code == 0x153 || code == 0x17E) return code - 1;
  return code == 0xFF ? 0x178 : code;
}

template <typename Change>
std::string MapCodePoints(std::string_view text, Change change) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80) {
      out += static_cast<char>(change(lead));
      ++i;
    } else if (lead < 0xC2 || lead >= 0xF0) {
      out += text[i++];  // beyond the letters that have a case here
    } else {
      AppendUtf8(out, change(NextCodePoint(text, i)));
    }
  }
  return out;
}

std::string Replace(std::string_view text, std::string_view searched, std::string_view from, std::string_view to) {
  std::string out;
  std::size_t start = 0;
  for (std::size_t at; (at = searched.find(from, start)) != std::string_view::npos; start = at + from.size()) {
    out.append(text, start, at - start);
    out += to;
  }
  out.append(text, start);
  return out;
}

// Length of the number's digits and separators at `at`; the digits go to `digits`.
std::size_t ScanInteger(std::string_view text, std::size_t at, std::string& digits) {
  std::size_t end = at;
  while (end < text.size() && IsDigit(text[end])) ++end;
  digits.append(text, at, end - at);
  if (end == at || end - at > 3 || text[at] == '0') return end;
  const auto digit = [&](std::size_t i) { return i < text.size() && IsDigit(text[i]); };
  while (end < text.size() && text[end] == ',' && digit(end + 1) && digit(end + 2) && digit(end + 3) &&
         !digit(end + 4)) {
    digits.append(text, end + 1, 3);
    end += 4;
  }
  return end;
}

// Scans a decimal number at the start of the text; `number` receives it without separators.
std::size_t ScanNumber(std::string_view text, std::string& number) {
  std::size_t at = 0;
  number.clear();
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
    if (text[at] == '-') number += '-';
    ++at;
  }
  const std::size_t sign = number.size();
  at = ScanInteger(text, at, number);
  std::size_t digits = number.size() - sign;
  if (at < text.size() && text[at] == '.') {
    std::size_t end = at + 1;
    while (end < text.size() && IsDigit(text[end])) ++end;
    if (digits + (end - at - 1) > 0) {
      if (digits == 0) number += '0';
      number.append(text, at, end - at);
      digits += end - at - 1;
      at = end;
    }
  }
  if (digits == 0) {
    number.clear();
    return 0;
  }
  return at;
}

std::string_view TrimWhite(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string FoldCase(std::string_view text) {
  return MapCodePoints(text, Lower);
}

std::string UpperCase(std::string_view text) {
  return MapCodePoints(text, Upper);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return CompareNoCase(a, b) == 0;
}

int CompareNoCase(std::string_view a, std::string_view b) {
  const auto simple = [](unsigned char c) -> unsigned char {
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c;
  };
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if (x >= 0x80 || y >= 0x80) {
      const int order = FoldCase(a).compare(FoldCase(b));
      return order < 0 ? -1 : order > 0 ? 1 : 0;
    }
    if (simple(x) != simple(y)) return simple(x) < simple(y) ? -1 : 1;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

bool EndsWithNoCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

std::vector<std::size_t> OrderOf(const std::vector<std::string>& texts, bool ascending) {
  // The first bytes decide most comparisons without a look at the text.
  struct Place {
    std::uint64_t start;
    std::size_t index;
  };
  std::vector<Place> places;
  places.reserve(texts.size());
  for (const std::string& text : texts) {
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < sizeof start; ++i) {
      start = start << 8U | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    }
    places.push_back({start, places.size()});
  }
  const auto before = [&](const Place& a, const Place& b) {
    return a.start != b.start ? a.start < b.start : texts[a.index] < texts[b.index];
  };
  std::stable_sort(places.begin(), places.end(),
                   [&](const Place& a, const Place& b) { return ascending ? before(a, b) : before(b, a); });
  std::vector<std::size_t> order;
  order.reserve(places.size());
  for (const Place& place : places) order.push_back(place.index);
  return order;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  return from.empty() ? std::string(text) : Replace(text, text, from, to);
}

std::string ReplaceAllNoCase(std::string_view text, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(text);
  // ASCII folding keeps every byte's position, which the replacement relies on.
  const auto fold = [](std::string_view s) {
    std::string out(s);
    for (char& c : out) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return out;
  };
  return Replace(text, fold(text), fold(from), to);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  for (std::size_t at; (at = text.find(separator, start)) != std::string_view::npos; start = at + 1) {
    parts.push_back(text.substr(start, at - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::string_view FirstCharacters(std::string_view text, int n) {
  std::size_t at = 0;
  for (int i = 0; i < n && at < text.size(); ++i) NextCodePoint(text, at);
  return text.substr(0, at);
}

double LeadingNumber(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  std::string number;
  ScanNumber(text, number);
  double value = 0;
  std::from_chars(number.data(), number.data() + number.size(), value);
  return value;
}

std::optional<std::string_view> ExactNumberText(std::string_view text, std::string& buffer) {
  text = TrimWhite(text);
  // The common case, plain digits with a point, needs no copy.
  const bool plain =
      !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return IsDigit(c) || c == '.'; });
  if (plain && IsDigit(text.front()) && IsDigit(text.back()) && std::count(text.begin(), text.end(), '.') <= 1) {
    return text;
  }
  if (text.empty() || ScanNumber(text, buffer) != text.size()) return std::nullopt;
  return buffer;
}

std::string WithThousands(std::string_view number) {
  std::string text(number);
  if (text.find_first_not_of("-.0123456789") != std::string::npos) return text;
  const std::size_t first = text.find_first_not_of('-'), end = std::min(text.find('.'), text.size());
  for (std::size_t at = end; first != std::string::npos && at > first + 3;) text.insert(at -= 3, ",");
  return text;
}

std::string FormatFixed(double value, int decimals) {
  if (!std::isfinite(value)) value = 0;
  std::array<char, 400> shortest;
  const auto end =
      std::to_chars(shortest.data(), shortest.data() + shortest.size(), std::fabs(value), std::chars_format::fixed).ptr;
  std::string text(shortest.data(), end);
  std::size_t point = text.find('.');
  if (point == std::string::npos) {
    point = text.size();
    text += '.';
  }
  const std::size_t kept = point + 1 + static_cast<std::size_t>(decimals);
  const bool up = text.size() > kept && text[kept] >= '5';
  text.resize(kept, '0');
  for (std::size_t i = kept; up;) {
    if (i == 0) {
      text.insert(text.begin(), '1');
      break;
    }
    if (text[--i] == '.') continue;
    if (text[i] != '9') {
      ++text[i];
      break;
    }
    text[i] = '0';
  }
  if (decimals == 0) text.pop_back();
  const bool zero = text.find_first_not_of("0.") == std::string::npos;
  return value < 0 && !zero ? "-" + text : text;
}

std::string FormatSingle(float value) {
  std::array<char, 128> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
  return {text.data(), end};
}

std::string ToWindows1252(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const std::uint32_t code = NextCodePoint(utf8, i);
    const auto high = std::find(kHighHalf.begin(), kHighHalf.end(), code);
    if (high != kHighHalf.end()) {
      bytes += static_cast<char>(0x80 + (high - kHighHalf.begin()));
    } else {
      bytes += code < 0x80 || (code >= 0xA0 && code <= 0xFF) ? static_cast<char>(code) : '?';
    }
  }
  return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(utf8, byte >= 0x80 && byte < 0xA0 ? kHighHalf[byte - 0x80u] : byte);
  }
  return utf8;
}

bool FitsWindows1252(std::string_view utf8) {
  return FromWindows1252(ToWindows1252(utf8)) == utf8;
}

}  // namespace tarvolinex
