// Install files of the next suppliers of a run, built on other cores while the messages of the present one are sent.
#pragma once

#include <deque>
#include <future>
#include <string>

#include "distribute/Batch.h"
#include "distribute/WorkFolders.h"
#include "platform/files/Deflated.h"

namespace tarvolinex {

class BuildAhead {
 public:
  // Throws RuntimeError when nothing can be written into the app folder.
  explicit BuildAhead(const Branding& branding);

  // Which file it is: the same calculator may go out in two ways.
  struct Which {
    int supplierId, sendType;
    bool operator==(const Which&) const = default;
  };

  // Whether another one may be begun, and whether that one has been.
  bool HasRoom() const { return builds_.size() < numbers_; }
  bool Holds(const Which& which) const;
  // Without room the first one is dropped.
  void Begin(const Which& which, BatchJob job, std::chrono::system_clock::time_point now);

  struct Built {
    BatchJob job;
    std::string fault;  // why there is none; empty = there is one
    std::string file;   // stays until the next Take
  };
  // REQUIRES: Holds. Waits for it and lets the windows live meanwhile. What was begun before it is dropped.
  Built Take(const Which& which, Reporter& reporter);

 private:
  struct Build {
    Which which;
    std::size_t number;
    BatchJob job;
    std::future<std::string> fault;
  };
  void DropFirst();
  std::string FileOf(const Build& build) const { return folders_.FileOf(build.number, build.which.sendType); }

  const DeflateOnce once_;
  const std::size_t numbers_;
  WorkFolders folders_;
  std::size_t next_ = 0;      // number
  std::deque<Build> builds_;  // the first may be one that was taken
};

}  // namespace tarvolinex
