// One wait for many files.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace tarvolinex {

// While one lives, a file that this thread writes whole takes its target's place at once, as ever, but is flushed to
// the disk by Commit, with the others: for a folder of which a part is worth nothing. A killed program still leaves
// whole files; a machine that goes down before Commit may leave the folder with cut ones. One thread has one at a time.
class FlushTogether {
 public:
  FlushTogether();
  ~FlushTogether();
  FlushTogether(const FlushTogether&) = delete;
  FlushTogether& operator=(const FlushTogether&) = delete;

  // Returns when what was written is on the disk for good. Throws RuntimeError.
  void Commit();

  // Of this thread; nullptr when there is none.
  static FlushTogether* Current();
  // Takes the handle of a file that has its name.
  void Add(int handle, std::string path);

 private:
  void Close();
  struct Written {
    int handle;
    std::string path;
  };
  std::vector<Written> files_;
  std::set<std::string> folders_;
  FlushTogether* outer_;
};

}  // namespace tarvolinex
