// One mail message and its bytes on the wire.
#pragma once

#include <string>
#include <vector>

namespace tarvolinex {

struct MailAddress {
  std::string name;  // as shown; may be empty
  std::string address;
};

// "Ann Whitlock <ann@example.com>" or "ann@example.com".
MailAddress ParseMailAddress(const std::string& text);
// One "@" between two parts, and nothing that could end a header or a command: no blank, bracket or control character.
bool IsMailAddress(const std::string& address);

struct MailMessage {
  MailAddress from;
  std::vector<MailAddress> to;
  std::string subject;
  std::string text;            // UTF-8; any line ends
  std::string attachmentPath;  // empty = none
  std::string attachmentName;

  // The message by RFC 5322 and MIME, lines ended with carriage return and line feed. Control characters in a subject
  // or a name become blanks. Throws RuntimeError when the attachment cannot be read.
  std::string Bytes() const;
};

}  // namespace tarvolinex
