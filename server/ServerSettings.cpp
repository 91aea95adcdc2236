#include "server/ServerSettings.h"

#include <charconv>
#include <cstdlib>
#include <map>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"

namespace tarvolinex::server {

namespace {

constexpr const char* kPath = "/etc/tarvolinex-server/server.conf";

bool ReadNumber(std::string_view text, std::int64_t& number) {
  constexpr std::int64_t kLargest = 1'000'000;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number > 0 && number <= kLargest;
}

}  // namespace

ServerSettings ReadServerSettings() {
  ServerSettings settings;
  const std::map<std::string, std::string*> texts = {{"data", &settings.data},
                                                     {"references", &settings.references},
                                                     {"version", &settings.version},
                                                     {"log", &settings.log},
                                                     {"known", &settings.known}};
  const std::map<std::string, std::pair<std::int64_t*, std::int64_t>> numbers = {
      {"days", {&settings.days, 1}},
      {"largest", {&settings.largest, 1 << 20}},
      {"unpacked", {&settings.unpacked, 1 << 20}},
      {"keep-free", {&settings.keepFree, 1 << 20}}};
  const char* named = std::getenv("TARVOLINEX_SERVER_CONF");
  const std::string path = named && *named ? named : kPath;
  if (!FileExists(path)) return settings;
  const std::string text = ReplaceAll(ReplaceAll(ReadFile(path), "\r", ""), "\t", " ");
  for (const std::string_view whole : Split(text, '\n')) {
    const std::string_view line = Trim(whole.substr(0, whole.find('#')));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    const std::string key(Trim(line.substr(0, equals)));
    const std::string value(equals == std::string::npos ? "" : Trim(line.substr(equals + 1)));
    const auto number = numbers.find(key);
    if (const auto found = texts.find(key); found != texts.end() && !value.empty()) {
      *found->second = value;
    } else if (number != numbers.end() && ReadNumber(value, *number->second.first)) {
      *number->second.first *= number->second.second;
    } else {
      throw RuntimeError(kDeviceError, path + ": this line is not understood: " + std::string(line));
    }
  }
  return settings;
}

}  // namespace tarvolinex::server
