#include "faults/Faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace tarvolinex {

namespace {

struct Watch {
  std::array<char, 4096> folder{};
  Fault fault = Fault::Kill;
  long moment = 0;
};
Watch watch;
// Shared with the process that forks.
long* const seen =
    static_cast<long*>(mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

bool IsWatched(std::string_view path) {
  const std::string_view folder(watch.folder.data());
  return !folder.empty() && path.starts_with(folder);
}

bool IsWatched(int handle) {
  if (watch.folder[0] == '\0') return false;
  std::array<char, 64> link{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", handle);
  std::array<char, 4096> path{};
  const ssize_t length = readlink(link.data(), path.data(), path.size());
  return length > 0 && IsWatched(std::string_view(path.data(), static_cast<std::size_t>(length)));
}

enum class Kind { Writes, Changes };

// Returns true when the call has to fail, with errno set. `half` does the half of a write before a kill.
template <typename Half>
bool FailsHere(Kind kind, Half half) {
  if (watch.fault == Fault::FullDisk && kind != Kind::Writes) return false;
  const long now = ++*seen;
  if (watch.moment == 0 || now < watch.moment || (now > watch.moment && watch.fault != Fault::FullDisk)) return false;
  if (watch.fault == Fault::Kill) {
    half();
    kill(getpid(), SIGKILL);
  }
  errno = kind == Kind::Writes ? ENOSPC : EIO;
  return true;
}

bool FailsHere(Kind kind) {
  return FailsHere(kind, [] {});
}

// The C library's own.
template <typename Call>
Call* Next(const char* name) {
  return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

bool Creates(int flags) {
  return (flags & (O_CREAT | O_TRUNC)) != 0;
}

}  // namespace

void WatchFolder(const std::string& folder, Fault fault, long moment) {
  *seen = 0;
  watch.fault = fault;
  watch.moment = moment;
  std::snprintf(watch.folder.data(), watch.folder.size(), "%s", folder.c_str());
}

void StopWatching() {
  watch.folder[0] = '\0';
}

long MomentsSeen() {
  return *seen;
}

}  // namespace tarvolinex

using namespace tarvolinex;

extern "C" {

ssize_t write(int handle, const void* bytes, size_t count) {
  static const auto next = Next<ssize_t(int, const void*, size_t)>("write");
  if (IsWatched(handle) && FailsHere(Kind::Writes, [&] { next(handle, bytes, count / 2); })) return -1;
  return next(handle, bytes, count);
}

ssize_t writev(int handle, const iovec* parts, int count) {
  static const auto next = Next<ssize_t(int, const iovec*, int)>("writev");
  if (IsWatched(handle) && FailsHere(Kind::Writes, [&] { next(handle, parts, count / 2); })) return -1;
  return next(handle, parts, count);
}

ssize_t pwrite64(int handle, const void* bytes, size_t count, off64_t at) {
  static const auto next = Next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
  if (IsWatched(handle) && FailsHere(Kind::Writes, [&] { next(handle, bytes, count / 2, at); })) return -1;
  return next(handle, bytes, count, at);
}

ssize_t pwrite(int handle, const void* bytes, size_t count, off_t at) {
  return pwrite64(handle, bytes, count, at);
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file) {
  static const auto next = Next<size_t(const void*, size_t, size_t, FILE*)>("fwrite");
  if (IsWatched(fileno(file)) && FailsHere(Kind::Writes, [&] {
        next(bytes, size, count / 2, file);
        fflush(file);
      })) {
    return 0;
  }
  return next(bytes, size, count, file);
}

// What stdio still holds is written here.
int fclose(FILE* file) {
  static const auto next = Next<int(FILE*)>("fclose");
  const bool writes = IsWatched(fileno(file)) && (fcntl(fileno(file), F_GETFL) & O_ACCMODE) != O_RDONLY;
  if (writes && FailsHere(Kind::Writes)) {
    next(file);
    errno = ENOSPC;
    return EOF;
  }
  return next(file);
}

// Nothing is lost by a kill, so nothing has to reach the disk.
int fsync(int handle) {
  return IsWatched(handle) && FailsHere(Kind::Changes) ? -1 : 0;
}

int fdatasync(int handle) {
  return fsync(handle);
}

int ftruncate64(int handle, off64_t length) noexcept {
  static const auto next = Next<int(int, off64_t)>("ftruncate64");
  return IsWatched(handle) && FailsHere(Kind::Writes) ? -1 : next(handle, length);
}

int ftruncate(int handle, off_t length) noexcept {
  return ftruncate64(handle, length);
}

int rename(const char* from, const char* to) noexcept {
  static const auto next = Next<int(const char*, const char*)>("rename");
  return IsWatched(to) && FailsHere(Kind::Changes) ? -1 : next(from, to);
}

int unlink(const char* path) noexcept {
  static const auto next = Next<int(const char*)>("unlink");
  return IsWatched(path) && FailsHere(Kind::Changes) ? -1 : next(path);
}

int remove(const char* path) noexcept {
  static const auto next = Next<int(const char*)>("remove");
  return IsWatched(path) && FailsHere(Kind::Changes) ? -1 : next(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
  static const auto next = Next<int(const char*, mode_t)>("mkdir");
  return IsWatched(path) && FailsHere(Kind::Writes) ? -1 : next(path, mode);
}

int open64(const char* path, int flags, ...) {
  static const auto next = Next<int(const char*, int, ...)>("open64");
  va_list rest;
  va_start(rest, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  if (Creates(flags) && IsWatched(path) && FailsHere(Kind::Writes)) return -1;
  return next(path, flags, mode);
}

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return open64(path, flags, mode);
}

FILE* fopen64(const char* path, const char* how) {
  static const auto next = Next<FILE*(const char*, const char*)>("fopen64");
  if (std::strpbrk(how, "wa+") && IsWatched(path) && FailsHere(Kind::Writes)) return nullptr;
  return next(path, how);
}

FILE* fopen(const char* path, const char* how) {
  return fopen64(path, how);
}
}
