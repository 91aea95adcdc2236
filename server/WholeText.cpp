#include "server/WholeText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex::server {

namespace {

constexpr mode_t kReadableFile = 0644, kOwnFile = 0640;
constexpr std::string_view kUnfinished = ".new-";

[[noreturn]] void Fail(const std::string& path, const char* doing = "Writing ") {
  const int number = errno == ENOSPC || errno == EDQUOT || errno == EFBIG ? kDiskFull : kDeviceError;
  throw RuntimeError(number, doing + path + ": " + std::generic_category().message(errno));
}

// An open file that is closed at the end.
struct OpenFile {
  int handle;
  ~OpenFile() {
    if (handle >= 0) ::close(handle);
  }
};

// A name that is gone in the end, unless it has been given to the finished file.
struct Unfinished {
  std::string path;
  ~Unfinished() { ::unlink(path.c_str()); }
};

enum class Flushed { Now, Later };

void WriteAll(const std::string& path, std::string_view bytes, mode_t mode, Flushed flushed) {
  const OpenFile file{::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode)};
  if (file.handle < 0) Fail(path);
  while (!bytes.empty()) {
    const ssize_t count = ::write(file.handle, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) Fail(path);
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  if (flushed == Flushed::Now && ::fsync(file.handle) != 0) Fail(path);
}

std::string Beside(const std::string& path) {
  return FolderOf(path) + "/" + std::string(kUnfinished) + std::to_string(::getpid()) + "-" + FileNameOf(path);
}

}  // namespace

std::optional<std::string> ReadWholeText(const std::string& path) {
  const OpenFile file{::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
  if (file.handle < 0 && (errno == ENOENT || errno == ELOOP)) return std::nullopt;
  struct stat status = {};
  if (file.handle < 0 || ::fstat(file.handle, &status) != 0) Fail(path, "Reading ");
  if (!S_ISREG(status.st_mode)) return std::nullopt;
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  const ssize_t count = ::read(file.handle, text.data(), text.size());
  if (count < 0) Fail(path, "Reading ");
  text.resize(static_cast<std::size_t>(count));
  return text;
}

bool IsUnfinishedName(std::string_view name) {
  return name.starts_with(kUnfinished);
}

void BeginFile(const std::string& path, std::string_view bytes) {
  WriteAll(path, bytes, kReadableFile, Flushed::Later);
}

void FlushDisk(const std::string& folder) {
  const OpenFile opened{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (opened.handle < 0 || ::syncfs(opened.handle) != 0) Fail(folder);
}

void WriteWholeText(const std::string& path, std::string_view text) {
  const Unfinished unfinished{Beside(path)};
  const std::string& beside = unfinished.path;
  WriteAll(beside, text, kOwnFile, Flushed::Now);
  struct stat old = {};
  const bool replaces = ::stat(path.c_str(), &old) == 0;
  if (!replaces && ::stat(FolderOf(path).c_str(), &old) != 0) Fail(path);
  // Who is not root keeps what it may give.
  static_cast<void>(::chown(beside.c_str(), replaces ? old.st_uid : static_cast<uid_t>(-1), old.st_gid) == 0);
  if (replaces) ::chmod(beside.c_str(), old.st_mode & 07777);
  if (::rename(beside.c_str(), path.c_str()) != 0) Fail(path);
  FlushDisk(FolderOf(path));
}

NewText::NewText(std::string path, std::string_view text) : path_(std::move(path)), beside_(Beside(path_)) {
  try {
    WriteAll(beside_, text, kOwnFile, Flushed::Later);
  } catch (...) {
    ::unlink(beside_.c_str());
    throw;
  }
}

NewText::~NewText() {
  ::unlink(beside_.c_str());
}

bool NewText::GiveName() {
  const bool named = ::link(beside_.c_str(), path_.c_str()) == 0;
  if (!named && errno != EEXIST) Fail(path_);
  return named;
}

}  // namespace tarvolinex::server
