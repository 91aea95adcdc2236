// The pages that readers of a mail see. Each is UTF-8, holds no script, and its only style is allowed by a number that
// is made for this one answer.
#pragma once

#include <string>
#include <string_view>

#include "server/Store.h"

namespace tarvolinex::server {

// Of the calculator page's five languages the one that the reader's browser asks for first, else English: its place.
std::size_t LanguageOf(std::string_view acceptLanguage);

struct Reader {
  std::size_t language = 0;
  std::string nonce;  // for the page's style
};

// "Open the calculator" and "Install on Windows", in the calculator's colours.
std::string LinkPage(const Record& record, const Reader& reader);

enum class NoLink { Unknown, Expired, Withdrawn, TooMany };
std::string NoLinkPage(NoLink why, const Reader& reader);

// What a newest version is compared with. Empty texts: nothing is known of it.
struct Versions {
  std::string used, newest, address;
};
std::string VersionPage(const Versions& versions, const Reader& reader);
// By the numbers between the dots.
bool IsNewer(std::string_view version, std::string_view than);

}  // namespace tarvolinex::server
