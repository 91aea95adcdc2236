#include "distribute/BuildAhead.h"

#include <algorithm>
#include <thread>

namespace tarvolinex {

namespace {

// One is in the hands of the sender, the others are being built.
std::size_t BuildsAtOnce() {
  constexpr unsigned kMost = 8;
  return 1 + std::clamp(std::thread::hardware_concurrency(), 1U, kMost);
}

}  // namespace

BuildAhead::BuildAhead(const Branding& branding)
    : numbers_(BuildsAtOnce()), folders_(branding.folders.app + "\\CalcInstall") {}

bool BuildAhead::Holds(const Which& which) const {
  return std::any_of(builds_.begin(), builds_.end(), [&](const Build& each) { return each.which == which; });
}

void BuildAhead::DropFirst() {
  if (builds_.front().fault.valid()) builds_.front().fault.wait();
  builds_.pop_front();
}

void BuildAhead::Begin(const Which& which, BatchJob job, std::chrono::system_clock::time_point now) {
  if (!HasRoom()) DropFirst();
  Build& build = builds_.emplace_back(Build{which, next_++ % numbers_, std::move(job), {}});
  const auto make = [job = build.job, sendType = which.sendType, folder = folders_.Of(build.number),
                     file = FileOf(build), now] {
    std::string warnings;
    return MakeOne(job, sendType, folder, file, now, warnings);
  };
  build.fault = std::async(std::launch::async, make);
}

BuildAhead::Built BuildAhead::Take(const Which& which, Reporter& reporter) {
  constexpr auto kLook = std::chrono::milliseconds(20);
  while (builds_.front().which != which) DropFirst();
  Build& build = builds_.front();
  while (build.fault.wait_for(kLook) != std::future_status::ready) reporter.DoEvents();
  return {build.job, build.fault.get(), FileOf(build)};
}

}  // namespace tarvolinex
