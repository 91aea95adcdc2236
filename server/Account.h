// What a reference has stored, in one file beside its records, so that an upload need not read all of them. It says
// what the records say or is not there: who ends a link removes it, the next upload makes it anew, and what a killed
// program has counted and not stored goes with the hourly tidying. REQUIRES: the reference's lock is held.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "server/Store.h"

namespace tarvolinex::server {

class Account {
 public:
  // `folder` is the reference's, with its records.
  explicit Account(const std::string& folder) : path_(folder + "/.account") {}

  // nullopt when there is none, or none that can be used.
  std::optional<Usage> Read(Moment now) const;
  // A machine that cannot write it has none.
  void Begin(const std::vector<Record>& records) const;
  void Add(const Record& record) const;
  void Forget() const;

 private:
  void Write(const std::string& lines, int mode) const;
  std::string path_;
};

}  // namespace tarvolinex::server
