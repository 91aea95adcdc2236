// What comes in a request, taken apart. Every reader takes any bytes.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex::server {

// The one file of an upload; views into the body.
struct UploadedFile {
  std::string_view name;  // as the sender wrote it, often a whole path of the sender's machine
  std::string_view bytes;
};

// The body of "multipart/form-data" with one part, "FILE1"; the boundary may stand behind a comma instead of a
// semicolon. The file reaches to the closing boundary at the end of the body, whatever it holds: it is not searched for
// boundaries. Throws Refusal.
UploadedFile ReadUploadBody(std::string_view contentType, std::string_view body);

// "a=1&b=two%20words" by name, in lower case; of a name that comes twice the first counts. Blanks, "+" and bytes that
// are no text are taken as they come.
std::map<std::string, std::string> ReadQuery(std::string_view query);

// RFC 4648 with padding; nullopt for anything else.
std::optional<std::string> FromBase64(std::string_view text);

struct Credentials {
  std::string user, secret;
};
// Of an "Authorization: Basic" header; nullopt for anything else.
std::optional<Credentials> ReadAuthorization(std::string_view header);

// A customer reference without leading zeros; nullopt for what is not a whole number of at most 18 digits.
std::optional<std::string> ReadReference(std::string_view text);

// The identifier in the name of an uploaded file ("C:\...\CalcInstall_000123879712345.exe"): its digits.
std::optional<std::string> IdentifierOf(std::string_view fileName);
bool IsIdentifier(std::string_view text);

// Whether the identifier is the reference, in six or more digits, with the seconds since 1999 of a moment that is at
// most two days away from now: clocks differ, and so do time zones.
bool IsOf(std::string_view identifier, std::string_view reference, std::chrono::system_clock::time_point now);

// The references that an identifier can begin with, the likelier one first.
std::vector<std::string> ReferencesIn(std::string_view identifier);

}  // namespace tarvolinex::server
