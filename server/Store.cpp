#include "server/Store.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Account.h"
#include "server/Parsing.h"
#include "server/References.h"
#include "server/WholeText.h"

namespace tarvolinex::server {

namespace fs = std::filesystem;

namespace {

constexpr int kMostMisses = 20;
constexpr std::chrono::hours kMissesForgotten{1}, kOrphaned{1}, kEndedForgotten{24 * 365};

[[noreturn]] void Fail(const std::string& doing, int error) {
  const int number = error == ENOSPC || error == EDQUOT ? kDiskFull : kDeviceError;
  throw RuntimeError(number, doing + ": " + std::generic_category().message(error));
}

void MakeFolderOnce(const std::string& path, mode_t mode) {
  if (::mkdir(path.c_str(), mode) != 0 && errno != EEXIST) Fail("Making " + path, errno);
}

// None where there is no folder; a folder that cannot be read is not an empty one.
std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) names.push_back(entry.path().filename().string());
  if (error && error.value() != ENOENT && error.value() != ENOTDIR) Fail("Reading " + folder, error.value());
  return names;
}

std::optional<Record> ReadRecordFile(const std::string& path) {
  const auto text = ReadWholeText(path);
  return text ? ReadRecordText(*text) : std::nullopt;
}

std::chrono::seconds Age(const std::string& path, Moment now) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return std::chrono::seconds(0);
  return now - Moment(std::chrono::seconds(status.st_mtime));
}

Usage UsageIn(const std::vector<Record>& records, Moment now) {
  Usage usage;
  for (const Record& record : records) usage.Add(record.received, record.ended.empty() ? record.room : 0, now);
  return usage;
}

// Held until the object goes.
class Lock {
 public:
  explicit Lock(const std::string& path) : handle_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (handle_ < 0 || ::flock(handle_, LOCK_EX) != 0) Fail("Locking " + path, errno);
  }
  ~Lock() { ::close(handle_); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

 private:
  int handle_;
};

}  // namespace

Store::Incoming::Incoming(const Store& store) {
  constexpr int kAttempts = 5;
  const std::string folder = store.folder_ + "/incoming";
  MakeFolderOnce(folder, 0700);
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    path_ = folder + "/" + RandomName();
    MakeFolderOnce(path_, 0711);
    lock_ = ::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    struct stat locked = {};
    // Before it was locked somebody may have swept it away.
    if (lock_ >= 0 && ::flock(lock_, LOCK_EX) == 0 && ::fstat(lock_, &locked) == 0 && locked.st_nlink > 0) return;
    if (lock_ >= 0) ::close(lock_);
  }
  Fail("Making " + path_, errno);
}

Store::Incoming::~Incoming() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  ::close(lock_);
}

std::optional<Record> Store::Find(const std::string& id) const {
  for (const std::string& reference : ReferencesIn(id)) {
    if (auto record = ReadRecordFile(LinksOf(reference) + "/" + id)) return record;
  }
  return std::nullopt;
}

std::vector<Record> Store::Of(const std::string& reference) const {
  std::vector<Record> records;
  for (const std::string& name : NamesIn(LinksOf(reference))) {
    if (!IsIdentifier(name)) continue;
    if (auto record = ReadRecordFile(LinksOf(reference) + "/" + name)) records.push_back(*record);
  }
  std::sort(records.begin(), records.end(), [](const Record& a, const Record& b) { return a.id < b.id; });
  return records;
}

std::vector<Record> Store::All() const {
  std::vector<Record> records;
  std::vector<std::string> references = NamesIn(folder_ + "/links");
  std::sort(references.begin(), references.end());
  for (const std::string& reference : references) {
    const std::vector<Record> own = Of(reference);
    records.insert(records.end(), own.begin(), own.end());
  }
  return records;
}

Usage Store::UsageOf(const std::string& reference, Moment now) const {
  return UsageIn(Of(reference), now);
}

