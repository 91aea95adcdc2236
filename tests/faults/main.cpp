// faults [--every N] [--moment N] [JOB...]: does each job on a machine that fails at one moment, for every moment of
// it: every write, flush, renaming, deletion and creation. After each the database is sound and holds what stood there
// before or after the step, every file is the old or the new one, the next start, the next publish and the job itself
// work, both pages are of one save, and no file is left over. Prints how many moments were tried.
//   --every N    only each N-th moment of a longer job, another one for each kind of fault
//   --moment N   only this one
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "faults/Faults.h"
#include "faults/Jobs.h"
#include "platform/files/Files.h"
#include "platform/files/ZipComponent.h"
#include "support/Failure.h"

namespace tarvolinex {

namespace {

constexpr std::array<std::pair<Fault, const char*>, 3> kFaults = {
    {{Fault::Kill, "killed"}, {Fault::Failure, "failed"}, {Fault::FullDisk, "full"}}};

int complaints = 0;

class Trial {
 public:
  Trial(const Workplace& place, const Job& job) : place_(place), job_(job) {}
  long Moments(Fault fault) {
    place_.Restore();
    RunWatched(fault, 0);
    return MomentsSeen();
  }
  // What can be told before anything fails.
  void Learn() {
    moment_ = "undisturbed";
    place_.Restore();
    before_ = place_.Files();
    const std::string noted = place_.Work() + "/../business ";
    Judge("it", [&] {
      return job_.run([&](std::size_t done) {
        *done_ = done;
        WriteFile(noted + std::to_string(done), Business());
      });
    });
    for (std::size_t done = 0; done <= *done_; ++done) business_.push_back(ReadFile(noted + std::to_string(done)));
    after_ = place_.Files();
    GoOn();
    atLast_ = place_.Files();
    twice_ = Business();
  }
  void Try(Fault fault, const char* word, long moment) {
    moment_ = std::string(word) + " at " + std::to_string(moment);
    place_.Restore();
    *done_ = 0;
    const int status = RunWatched(fault, moment);
    CheckBusiness(status);
    if (!job_.day) CheckFiles(status);
    CheckPackage();
    GoOn();
    CheckWhatIsLeft();
  }

 private:
  void Complain(const std::string& about) {
    std::cout << "FAIL " << job_.name << ", " << moment_ << ": " << about << '\n';
    ++complaints;
  }
  // It has to end well.
  void Judge(const std::string& what, const std::function<int()>& step) {
    const int status = place_.Run(step);
    if (status != 0) Complain(what + " ends with " + std::to_string(status) + ": " + place_.Words());
  }
  std::string Business() const {
    return Workplace::Business(job_.dataFolder.empty() ? place_.App() : job_.dataFolder, !job_.fresh);
  }
  int RunWatched(Fault fault, long moment) {
    return place_.Run([&] {
      WatchFolder(place_.Work(), fault, moment);
      const int status = job_.run([&](std::size_t done) { *done_ = done; });
      StopWatching();
      return status;
    });
  }
  void CheckBusiness(int status) {
    const std::string business = Business();
    const std::size_t done = *done_;
    const bool isNext = status != 0 && done + 1 < business_.size() && business == business_[done + 1];
    if (business != business_.at(done) && !isNext) {
      Complain("the database is neither as before nor as after step " + std::to_string(done) + ": " + place_.Words());
    }
  }
  void CheckFiles(int status) {
    for (const auto& [name, content] : place_.Files()) {
      // These tell how far the program is, who has got mail, and what was typed last.
      const std::set<std::string> marks = {"app/Pages.INI", "app/Delivered.lst", "app/General.INI", "app/Sent.lst"};
      // An old file that could not be deleted has been reported, and counts among those of its name.
      const bool reported = status > 0 && name.starts_with("app/calculator/");
      const bool varies = marks.contains(name) || reported || job_.varying.contains(name) || name.ends_with(".eml") ||
                          IsUnfinished(name);
      const auto is = [&, &name = name, &content = content](const std::map<std::string, std::string>& known) {
        const auto found = known.find(name);
        return found != known.end() && found->second == content;
      };
      if (!varies && !is(before_) && !is(after_)) Complain(name + " is neither the old nor the new one");
    }
    for (const auto& [name, content] : before_) {
      const bool anew = name.starts_with("app/calculator/") || IsUnfinished(name);
      if (!anew && after_.contains(name) && !FileExists(place_.Work() + "/" + name)) Complain(name + " is gone");
    }
  }
  void CheckPackage() {
    ZipComponent zip;
    zip.ZipFileName = place_.Work() + "/" + job_.package;
    zip.UnzipToFolder = place_.Work() + "/../unpacked";
    if (job_.package.empty() || !FileExists(zip.ZipFileName)) return;
    const RuntimeError failure = FailureOf([&] { zip.Unzip(); });
    if (failure.Number() != 0) Complain(failure.Description());
  }
  // What follows a job that was cut off.
  void GoOn() {
    std::vector<std::pair<const char*, std::function<int()>>> steps = {
        {"the next start", [&] { return StartAndCloseWindow(place_); }},
        {"the next publish", [&] { return PublishAndCompare(place_); }}};
    if (job_.day) {
      const std::string out = place_.Work() + "/out";
      for (const std::string& words : {"package --supplier 1 --output " + out + "/made.zip",
                                       std::string("send --supplier 1 --contact 1 --as zip --subject A --message B")}) {
        steps.emplace_back("the next morning", [&, words] { return RunProgram(place_, words); });
      }
    } else {
      // A window would ask who the organisation is, and put that into the database.
      steps.emplace(job_.fresh ? steps.begin() : steps.end(), "the job done once more",
                    [&] { return job_.run([](std::size_t) {}); });
    }
    for (const auto& [name, step] : steps) Judge(name, step);
  }
  void CheckWhatIsLeft() {
    for (const auto& [name, content] : place_.Files()) {
      // A database that stands beside a package is kept, also when it has come from that package. A journal without its
      // mark holds nothing to undo; it goes with the next change of its database.
      const bool kept = name.ends_with(".eml") || name.find("Backup/Replaced") != std::string::npos ||
                        (name.ends_with(".mdb-journal") && !content.starts_with('\xD9'));
      if (!kept && (!atLast_.contains(name) || IsUnfinished(name))) Complain(name + " is left over");
    }
    if (job_.day) return;
    for (const auto& [name, content] : atLast_) {
      // The copy of a day that could not be made keeps nobody from working.
      const bool optional = name.ends_with(".eml") || name.find("Backup/") != std::string::npos || IsUnfinished(name);
      if (!FileExists(place_.Work() + "/" + name) && !optional) Complain(name + " is missing in the end");
    }
    const std::string business = Business();
    if (business != business_.back() && business != twice_) Complain("the database is another in the end");
  }

