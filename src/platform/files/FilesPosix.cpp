// The parts of the file service that need the operating system itself: flushing, locking, well-known folders.
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/FlushTogether.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

int NumberOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return kPathNotFound;  // the folder: the file itself is made
    case ENOSPC:
    case EDQUOT:
      return kDiskFull;
    case ENAMETOOLONG:
    case EINVAL:
      return kBadFileName;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ENOTEMPTY:
      return kPathAccess;
    default:
      return kDeviceError;
  }
}

[[noreturn]] void ThrowError(int error, const char* doing, std::string_view path) {
  throw RuntimeError(NumberOf(error), Tr(doing, {path, std::generic_category().message(error)}));
}

void FlushFolder(const std::string& folder) {
  const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

constexpr std::string_view kUnfinishedEnding = ".tmp";

// What the names of this machine's unfinished files begin with: a lock tells nothing of another machine's.
std::string UnfinishedHere() {
  std::array<char, 256> host{};
  ::gethostname(host.data(), host.size() - 1);
  std::string name(host.data());
  std::replace(name.begin(), name.end(), '/', '_');
  return std::string(kUnfinished) + name + "-";
}

// Makes an empty file of a name that nobody has, in the folder, and locks it; returns its handle, -1 when that fails.
int MakeUnfinished(const std::string& folder, std::string& path) {
  constexpr int kAttempts = 1000;
  const std::string before =
      (folder.empty() ? "." : folder) + "/" + UnfinishedHere() + std::to_string(::getpid()) + "-";
  // No name comes twice: whoever is about to remove a dead file must not meet a new one there.
  static std::atomic<unsigned> next = 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    path = before + std::to_string(next++) + std::string(kUnfinishedEnding);
    const int handle = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (handle < 0 && errno == EEXIST) continue;
    if (handle < 0) break;
    // Another program may have come between and taken it for a dead one's.
    struct stat status = {};
    const bool taken = ::flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!taken && ::fstat(handle, &status) == 0 && status.st_nlink > 0) return handle;
    ::close(handle);
  }
  path.clear();
  return -1;
}

// The file that is locked for it, and what was made beside it under a longer name.
void RemoveDead(const std::filesystem::path& path, bool here) {
  namespace fs = std::filesystem;
  std::error_code error;
  const std::string name = path.filename().string();
  const auto end = name.find(kUnfinishedEnding);
  const fs::path locked = end == std::string::npos ? path : path.parent_path() / name.substr(0, end + 4);
  const int handle = here ? ::open(locked.c_str(), O_RDONLY | O_CLOEXEC) : -1;
  const bool gone = here && handle < 0 && errno == ENOENT;
  const bool dead = gone || (handle >= 0 && ::flock(handle, LOCK_EX | LOCK_NB) == 0);
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
  if (dead || (fs::last_write_time(path, error) < old && !error)) fs::remove_all(path, error);
  if (handle >= 0) ::close(handle);
}

}  // namespace

void RemoveUnfinished(std::string_view path) {
  const std::string folder = NativePath(path), here = UnfinishedHere();
  std::error_code error;
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder, error)) {
    const std::string_view name = entry.path().native();
    if (name.substr(name.rfind('/') + 1).starts_with(kUnfinished)) found.push_back(entry.path());
  }
  // Those with a longer name first: they are known by the one that they stand beside.
  std::sort(found.rbegin(), found.rend());
  for (const auto& file : found) RemoveDead(file, file.filename().string().starts_with(here));
}

UnfinishedFile::UnfinishedFile(std::string_view target) {
  handle_ = MakeUnfinished(FolderOf(NativePath(target)), path_);
  if (handle_ < 0) ThrowError(errno, Marked("Writing %1: %2"), target);
}

UnfinishedFile::~UnfinishedFile() {
  std::error_code ignored;
  const std::string name = FileNameOf(path_);
  for (const auto& entry : std::filesystem::directory_iterator(FolderOf(path_), ignored)) {
    const std::string other = entry.path().filename().string();
    if (other != name && other.starts_with(name)) std::filesystem::remove_all(entry.path(), ignored);
  }
  ::unlink(path_.c_str());
  ::close(handle_);
}

namespace {

// The file that a link leads to, whether it exists or not: what is written goes there, and the link stays. A circle of
// links is left as it is and refused when it is opened.
std::string Followed(std::string path) {
  namespace fs = std::filesystem;
  std::error_code error;
  for (int links = 0; links < 40 && fs::is_symlink(path, error); ++links) {
    const fs::path target = fs::read_symlink(path, error);
    if (error) break;
    path = (target.is_absolute() ? target : fs::path(path).parent_path() / target).string();
  }
  return path;
}

}  // namespace

