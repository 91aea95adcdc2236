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

void Nothing() {}

// Returns true when the call on that place (a path or a handle) has to fail, with errno set. `half` does the half of a
// write before a kill.
template <typename Place, typename Half = void (*)()>
bool FailsHere(Kind kind, Place place, Half half = Nothing) {
  if (!IsWatched(place) || (watch.fault == Fault::FullDisk && kind != Kind::Writes)) return false;
  const long now = ++*seen;
  if (watch.moment == 0 || now < watch.moment || (now > watch.moment && watch.fault != Fault::FullDisk)) return false;
  if (watch.fault == Fault::Kill) {
    half();
    kill(getpid(), SIGKILL);
  }
  errno = kind == Kind::Writes ? ENOSPC : EIO;
  return true;
}

// The C library's own.
#define OWN(call) reinterpret_cast<decltype(&(call))>(dlsym(RTLD_NEXT, #call))

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
  const auto half = [&] { OWN(write)(handle, bytes, count / 2); };
  return FailsHere(Kind::Writes, handle, half) ? -1 : OWN(write)(handle, bytes, count);
}

ssize_t writev(int handle, const iovec* parts, int count) {
  const auto half = [&] { OWN(writev)(handle, parts, count / 2); };
  return FailsHere(Kind::Writes, handle, half) ? -1 : OWN(writev)(handle, parts, count);
}

ssize_t pwrite64(int handle, const void* bytes, size_t count, off64_t at) {
  const auto half = [&] { OWN(pwrite64)(handle, bytes, count / 2, at); };
  return FailsHere(Kind::Writes, handle, half) ? -1 : OWN(pwrite64)(handle, bytes, count, at);
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file) {
  const auto half = [&] {
    OWN(fwrite)(bytes, size, count / 2, file);
    fflush(file);
  };
  return FailsHere(Kind::Writes, fileno(file), half) ? 0 : OWN(fwrite)(bytes, size, count, file);
}

// What stdio still holds is written here.
int fclose(FILE* file) {
  const bool writes = (fcntl(fileno(file), F_GETFL) & O_ACCMODE) != O_RDONLY;
  if (!writes || !FailsHere(Kind::Writes, fileno(file))) return OWN(fclose)(file);
  OWN(fclose)(file);
  errno = ENOSPC;
  return EOF;
}

// Nothing is lost by a kill, so nothing has to reach the disk.
int fsync(int handle) {
  return FailsHere(Kind::Changes, handle) ? -1 : 0;
}

int ftruncate64(int handle, off64_t length) noexcept {
  return FailsHere(Kind::Writes, handle) ? -1 : OWN(ftruncate64)(handle, length);
}

int rename(const char* from, const char* to) noexcept {
  return FailsHere(Kind::Changes, to) ? -1 : OWN(rename)(from, to);
}

int unlink(const char* path) noexcept {
  return FailsHere(Kind::Changes, path) ? -1 : OWN(unlink)(path);
}

int remove(const char* path) noexcept {
  return FailsHere(Kind::Changes, path) ? -1 : OWN(remove)(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
  return FailsHere(Kind::Writes, path) ? -1 : OWN(mkdir)(path, mode);
}

int open64(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool creates = (flags & (O_CREAT | O_TRUNC)) != 0;
  return creates && FailsHere(Kind::Writes, path) ? -1 : OWN(open64)(path, flags, mode);
}

FILE* fopen64(const char* path, const char* how) {
  return std::strpbrk(how, "wa+") && FailsHere(Kind::Writes, path) ? nullptr : OWN(fopen64)(path, how);
}

// The same under their other names.
int fdatasync(int handle) __attribute__((alias("fsync")));
ssize_t pwrite(int handle, const void* bytes, size_t count, off_t at) __attribute__((alias("pwrite64")));
int ftruncate(int handle, off_t length) noexcept __attribute__((alias("ftruncate64")));
int open(const char* path, int flags, ...) __attribute__((alias("open64")));
FILE* fopen(const char* path, const char* how) __attribute__((alias("fopen64")));
}
