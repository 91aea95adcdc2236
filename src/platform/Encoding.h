// Text in the character sets that pages are written in, and bytes as text.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex {

// UTF-8 text written in a character set by its registered name ("utf-8", "iso-8859-2"; case-blind). A character that
// the set lacks becomes a numeric character reference ("&#8364;"), as pages write it. A set that the machine does not
// know is taken for Windows-1252.
std::string EncodeForPage(std::string_view utf8, std::string_view charset);

// The reverse; bytes that mean nothing in the set become U+FFFD (Windows-1252 has none of these).
std::string DecodeText(std::string_view bytes, std::string_view charset);

// SHA-256 in hexadecimal digits: tells whether bytes are the same as others were.
std::string Fingerprint(std::string_view bytes);

// RFC 4648, with padding, without line ends.
std::string Base64(std::string_view bytes);

}  // namespace tarvolinex