  const Workplace& place_;
  const Job& job_;
  std::map<std::string, std::string> before_, after_, atLast_;
  std::vector<std::string> business_;  // before each step, and after the last
  std::string twice_;                  // after the job was done once more
  std::string moment_;
  std::size_t* const done_ = static_cast<std::size_t*>(
      mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
};

void Prepare(const Workplace& place) {
  const auto run = [&](const std::string& words, const std::string& input = "") {
    if (place.Run([&] { return RunProgram(place, words, input); }) == 0) return;
    std::cout << "FAIL preparing: " << place.Words();
    std::exit(1);
  };
  const std::string out = place.Work() + "/out";
  MakeFolder(out);
  run("preferences write",
      R"({"OrgCompanyName": "Northgate Leasing", "OrgEmail": "l@northgate.example", "OrgContactName": "A"})");
  WriteFile(place.App() + "/Mail.INI", "[PROFILES]\r\nDefaultProfile=out\r\n[out]\r\nTransport=outbox\r\n");
  WriteFile(out + "/form.html", "<html><title>Enquiry</title><body>|Supplier Town|, |Calculator Term|</body></html>");
  WriteFile(out + "/Supplier.dat", std::string(555, ' '));
  WriteFile(out + "/quotes.csv", "old\n");
  for (const char* ending : {"exe", "zip"}) {
    run("package --supplier 1 --output " + out + "/made." + ending);
    CopyFile(out + "/made." + ending, place.App() + "/CalcInstall." + ending);
  }
  run("live --supplier 1 " + out + "/form.html");
  // The first write of the day copies the database.
  std::filesystem::remove_all(place.App() + "/Backup");
  place.Keep();
}

struct Choice {
  long every = 1, only = 0;
  std::set<std::string> jobs;  // empty for all
  bool Has(const std::string& job) const { return jobs.empty() || jobs.contains(job); }
  // What is over in a few moments is tried at all of them.
  bool Has(long moment, long kind, long moments) const {
    constexpr long kFew = 30;
    return only != 0 ? moment == only : moments < kFew || (moment + kind) % every == 0;
  }
};

Choice FaultChoiceOf(const std::vector<std::string>& words) {
  Choice choice;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--every") {
      choice.every = std::stol(words.at(++i));
    } else if (words[i] == "--moment") {
      choice.only = std::stol(words.at(++i));
    } else {
      choice.jobs.insert(words[i]);
    }
  }
  return choice;
}

long TryAll(Trial& trial, const std::string& name, const Choice& choice) {
  const auto begin = std::chrono::steady_clock::now();
  trial.Learn();
  long all = 0, tried = 0, kind = 0;
  for (const auto& [fault, word] : kFaults) {
    const long moments = trial.Moments(fault);
    all += moments;
    ++kind;
    for (long moment = 1; moment <= moments; ++moment) {
      if (!choice.Has(moment, kind, moments)) continue;
      trial.Try(fault, word, moment);
      ++tried;
    }
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  std::printf("%-20s %5ld of %5ld moments, %6.1f s\n", name.c_str(), tried, all, took.count());
  std::fflush(stdout);
  return tried;
}

int Main(const Choice& choice) {
  const Workplace place;
  Prepare(place);
  long tried = 0;
  for (const Job& job : AllJobs(place)) {
    if (!choice.Has(job.name)) continue;
    if (job.prepare) {
      place.Restore();
      job.prepare();
      place.Keep();
    }
    Trial trial(place, job);
    tried += TryAll(trial, job.name, choice);
  }
  std::printf("%ld moments tried, %d complaints\n", tried, complaints);
  return complaints == 0 && tried > 0 ? 0 : 1;
}

}  // namespace

}  // namespace tarvolinex

int main(int argc, char** argv) {
  return tarvolinex::Main(tarvolinex::FaultChoiceOf({argv + 1, argv + argc}));
}
