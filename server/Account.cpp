#include "server/Account.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdio>

#include "server/WholeText.h"

namespace tarvolinex::server {

namespace {

constexpr std::size_t kNumber = 19;  // digits
constexpr std::size_t kLine = 2 * kNumber + 2;
constexpr std::string_view kHead = "received-and-room-of-each-upload-since\n\n";
static_assert(kHead.size() == kLine);  // so that a line that was cut short shows by the file's length

std::string LineOf(const Record& record) {
  std::array<char, kLine + 1> line = {};
  std::snprintf(line.data(), line.size(), "%019lld %019lld\n",
                static_cast<long long>(record.received.time_since_epoch().count()),
                static_cast<long long>(record.ended.empty() ? record.room : 0));
  return line.data();
}

std::optional<std::int64_t> WholeNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<Usage> Account::Read(Moment now) const {
  const auto text = ReadWholeText(path_);
  if (!text || !text->starts_with(kHead) || text->size() % kLine != 0) return std::nullopt;
  Usage usage;
  for (std::string_view lines = std::string_view(*text).substr(kLine); !lines.empty(); lines.remove_prefix(kLine)) {
    const auto received = WholeNumber(lines.substr(0, kNumber)), room = WholeNumber(lines.substr(kNumber + 1, kNumber));
    if (!received || !room) return std::nullopt;
    usage.Add(Moment(std::chrono::seconds(*received)), *room, now);
  }
  return usage;
}

void Account::Begin(const std::vector<Record>& records) const {
  std::string lines(kHead);
  for (const Record& record : records) lines += LineOf(record);
  Write(lines, O_CREAT | O_TRUNC);
}

void Account::Add(const Record& record) const {
  Write(LineOf(record), O_APPEND);
}

void Account::Forget() const {
  ::unlink(path_.c_str());
}

void Account::Write(const std::string& lines, int mode) const {
  const int handle = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | mode, 0600);
  const bool written = handle >= 0 && ::write(handle, lines.data(), lines.size()) == static_cast<ssize_t>(lines.size());
  if (handle >= 0) ::close(handle);
  if (!written) Forget();
}

}  // namespace tarvolinex::server
