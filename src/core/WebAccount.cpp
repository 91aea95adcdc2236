#include "core/WebAccount.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// The length of "http://" or "https://" at the beginning, 0 without.
std::size_t SchemeLength(std::string_view server) {
  for (const std::string_view scheme : {"https://", "http://"}) {
    if (EqualNoCase(server.substr(0, scheme.size()), scheme)) return scheme.size();
  }
  return 0;
}

}  // namespace

std::string WebAddress(std::string_view server) {
  return (SchemeLength(server) > 0 ? "" : "http://") + std::string(server);
}

std::string HostOf(std::string_view server) {
  server.remove_prefix(SchemeLength(server));
  return std::string(server.substr(0, server.find_first_of(":/\\")));
}

std::string WithoutSecret(std::string_view www, std::string& secret) {
  const std::size_t begin = SchemeLength(www);
  const std::string_view name = www.substr(begin, www.find_first_of("/\\?#", begin) - begin);
  const std::size_t at = name.rfind('@');
  if (at == std::string_view::npos) return std::string(www);
  const std::size_t colon = name.substr(0, at).find(':');
  if (colon != std::string_view::npos) secret = name.substr(colon + 1, at - colon - 1);
  return std::string(www.substr(0, begin)) + std::string(www.substr(begin + at + 1));
}

bool NamesServer(const WebAccount& account) {
  const std::string host = HostOf(account.server);
  return !host.empty() && !EndsWithNoCase(host, ".example");
}

}  // namespace tarvolinex