WholeFile::WholeFile(std::string_view path)
    : target_(Followed(NativePath(path))), passing_(FileNameOf(FolderOf(target_)).starts_with(kUnfinished)) {
  if (target_.empty() || FileNameOf(target_).empty()) ThrowError(EINVAL, Marked("Writing %1: %2"), path);
  // A new file gets the rights that the user's mask gives, an old one keeps its own.
  struct stat old = {};
  const bool replaces = ::stat(target_.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) ThrowError(EISDIR, Marked("Writing %1: %2"), path);
  if (replaces && !S_ISREG(old.st_mode)) {
    throw RuntimeError(kPathAccess, Tr("Writing %1: it is a device or a pipe, not a file", {path}));
  }
  if (replaces && ::access(target_.c_str(), W_OK) != 0) ThrowError(EACCES, Marked("Writing %1: %2"), path);
  if (!passing_) RemoveUnfinished(FolderOf(target_));
  handle_ = MakeUnfinished(FolderOf(target_), beside_);
  if (handle_ < 0) ThrowError(errno, Marked("Writing %1: %2"), path);
  if (replaces) ::fchmod(handle_, old.st_mode & 07777);
}

WholeFile::~WholeFile() {
  if (!beside_.empty()) ::unlink(beside_.c_str());
  if (handle_ >= 0) ::close(handle_);
}

void WholeFile::Fail(const char* doing) const {
  ThrowError(errno, doing, target_);
}

void WholeFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(handle_, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      Fail(Marked("Writing %1: %2"));
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void WholeFile::Commit() {
  FlushTogether* const together = passing_ ? nullptr : FlushTogether::Current();
  const bool flushed = !passing_ && !together;
  if (flushed && ::fsync(handle_) != 0) Fail(Marked("Writing %1: %2"));
  // Still locked: until it has its name another program could take it for a dead one's.
  if (::rename(beside_.c_str(), target_.c_str()) != 0) Fail(Marked("Writing %1: %2"));
  beside_.clear();
  const int handle = std::exchange(handle_, -1);
  if (together) return together->Add(handle, target_);
  ::close(handle);
  if (flushed) FlushFolder(FolderOf(target_));
}

namespace {

FlushTogether*& CurrentOfThread() {
  thread_local FlushTogether* current = nullptr;
  return current;
}

}  // namespace

FlushTogether::FlushTogether() : outer_(std::exchange(CurrentOfThread(), this)) {}

FlushTogether::~FlushTogether() {
  CurrentOfThread() = outer_;
  Close();
}

FlushTogether* FlushTogether::Current() {
  return CurrentOfThread();
}

void FlushTogether::Add(int handle, std::string path) {
  ::flock(handle, LOCK_UN);  // it has its name
  folders_.insert(FolderOf(path));
  files_.push_back({handle, std::move(path)});
}

void FlushTogether::Close() {
  for (const Written& file : files_) ::close(file.handle);
  files_.clear();
}

void FlushTogether::Commit() {
  // All are on their way before the first is waited for, so that one wait does for most of them.
  for (const Written& file : files_) ::sync_file_range(file.handle, 0, 0, SYNC_FILE_RANGE_WRITE);
  for (const Written& file : files_) {
    if (::fsync(file.handle) != 0) ThrowError(errno, Marked("Writing %1: %2"), file.path);
  }
  for (const std::string& folder : folders_) FlushFolder(folder);
  Close();
}

FileLock::FileLock(std::string_view path, std::chrono::seconds patience, bool make) {
  constexpr auto kPause = std::chrono::milliseconds(50);
  const std::string native = NativePath(path);
  handle_ = ::open(native.c_str(), O_RDWR | O_CLOEXEC | (make ? O_CREAT : 0), 0666);
  if (handle_ < 0) {
    throw RuntimeError(kPathAccess, Tr("Writing %1: %2. Please change the rights of the folder or use another one",
                                       {native, std::generic_category().message(errno)}));
  }
  const auto end = std::chrono::steady_clock::now() + patience;
  while (::flock(handle_, LOCK_EX | LOCK_NB) != 0) {
    if (std::chrono::steady_clock::now() >= end) {
      ::close(handle_);
      throw RuntimeError(kFileAlreadyOpen, Tr("Another running Tarvolinex uses the folder %1", {FolderOf(path)}));
    }
    std::this_thread::sleep_for(kPause);
  }
}

FileLock::~FileLock() {
  ::close(handle_);
}

bool IsWritableFolder(std::string_view path) {
  return FolderExists(path) && ::faccessat(AT_FDCWD, NativePath(path).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void ReserveStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) >= 0) continue;
    // For reading alone: what is written there fails and is told, and no file of ours takes the place.
    const int reserved = ::open("/dev/null", O_RDONLY);
    if (reserved >= 0 && reserved != stream) {
      ::dup2(reserved, stream);
      ::close(reserved);
    }
  }
  std::signal(SIGPIPE, SIG_IGN);
}

std::string ProgramFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? CurrentFolder() : program.parent_path().string();
}

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  return home && *home ? home : "/";
}

std::string UserDataFolder(std::string_view program) {
  const char* data = std::getenv("XDG_DATA_HOME");
  const std::string base = data && *data == '/' ? data : HomeFolder() + "/.local/share";
  return base + "/" + std::string(program);
}

std::string LoginName() {
  const uid_t user = geteuid();
  std::array<char, 4096> room = {};
  passwd entry = {};
  passwd* found = nullptr;
  const int status = getpwuid_r(user, &entry, room.data(), room.size(), &found);
  return status == 0 && found ? std::string(found->pw_name) : std::to_string(user);
}

}  // namespace tarvolinex
