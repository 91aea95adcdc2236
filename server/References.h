// Who may upload: a text file with a line for each customer reference,
//   REFERENCE HASH MEGABYTES UPLOADS ORGANISATION
// separated by blanks. HASH is the secret's, by crypt(3): the secret itself stands nowhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvolinex::server {

struct Reference {
  std::string reference;  // without leading zeros
  std::string hash;
  std::int64_t megabytes = 500;  // that its install files may take up here
  std::int64_t hourly = 60;      // uploads in an hour
  std::string organisation;      // UTF-8
};

// Lines that nobody understands are left out. A file that is missing holds none; one that cannot be read throws
// RuntimeError.
std::vector<Reference> ReadReferences(const std::string& path);
// Whole or not at all, and readable for whom it was before. Throws RuntimeError.
void WriteReferences(const std::string& path, const std::vector<Reference>& references);

std::optional<Reference> FindReference(const std::vector<Reference>& references, const std::string& reference);

// 26 letters and digits nobody can guess, as a secret or as an address.
std::string RandomName();
std::string HashOf(const std::string& secret);
inline constexpr const char* kNobodysHash = "$sha1$4$nobodynobodynobo$";  // takes as long as theirs; no secret's
// Takes as long whatever is wrong.
bool IsSecret(const std::string& secret, const std::string& hash);

}  // namespace tarvolinex::server