// Of the record's reference, whose lock is held, before the record.
Usage Store::CountedUsage(const Record& record) const {
  const Account account(LinksOf(record.reference));
  if (const auto usage = account.Read(record.received)) return *usage;
  const std::vector<Record> records = Of(record.reference);
  account.Begin(records);
  return UsageIn(records, record.received);
}

// Under the lock, or an upload that has read it before would write it again.
void Store::ForgetAccount(const std::string& reference) const {
  const std::string path = LinksOf(reference) + "/.lock";
  std::optional<Lock> lock;
  if (::access(path.c_str(), W_OK) == 0) lock.emplace(path);
  Account(LinksOf(reference)).Forget();
}

std::int64_t Store::FreeBytes() const {
  struct statvfs disk = {};
  if (::statvfs(folder_.c_str(), &disk) != 0) Fail("Looking at " + folder_, errno);
  return static_cast<std::int64_t>(disk.f_bavail) * static_cast<std::int64_t>(disk.f_frsize);
}

bool Store::Keep(const Incoming& finished, const Record& record,
                 const std::function<void(const Usage&)>& allowed) const {
  MakeFolderOnce(folder_ + "/links", 0700);
  MakeFolderOnce(folder_ + "/calculators", 0711);
  MakeFolderOnce(LinksOf(record.reference), 0700);
  const Lock lock(LinksOf(record.reference) + "/.lock");
  allowed(CountedUsage(record));
  const Account account(LinksOf(record.reference));
  const std::string calculator = Calculator(record.token);
  NewText text(LinksOf(record.reference) + "/" + record.id, RecordText(record));
  // Nothing gets its name before all of it is on the disk for good.
  FlushDisk(folder_);
  if (::rename(finished.Path().c_str(), calculator.c_str()) != 0) Fail("Storing an upload", errno);
  std::error_code ignored;
  try {
    account.Add(record);
    if (text.GiveName()) {
      FlushDisk(folder_);
      return true;
    }
  } catch (...) {
    account.Forget();
    fs::remove_all(calculator, ignored);
    throw;
  }
  account.Forget();
  fs::remove_all(calculator, ignored);
  return false;
}

// The record first, so that no reader is led to files that are gone.
void Store::EndOne(Record record, const std::string& why) const {
  record.ended = why;
  const std::string path = LinksOf(record.reference) + "/" + record.id;
  bool told = true;
  try {
    WriteWholeText(path, RecordText(record));
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kDiskFull) throw;
    told = false;  // what goes away makes the room for it
  }
  // Out of the way in one step, before it is removed file by file.
  const std::string away = folder_ + "/incoming/" + record.token;
  MakeFolderOnce(folder_ + "/incoming", 0700);
  if (::rename(Calculator(record.token).c_str(), away.c_str()) != 0 && errno != ENOENT) {
    Fail("Taking away the files of " + record.id, errno);
  }
  std::error_code ignored;
  fs::remove_all(away, ignored);
  if (!told) WriteWholeText(path, RecordText(record));
  ForgetAccount(record.reference);
}

void Store::End(const std::vector<Record>& records, const std::string& why) const {
  std::optional<RuntimeError> failed;
  for (const Record& record : records) {
    try {
      EndOne(record, why);
    } catch (const RuntimeError& failure) {
      failed = failure;
    }
  }
  if (failed) throw RuntimeError(*failed);
}

bool Store::CanBeFetched(const Record& record) const {
  struct stat status = {};
  return ::lstat(Calculator(record.token).c_str(), &status) == 0;
}

