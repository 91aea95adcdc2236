#include "publish/PageText.h"

#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF", kUtf16Little = "\xFF\xFE", kUtf16Big = "\xFE\xFF";
constexpr std::string_view kLineEnd = "\r\n";

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// Lines end with a carriage return, a line feed or both.
void AppendLines(std::string_view text, std::string& out) {
  while (!text.empty()) {
    const auto end = text.find_first_of(kLineEnd);
    out += kLineEnd;
    out += text.substr(0, end);
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + (text.substr(end, kLineEnd.size()) == kLineEnd ? 2 : 1));
  }
}

}  // namespace

std::string PageCharset(std::string_view page) {
  constexpr std::size_t kWhereDeclared = 1024;
  if (StartsWith(page, kUtf8Mark)) return "utf-8";
  const std::string head = FoldCase(page.substr(0, kWhereDeclared));
  const auto at = head.find("charset=");
  if (at == std::string::npos) return "windows-1252";
  const auto start = head.find_first_not_of("\"' ", at + std::string_view("charset=").size());
  if (start == std::string::npos) return "windows-1252";
  const std::string name = head.substr(start, head.find_first_of("\"' ;>/", start) - start);
  // A page that could be read up to here is not in UTF-16, nor in any set that writes tags in another way.
  if (StartsWith(name, "utf-16")) return "utf-8";
  constexpr std::string_view kTag = "<a href=\"1\">";
  return EncodeForPage(kTag, name) == kTag ? name : "windows-1252";
}

std::string ReadPage(std::string_view path) {
  std::string bytes = ReadFile(path);
  if (StartsWith(bytes, kUtf16Little) || StartsWith(bytes, kUtf16Big)) {
    const bool little = StartsWith(bytes, kUtf16Little);
    bytes = std::string(kUtf8Mark) + DecodeText(bytes.substr(2), little ? "utf-16le" : "utf-16be");
  }
  std::string_view text = bytes;
  std::string page;
  if (StartsWith(text, kUtf8Mark)) {
    page = kUtf8Mark;
    text.remove_prefix(kUtf8Mark.size());
  }
  AppendLines(text, page);
  return page;
}

std::string ReadPageText(std::string_view path) {
  const std::string page = ReadPage(path);
  const std::string text = DecodeText(page, PageCharset(page));
  return StartsWith(text, kUtf8Mark) ? text.substr(kUtf8Mark.size()) : text;
}

std::string PageTitle(std::string_view text) {
  constexpr std::string_view kOpen = "<title>", kClose = "</title>";
  const std::string folded = FoldCase(text);
  const std::string_view search = folded;
  for (auto open = search.find(kOpen); open != std::string_view::npos; open = search.find(kOpen, open + 1)) {
    const auto start = open + kOpen.size();
    const auto close = search.find(kClose, start);
    if (close == std::string_view::npos) return {};
    if (search.find_first_of("\r\n", start) > close) return std::string(text.substr(start, close - start));
  }
  return {};
}

std::string PageBytes(std::string_view page) {
  return std::string(page) + std::string(kLineEnd);
}

void WritePage(std::string_view path, std::string_view page) {
  WriteFile(path, PageBytes(page));
}

}  // namespace tarvolinex
