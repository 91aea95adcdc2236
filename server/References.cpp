#include "server/References.h"

#include <crypt.h>
#include <sys/random.h>

#include <array>
#include <charconv>
#include <memory>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Parsing.h"
#include "server/WholeText.h"

namespace tarvolinex::server {

namespace {

// The next word of the line, which is taken off it.
std::string_view Word(std::string_view& line) {
  line = Trim(line);
  const std::string_view word = line.substr(0, line.find(' '));
  line.remove_prefix(word.size());
  return word;
}

std::int64_t Number(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

std::string Random(std::size_t size) {
  std::string bytes(size, '\0');
  if (::getrandom(bytes.data(), size, 0) != static_cast<ssize_t>(size)) {
    throw RuntimeError(kDeviceError, "This machine gives no random numbers");
  }
  return bytes;
}

std::string Crypted(const std::string& secret, const std::string& setting) {
  const auto data = std::make_unique<crypt_data>();
  const char* hash = ::crypt_r(secret.c_str(), setting.c_str(), data.get());
  return hash && *hash != '*' ? hash : "";
}

}  // namespace

std::vector<Reference> ReadReferences(const std::string& path) {
  std::vector<Reference> references;
  if (!FileExists(path)) return references;
  const std::string text = ReplaceAll(ReplaceAll(ReadFile(path), "\r", ""), "\t", " ");
  for (std::string_view line : Split(text, '\n')) {
    const auto reference = ReadReference(Word(line));
    Reference read;
    read.hash = Word(line);
    read.megabytes = Number(Word(line));
    read.hourly = Number(Word(line));
    read.organisation = Trim(line);
    if (!reference || read.megabytes < 0 || read.hourly < 0 || read.organisation.empty()) continue;
    read.reference = *reference;
    references.push_back(read);
  }
  return references;
}

void WriteReferences(const std::string& path, const std::vector<Reference>& references) {
  std::string text = "# REFERENCE HASH MEGABYTES UPLOADS-AN-HOUR ORGANISATION; changed by tarvolinex-server.\n";
  for (const Reference& each : references) {
    text += each.reference + " " + each.hash + " " + std::to_string(each.megabytes) + " " +
            std::to_string(each.hourly) + " " + each.organisation + "\n";
  }
  WriteWholeText(path, text);
}

std::optional<Reference> FindReference(const std::vector<Reference>& references, const std::string& reference) {
  for (const Reference& each : references) {
    if (each.reference == reference) return each;
  }
  return std::nullopt;
}

std::string RandomName() {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz234567";  // 5 bits each
  constexpr std::size_t kLength = 26;
  std::string name = Random(kLength);
  for (char& c : name) c = kLetters[static_cast<unsigned char>(c) % kLetters.size()];
  return name;
}

// The secrets are made here, of 130 random bits: nobody finds one by trying, however quickly a hash is made. Hashes of
// other kinds that crypt(5) knows stay valid.
std::string HashOf(const std::string& secret) {
  return Crypted(secret, "$sha1$4$" + RandomName().substr(0, 16) + "$");
}

bool IsSecret(const std::string& secret, const std::string& hash) {
  const std::string made = Crypted(secret, hash);
  bool same = !made.empty() && made.size() == hash.size();
  for (std::size_t i = 0; i < made.size() && i < hash.size(); ++i) same = (made[i] == hash[i]) & same;
  return same;
}

}  // namespace tarvolinex::server
