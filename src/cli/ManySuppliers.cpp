#include "cli/ManySuppliers.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "platform/files/Files.h"

namespace tarvolinex {

namespace {

std::atomic<std::atomic<bool>*> toBeStopped = nullptr;

extern "C" void StopRun(int signal) {
  std::signal(signal, SIG_DFL);
  if (std::atomic<bool>* stop = toBeStopped) *stop = true;
}

// A signal that whoever started the program keeps from it stays so.
void Handle(void (*handler)(int)) {
  for (const int signal : {SIGINT, SIGTERM}) {
    if (std::signal(signal, handler) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

}  // namespace

StopWhenInterrupted::StopWhenInterrupted(Run& run) {
  toBeStopped = &run.StopRequested;
  Handle(StopRun);
}

StopWhenInterrupted::~StopWhenInterrupted() {
  Handle(SIG_DFL);
  toBeStopped = nullptr;
}

bool IsForMany(const Arguments& parsed) {
  const bool all = parsed.Has("--all"), stale = parsed.Has("--stale");
  if (all && stale) throw UsageError{"--all and --stale exclude each other"};
  if ((all || stale) && parsed.Has("--supplier")) throw UsageError{"--supplier goes with neither --all nor --stale"};
  return all || stale;
}

std::function<bool(const Standing&)> WantedBy(const Arguments& parsed) {
  const bool all = parsed.Has("--all");
  return [all](const Standing& standing) { return all || standing.state == Currentness::Stale; };
}

int MakeForMany(Run& run, const Arguments& parsed, int sendType) {
  const std::string output = parsed.Value("--output");
  if (output.empty()) throw UsageError{"--output DIR is needed"};
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  const std::string folder = WholePath(output);
  const auto jobs = BatchJobs(database, OwnBranding(run), WantedBy(parsed));
  const StopWhenInterrupted stop(run);
  const auto results = MakeBatch(database, jobs, sendType, folder, run);
  const std::string report = folder + "\\report.csv";
  WriteFile(report, BatchReport(results));
  std::cout << NativePath(report) << '\n';
  const bool whole = results.size() == jobs.size() &&
                     std::all_of(results.begin(), results.end(), [](const BatchResult& each) { return each.done; });
  return whole ? kDone : kFailed;
}

}  // namespace tarvolinex
