// What is kept of the uploads, as files below one folder:
//   incoming/NAME/           an upload that is being looked through; locked by whoever does
//   calculators/TOKEN/page/  what a web server hands out; TOKEN cannot be guessed
//   calculators/TOKEN/program/  the install file under its proper name
//   links/REFERENCE/ID       the record of an upload, which makes it one; .account beside them is their sum
//   misses/                  who has asked for links that there are none of
// A kill at any moment leaves a whole upload or none: a calculator without a record is nobody's and is swept away.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "server/InstallFile.h"

namespace tarvolinex::server {

using Moment = std::chrono::sys_seconds;

struct Record {
  std::string id, reference, token;
  std::string organisation, supplier, calculator;  // names, for readers
  std::string program, logo;                       // names of files; logo is "" without
  std::int64_t bytes = 0;                          // of the install file
  std::int64_t room = 0;                           // bytes that all of it takes up
  Moment received, expires;
  Colour page = 0, panel = 0, text = 0, border = 0;
  std::string ended;  // "withdrawn" or "expired"; empty: it can be fetched
};

struct Usage {
  std::int64_t bytes = 0;
  std::int64_t lastHour = 0;  // uploads
  void Add(Moment received, std::int64_t room, Moment now) {
    bytes += room;
    if (now - received < std::chrono::hours(1)) ++lastHour;
  }
};

class Store {
 public:
  explicit Store(std::string folder) : folder_(std::move(folder)) {}

  // Throws RuntimeError like everything here when the machine fails.
  std::optional<Record> Find(const std::string& id) const;
  std::vector<Record> All() const;
  std::vector<Record> Of(const std::string& reference) const;
  Usage UsageOf(const std::string& reference, Moment now) const;
  std::int64_t FreeBytes() const;  // of the disk

  // A folder for what has not been looked through; gone with the object, and swept away when its program was killed.
  class Incoming {
   public:
    explicit Incoming(const Store& store);
    ~Incoming();
    Incoming(const Incoming&) = delete;
    Incoming& operator=(const Incoming&) = delete;
    const std::string& Path() const { return path_; }

   private:
    std::string path_;
    int lock_ = -1;
  };

  // Makes the finished folder and its record what is fetched under the identifier. `allowed` is asked for what the
  // reference has so far, while no other upload of it can come between; it throws to stop. False when there is a record
  // of that identifier already: nothing changes then.
  bool Keep(const Incoming& finished, const Record& record, const std::function<void(const Usage&)>& allowed) const;

  // From now on none of them can be fetched; the records stay, so that a reader is told why. All are tried; throws in
  // the end when one of them can still be fetched or its record does not say so.
  void End(const std::vector<Record>& records, const std::string& why) const;
  // Whether its files are where a web server hands them out, whatever the record says.
  bool CanBeFetched(const Record& record) const;
  // Ends what has expired, and removes what killed programs have left, records that ended more than a year ago, and
  // old misses. Returns how many ended.
  std::size_t Sweep(Moment now) const;

  // Counts a reader who asked for a link that there is none of; TooManyMisses when 20 came from there within the last
  // hour. The address is taken as a network: 64 bits of IPv6.
  void CountMiss(const std::string& address, Moment now) const;
  bool TooManyMisses(const std::string& address, Moment now) const;

 private:
  std::string LinksOf(const std::string& reference) const { return folder_ + "/links/" + reference; }
  std::string Calculator(const std::string& token) const { return folder_ + "/calculators/" + token; }
  std::string MissesFile(const std::string& address) const;
  Usage CountedUsage(const Record& record) const;
  void EndOne(Record record, const std::string& why) const;
  void ForgetAccount(const std::string& reference) const;
  void SweepIncoming() const;
  void SweepUnnamed(Moment now) const;
  void SweepOrphans(Moment now) const;
  std::string folder_;
};

// As it stands in its file, and back; nullopt when it is no record.
std::string RecordText(const Record& record);
std::optional<Record> ReadRecordText(const std::string& text);

}  // namespace tarvolinex::server
