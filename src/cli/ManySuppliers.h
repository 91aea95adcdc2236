// Commands that work for all suppliers, or for those whose calculators are out of date.
#pragma once

#include <functional>

#include "cli/Commands.h"
#include "distribute/Batch.h"

namespace tarvolinex {

// Whether --all or --stale stands there. Throws UsageError when both do, or --supplier beside them.
bool IsForMany(const Arguments& parsed);
// What the option chooses.
std::function<bool(const Standing&)> WantedBy(const Arguments& parsed);

// Makes all of them in --output, writes "report.csv" there and prints its path. Returns the exit status.
int MakeForMany(Run& run, const Arguments& parsed, int sendType);

// While one lives, the first interruption (Ctrl+C, or a request to end) is the user's wish to stop the run: what is in
// hand is ended, and the rest is left. The second one ends the program at once.
class StopWhenInterrupted {
 public:
  explicit StopWhenInterrupted(Run& run);
  ~StopWhenInterrupted();
  StopWhenInterrupted(const StopWhenInterrupted&) = delete;
  StopWhenInterrupted& operator=(const StopWhenInterrupted&) = delete;
};

}  // namespace tarvolinex
