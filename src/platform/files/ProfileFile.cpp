#include "platform/files/ProfileFile.h"

#include <optional>

#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

std::string_view Blankless(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// One line of the file: its text without the line end, and where it and the next line start.
struct Line {
  std::string_view text;
  std::size_t start, next;
};

std::optional<Line> NextLine(std::string_view bytes, std::size_t at) {
  if (at >= bytes.size()) return std::nullopt;
  const auto end = bytes.find_first_of("\r\n", at);
  if (end == std::string_view::npos) return Line{bytes.substr(at), at, bytes.size()};
  const bool pair = bytes.substr(end, 2) == "\r\n";
  return Line{bytes.substr(at, end - at), at, end + (pair ? 2 : 1)};
}

std::optional<std::string_view> SectionName(std::string_view line) {
  line = Blankless(line);
  if (line.empty() || line.front() != '[') return std::nullopt;
  const auto end = line.find(']');
  if (end == std::string_view::npos) return std::nullopt;
  return Blankless(line.substr(1, end - 1));
}

// Where the key's line stands, and where a new key of the section would go.
struct Place {
  bool sectionFound = false, keyFound = false;
  Line line{};
  std::string_view value;
  std::size_t insertAt = 0;
};

Place FindKey(std::string_view bytes, std::string_view section, std::string_view key) {
  Place place;
  for (auto line = NextLine(bytes, 0); line; line = NextLine(bytes, line->next)) {
    if (const auto name = SectionName(line->text)) {
      if (place.sectionFound) break;
      place.sectionFound = EqualNoCase(*name, section);
      place.insertAt = line->next;
      continue;
    }
    const std::string_view text = Blankless(line->text);
    if (!place.sectionFound || text.empty()) continue;
    place.insertAt = line->next;
    const auto equals = text.find('=');
    if (text.front() == ';' || equals == std::string_view::npos) continue;
    if (!EqualNoCase(Blankless(text.substr(0, equals)), key)) continue;
    place.keyFound = true;
    place.line = *line;
    place.value = Blankless(text.substr(equals + 1));
    break;
  }
  return place;
}

bool IsQuoted(std::string_view value) {
  return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
}

// A value that the code page cannot hold, such as a path with Polish letters, is stored as UTF-8 behind this mark.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string StoredText(std::string_view value) {
  const std::string bytes = ToWindows1252(value);
  if (FitsWindows1252(value) && !bytes.starts_with(kUtf8Mark)) return bytes;
  return std::string(kUtf8Mark) + std::string(value);
}

std::string TextOf(std::string_view stored) {
  return stored.starts_with(kUtf8Mark) ? DecodeText(stored.substr(kUtf8Mark.size()), "utf-8") : FromWindows1252(stored);
}

// Replaces or adds the key in the bytes of a file.
void SetValue(std::string& bytes, std::string_view section, std::string_view key, std::string_view value) {
  const std::string_view lineEnd = bytes.find('\n') != std::string::npos && bytes.find("\r\n") == std::string::npos
                                       ? std::string_view("\n")
                                       : std::string_view("\r\n");
  value = value.substr(0, value.find_first_of("\r\n"));
  std::string stored = StoredText(value);
  // Reading takes blanks and one pair of quotes away; a pair of our own keeps what the value has itself.
  if (IsQuoted(stored) || Blankless(stored) != stored) stored = "\"" + stored + "\"";

  const Place place = FindKey(bytes, ToWindows1252(section), ToWindows1252(key));
  if (place.keyFound) {
    const auto valueStart = static_cast<std::size_t>(place.line.text.find('=')) + place.line.start + 1;
    bytes.replace(valueStart, place.line.start + place.line.text.size() - valueStart, stored);
  } else {
    std::string added = ToWindows1252(key) + "=" + stored + std::string(lineEnd);
    std::size_t at = place.insertAt;
    if (!place.sectionFound) {
      added = "[" + ToWindows1252(section) + "]" + std::string(lineEnd) + added;
      at = bytes.size();
    }
    const bool openLine = at > 0 && bytes[at - 1] != '\n' && bytes[at - 1] != '\r';
    bytes.insert(at, openLine ? std::string(lineEnd) + added : added);
  }
}

}  // namespace

std::vector<std::string> GetProfileSections(std::string_view path) {
  std::vector<std::string> names;
  if (!FileExists(path)) return names;
  const std::string bytes = ReadFile(path);
  for (auto line = NextLine(bytes, 0); line; line = NextLine(bytes, line->next)) {
    if (const auto name = SectionName(line->text)) names.push_back(FromWindows1252(*name));
  }
  return names;
}

void RemoveProfileSection(std::string_view path, std::string_view section) {
  if (!FileExists(path)) return;
  std::string bytes = ReadFile(path);
  const std::string searched = ToWindows1252(section);
  std::optional<std::size_t> start;
  std::size_t end = bytes.size();
  for (auto line = NextLine(bytes, 0); line; line = NextLine(bytes, line->next)) {
    const auto name = SectionName(line->text);
    if (!name) continue;
    if (start) {
      end = line->start;
      break;
    }
    if (EqualNoCase(*name, searched)) start = line->start;
  }
  if (!start) return;
  bytes.erase(*start, end - *start);
  WriteFile(path, bytes);
}

std::string GetProfileString(std::string_view path, std::string_view section, std::string_view key,
                             std::string_view defaultValue, int buffer) {
  std::string value(Blankless(defaultValue));
  if (FileExists(path)) {
    const std::string bytes = ReadFile(path);
    const Place place = FindKey(bytes, ToWindows1252(section), ToWindows1252(key));
    if (place.keyFound) {
      std::string_view found = place.value;
      if (IsQuoted(found)) found = found.substr(1, found.size() - 2);
      value = TextOf(found);
    }
  }
  return std::string(FirstCharacters(value, buffer - 1));
}

void WriteProfileString(std::string_view path, std::string_view section, std::string_view key, std::string_view value) {
  WriteProfileStrings(path, section, {{std::string(key), std::string(value)}});
}

void WriteProfileStrings(std::string_view path, std::string_view section, const std::vector<ProfileEntry>& entries) {
  std::string bytes = FileExists(path) ? ReadFile(path) : std::string();
  for (const auto& [key, value] : entries) SetValue(bytes, section, key, value);
  WriteFile(path, bytes);
}

}  // namespace tarvolinex
