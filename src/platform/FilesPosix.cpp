// The parts of the file service that need the operating system itself: flushing, locking, well-known folders.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Translation.h"

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

// What programs that were killed have left in the folder. The hour spares what others are writing right now.
void RemoveUnfinished(const std::string& folder) {
  namespace fs = std::filesystem;
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder.empty() ? "." : folder, error)) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with(kUnfinished) && entry.last_write_time(error) < old && !error) fs::remove(entry.path(), error);
  }
}

}  // namespace

std::string UnfinishedPath(std::string_view target) {
  const std::string native = NativePath(target), folder = FolderOf(native).empty() ? "." : FolderOf(native);
  for (int attempt = 0;; ++attempt) {
    const std::string path =
        folder + "/" + std::string(kUnfinished) + std::to_string(::getpid()) + "-" + std::to_string(attempt) + ".tmp";
    if (attempt > 1000 || ::access(path.c_str(), F_OK) != 0) return path;
  }
}

WholeFile::WholeFile(std::string_view path) : target_(NativePath(path)) {
  if (target_.empty() || FileNameOf(target_).empty()) ThrowError(EINVAL, Marked("Writing %1: %2"), path);
  // A new file gets the rights that the user's mask gives, an old one keeps its own.
  struct stat old = {};
  const bool replaces = ::stat(target_.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) ThrowError(EISDIR, Marked("Writing %1: %2"), path);
  if (replaces && ::access(target_.c_str(), W_OK) != 0) ThrowError(EACCES, Marked("Writing %1: %2"), path);
  RemoveUnfinished(FolderOf(target_));
  beside_ = UnfinishedPath(target_);
  handle_ = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (handle_ < 0) {
    beside_.clear();
    ThrowError(errno, Marked("Writing %1: %2"), path);
  }
  if (replaces) ::fchmod(handle_, old.st_mode & 07777);
}

WholeFile::~WholeFile() {
  if (handle_ >= 0) ::close(handle_);
  if (!beside_.empty()) ::unlink(beside_.c_str());
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
  if (::fsync(handle_) != 0) Fail(Marked("Writing %1: %2"));
  const int handle = handle_;
  handle_ = -1;
  if (::close(handle) != 0) Fail(Marked("Writing %1: %2"));
  if (::rename(beside_.c_str(), target_.c_str()) != 0) Fail(Marked("Writing %1: %2"));
  beside_.clear();
  FlushFolder(FolderOf(target_));
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
  return FolderExists(path) && ::access(NativePath(path).c_str(), W_OK | X_OK) == 0;
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

}  // namespace tarvolinex
