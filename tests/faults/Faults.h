// A machine that fails on purpose. The calls with which a program changes files stand in this executable in place of
// the C library's, for the program and for the libraries that it uses; those on files below a watched folder are
// counted as moments, and at one of them the program is killed or the call fails.
#pragma once

#include <string>

namespace tarvolinex {

enum class Fault {
  Kill,      // killed before the call; a write has written half of its bytes
  Failure,   // the one call fails: no space for what writes, an input/output error for the others
  FullDisk,  // from here on there is no space: what writes fails, what renames and deletes goes on
};

// In one process, usually a forked one.
// moment: from 1; 0 counts and does nothing.
void WatchFolder(const std::string& folder, Fault fault, long moment);
void StopWatching();

// How many moments there were since WatchFolder, also of a forked process that is over. Of a full disk only the calls
// that write count.
long MomentsSeen();

}  // namespace tarvolinex
