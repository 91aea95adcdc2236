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

// A text from outside (a server's, another program's) as it may be shown, on a terminal too: UTF-8 with line feeds and
// tabs, without other control characters and without marks that turn the direction of writing. What is longer than
// `most` bytes ends with "...".
std::string Readable(std::string_view bytes, std::size_t most = std::string_view::npos);

// SHA-256 in hexadecimal digits: tells whether bytes are the same as others were.
std::string Fingerprint(std::string_view bytes);

// RFC 4648, with padding, without line ends.
std::string Base64(std::string_view bytes);
std::string FromBase64(std::string_view text);  // what is no such letter is passed over

}  // namespace tarvolinex