std::size_t Store::Sweep(Moment now) const {
  std::vector<Record> expired;
  for (const Record& record : All()) {
    if (record.ended.empty() && record.expires <= now) {
      expired.push_back(record);
    } else if (!record.ended.empty() && record.expires + kEndedForgotten < now) {
      ::unlink((LinksOf(record.reference) + "/" + record.id).c_str());
    }
  }
  SweepIncoming();
  for (const std::string& reference : NamesIn(folder_ + "/links")) ForgetAccount(reference);
  SweepUnnamed(now);
  SweepOrphans(now);
  for (const std::string& name : NamesIn(folder_ + "/misses")) {
    const std::string path = folder_ + "/misses/" + name;
    if (Age(path, now) > kMissesForgotten) ::unlink(path.c_str());
  }
  End(expired, "expired");
  return expired.size();
}

// A folder that nobody holds is a killed program's.
void Store::SweepIncoming() const {
  for (const std::string& name : NamesIn(folder_ + "/incoming")) {
    const std::string path = folder_ + "/incoming/" + name;
    const int handle = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    std::error_code ignored;
    if (handle >= 0 && ::flock(handle, LOCK_EX | LOCK_NB) == 0) fs::remove_all(path, ignored);
    if (handle >= 0) ::close(handle);
  }
}

// Records that were written and never given their name.
void Store::SweepUnnamed(Moment now) const {
  for (const std::string& reference : NamesIn(folder_ + "/links")) {
    for (const std::string& name : NamesIn(LinksOf(reference))) {
      const std::string path = LinksOf(reference) + "/" + name;
      if (IsUnfinishedName(name) && Age(path, now) > kOrphaned) ::unlink(path.c_str());
    }
  }
}

// Calculators whose record was never written, or says that they have ended.
void Store::SweepOrphans(Moment now) const {
  std::vector<std::string> tokens;
  for (const Record& record : All()) {
    if (record.ended.empty()) tokens.push_back(record.token);
  }
  std::sort(tokens.begin(), tokens.end());
  for (const std::string& token : NamesIn(folder_ + "/calculators")) {
    if (std::binary_search(tokens.begin(), tokens.end(), token) || Age(Calculator(token), now) < kOrphaned) continue;
    std::error_code ignored;
    fs::remove_all(Calculator(token), ignored);
  }
}

std::string Store::MissesFile(const std::string& address) const {
  in6_addr six = {};
  in_addr four = {};
  std::string network = "other";
  constexpr std::size_t kNetworkBytes = 8;
  if (::inet_pton(AF_INET6, address.c_str(), &six) == 1) {
    network.assign(reinterpret_cast<const char*>(&six), kNetworkBytes);
  } else if (::inet_pton(AF_INET, address.c_str(), &four) == 1) {
    network.assign(reinterpret_cast<const char*>(&four), sizeof four);
  }
  std::string name;
  for (const char byte : network) name += std::to_string(static_cast<unsigned char>(byte)) + "-";
  return folder_ + "/misses/" + name;
}

// Each miss adds its moment, in seconds; when the last one is forgotten, so are those before.
void Store::CountMiss(const std::string& address, Moment now) const {
  MakeFolderOnce(folder_ + "/misses", 0700);
  const std::string path = MissesFile(address);
  const int start = Age(path, now) > kMissesForgotten ? O_TRUNC : 0;
  const int handle = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | start, 0600);
  if (handle < 0) return;
  const std::int64_t moment = now.time_since_epoch().count();
  static_cast<void>(::write(handle, &moment, sizeof moment) > 0);
  ::close(handle);
}

bool Store::TooManyMisses(const std::string& address, Moment now) const {
  const int handle = ::open(MissesFile(address).c_str(), O_RDONLY | O_CLOEXEC);
  if (handle < 0) return false;
  std::int64_t moment = 0;  // of the one that is so many before the end
  constexpr off_t kBack = kMostMisses * static_cast<off_t>(sizeof moment);
  const off_t size = ::lseek(handle, 0, SEEK_END);
  const bool read = size >= kBack && ::pread(handle, &moment, sizeof moment, size - kBack) == sizeof moment;
  ::close(handle);
  return read && now - Moment(std::chrono::seconds(moment)) <= kMissesForgotten;
}

}  // namespace tarvolinex::server
