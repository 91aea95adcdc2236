#include "server/Parsing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/text/Text.h"
#include "server/Refusal.h"

namespace tarvolinex::server {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestReference = 18, kFewestReferenceDigits = 6;
constexpr std::size_t kSecondsDigits = 9, kSecondsDigitsFrom2030 = 10;

bool IsDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string Lower(std::string_view text) {
  std::string low(text);
  for (char& c : low) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  return low;
}

// What stands behind `mark` (which is compared in any case) up to one of the characters of `end`.
std::optional<std::string_view> After(std::string_view text, std::string_view mark, std::string_view end) {
  const std::size_t at = Lower(text).find(mark);
  if (at == std::string::npos) return std::nullopt;
  text.remove_prefix(at + mark.size());
  return text.substr(0, text.find_first_of(end));
}

std::string_view BoundaryOf(std::string_view contentType) {
  constexpr std::size_t kLongest = 70;
  if (!Lower(contentType).starts_with("multipart/form-data")) throw Refusal{"The request holds no file."};
  const auto boundary = After(contentType, "boundary=", ";, ");
  if (!boundary || boundary->empty() || boundary->size() > kLongest) {
    throw Refusal{"The request does not say where its parts end."};
  }
  return *boundary;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char low = static_cast<char>(c | 0x20);
  return low >= 'a' && low <= 'f' ? low - 'a' + 10 : -1;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    if (low >= 0) {
      plain += static_cast<char>(high * 16 + low);
      i += 2;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

std::string Padded(std::string_view reference) {
  const std::size_t zeros = kFewestReferenceDigits - std::min(kFewestReferenceDigits, reference.size());
  return std::string(zeros, '0') + std::string(reference);
}

}  // namespace

UploadedFile ReadUploadBody(std::string_view contentType, std::string_view body) {
  constexpr std::size_t kLongestHeaders = 8192;
  const Refusal odd{"The request is not one file, as the program sends it."};
  const std::string boundary = "--" + std::string(BoundaryOf(contentType));
  if (!body.starts_with(boundary + "\r\n")) throw odd;
  body.remove_prefix(boundary.size());
  const std::string end = "\r\n" + boundary + "--";
  if (body.ends_with(kLineEnd)) body.remove_suffix(kLineEnd.size());
  if (!body.ends_with(end)) throw Refusal{"The file did not arrive whole."};
  body.remove_suffix(end.size());
  const std::size_t headers = body.find("\r\n\r\n");
  if (headers == std::string::npos || headers > kLongestHeaders) throw odd;
  const std::string_view head = body.substr(0, headers);
  const auto field = After(head, " name=\"", "\""), name = After(head, "filename=\"", "\"");
  if (!field || Lower(*field) != "file1" || !name) throw odd;
  return {*name, body.substr(headers + 2 * kLineEnd.size())};
}

std::map<std::string, std::string> ReadQuery(std::string_view query) {
  std::map<std::string, std::string> values;
  for (const std::string_view part : Split(query, '&')) {
    const std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    values.emplace(Lower(part.substr(0, equals)), Unescaped(part.substr(equals + 1)));
  }
  return values;
}

std::optional<std::string> FromBase64(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with("=") ? 1 : 0;
  std::string bytes;
  std::uint32_t group = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pad = i + padding >= text.size();
    const std::size_t digit = pad ? 0 : kDigits.find(text[i]);
    if (digit == std::string::npos) return std::nullopt;
    group = group << 6 | static_cast<std::uint32_t>(digit);
    if (i % 4 != 3) continue;
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(group >> shift & 0xFF);
    group = 0;
  }
  bytes.resize(bytes.size() - padding);
  return bytes;
}

std::optional<Credentials> ReadAuthorization(std::string_view header) {
  constexpr std::string_view kBasic = "basic ";
  if (!Lower(header.substr(0, kBasic.size())).starts_with(kBasic)) return std::nullopt;
  const auto plain = FromBase64(Trim(header.substr(kBasic.size())));
  const std::size_t colon = plain ? plain->find(':') : std::string::npos;
  if (colon == std::string::npos) return std::nullopt;
  return Credentials{plain->substr(0, colon), plain->substr(colon + 1)};
}

std::optional<std::string> ReadReference(std::string_view text) {
  text = Trim(text);
  if (!IsDigits(text)) return std::nullopt;
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size() - 1));
  if (text.size() > kLongestReference) return std::nullopt;
  return std::string(text);
}

bool IsIdentifier(std::string_view text) {
  return IsDigits(text) && text.size() >= kFewestReferenceDigits + kSecondsDigits &&
         text.size() <= kLongestReference + kSecondsDigitsFrom2030;
}

std::optional<std::string> IdentifierOf(std::string_view fileName) {
  constexpr std::string_view kBefore = "calcinstall_", kAfter = ".exe";
  const std::size_t separator = fileName.find_last_of("\\/");
  const std::string name = Lower(separator == std::string::npos ? fileName : fileName.substr(separator + 1));
  if (!name.starts_with(kBefore) || !name.ends_with(kAfter) || name.size() <= kBefore.size() + kAfter.size()) {
    return std::nullopt;
  }
  std::string digits = name.substr(kBefore.size(), name.size() - kBefore.size() - kAfter.size());
  return IsIdentifier(digits) ? std::optional(digits) : std::nullopt;
}

bool IsOf(std::string_view identifier, std::string_view reference, std::chrono::system_clock::time_point now) {
  using std::chrono::sys_days, std::chrono::year;
  const std::string begin = Padded(reference);
  if (!IsIdentifier(identifier) || !identifier.starts_with(begin)) return false;
  identifier.remove_prefix(begin.size());
  std::int64_t seconds = 0;
  const auto [end, error] = std::from_chars(identifier.data(), identifier.data() + identifier.size(), seconds);
  if (error != std::errc() || identifier.front() == '0' || identifier.size() > kSecondsDigitsFrom2030) return false;
  const auto moment = sys_days(year(1999) / 1 / 1) + std::chrono::seconds(seconds);
  return std::chrono::abs(std::chrono::floor<std::chrono::seconds>(now) - moment) <= std::chrono::days(2);
}

std::vector<std::string> ReferencesIn(std::string_view identifier) {
  std::vector<std::string> references;
  for (const std::size_t digits : {kSecondsDigits, kSecondsDigitsFrom2030}) {
    if (!IsIdentifier(identifier) || identifier.size() < kFewestReferenceDigits + digits) continue;
    if (const auto reference = ReadReference(identifier.substr(0, identifier.size() - digits))) {
      references.push_back(*reference);
    }
  }
  return references;
}

}  // namespace tarvolinex::server
