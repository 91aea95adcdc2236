#include "distribute/Batch.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "core/Limits.h"
#include "distribute/InstallPackage.h"
#include "distribute/Unattended.h"
#include "distribute/WorkFolders.h"
#include "exchange/Csv.h"
#include "platform/RuntimeError.h"
#include "platform/files/Deflated.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Ingredients.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

// Threads take the jobs one by one; whoever waits for them learns of each that is done.
class Workers {
 public:
  Workers(const std::vector<BatchJob>& jobs, std::function<BatchResult(const BatchJob&, int worker)> make)
      : jobs_(jobs), make_(std::move(make)) {
    const unsigned cores = std::max(std::thread::hardware_concurrency(), 1U);
    const auto count = std::min<std::size_t>(cores, jobs.size());
    for (std::size_t i = 0; i < count; ++i) {
      threads_.emplace_back([this, i] { Work(static_cast<int>(i)); });
    }
  }
  ~Workers() { Stop(); }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // The results that have come since the last call; waits a little when there are none. False when all are done.
  bool Next(std::vector<std::pair<std::size_t, BatchResult>>& results) {
    constexpr auto kLook = std::chrono::milliseconds(50);
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kLook, [&] { return !done_.empty(); });
    results = std::exchange(done_, {});
    given_ += results.size();
    return given_ < jobs_.size();
  }

  void Pause(bool paused) { paused_ = paused; }

  // Those that are in hand are still made: their results come from Next.
  void Stop() {
    stopped_ = true;
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

 private:
  void Work(int worker) {
    constexpr auto kLook = std::chrono::milliseconds(50);
    while (!stopped_) {
      if (paused_) {
        std::this_thread::sleep_for(kLook);
        continue;
      }
      const std::size_t i = next_++;
      if (i >= jobs_.size()) return;
      BatchResult result = make_(jobs_[i], worker);
      const std::lock_guard lock(mutex_);
      done_.emplace_back(i, std::move(result));
      changed_.notify_one();
    }
  }
  const std::vector<BatchJob>& jobs_;
  std::function<BatchResult(const BatchJob&, int)> make_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> stopped_ = false, paused_ = false;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::pair<std::size_t, BatchResult>> done_;
  std::size_t given_ = 0;
  std::vector<std::thread> threads_;
};

void ReadJob(Database& database, BatchJob& job) {
  const SupplierRow row = ReadSupplier(database, job.supplierId);
  job.fault = row.Found() ? row.rateCardFault : Tr("There is no such supplier any more");
  job.publication.supplier = row.settings;
  job.publication.forms = LinkedForms(database, job.supplierId);
}

// All that were made, together.
void NoteAllMade(Database& database, const std::vector<BatchJob>& jobs,
                 const std::vector<std::optional<BatchResult>>& results, int sendType, Reporter& reporter) {
  try {
    database.KeepDailyCopy();
    database.Plain().Begin();
    const Branding& branding = jobs.front().publication.branding;
    const std::string organisation = OrganisationIngredients(branding);
    FormPrints prints(branding.folders.data);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
      if (!results[i] || !results[i]->done) continue;
      const Publication& publication = jobs[i].publication;
      Delivery made;
      made.date = DeliveryDate(reporter.Now());
      made.supplierId = jobs[i].supplierId;
      made.companyName = jobs[i].companyName;
      made.sentAs = sendType == kBatchFolder ? "folder" : WayName(sendType);
      made.result = "made";
      AddDeliveries(database, {made}, organisation,
                    SupplierIngredients(publication.supplier, publication.forms, prints));
    }
    database.Plain().Commit();
  } catch (const RuntimeError& failure) {
    try {
      database.Plain().Rollback();
    } catch (const RuntimeError&) {
      // A statement that failed has rolled back by itself.
    }
    ReportFailure(reporter, Marked("What has gone out could not be noted in the database"), failure.Description());
  }
}

}  // namespace

std::vector<BatchJob> BatchJobs(Database& database, const Branding& branding,
                                const std::function<bool(const Standing&)>& wanted) {
  CheckLimits(branding.prefs);
  std::vector<BatchJob> jobs;
  ForEachStanding(database, branding, [&](const Standing& standing) {
    if (wanted(standing)) jobs.push_back({standing.supplierId, standing.companyName, {branding, {}, {}}, ""});
  });
  for (BatchJob& job : jobs) ReadJob(database, job);
  return jobs;
}

BatchJob JobFor(Database& database, const Branding& branding, int supplierId, const std::string& companyName) {
  CheckLimits(branding.prefs);
  BatchJob job = {supplierId, companyName, {branding, {}, {}}, ""};
  ReadJob(database, job);
  return job;
}

std::string BatchFileName(const BatchJob& job) {
  constexpr std::size_t kMost = 60;
  std::string name = std::to_string(job.supplierId) + " ";
  for (const char c : job.companyName) {
    const bool plain =
        (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' ' || c == '-';
    if (name.size() < kMost) name += plain ? c : '_';
  }
  return std::string(Trim(name));
}

std::string MakeOne(const BatchJob& job, int sendType, const std::string& calculatorFolder, const std::string& path,
                    std::chrono::system_clock::time_point now, std::string& warnings) {
  if (!job.fault.empty()) return job.fault;
  Unattended reporter(now);
  Publication publication = job.publication;
  publication.branding.folders.calculator = calculatorFolder;
  try {
    if (!FolderExists(calculatorFolder)) MakeFolder(calculatorFolder);
    // The programs that an install file carries.
    for (const char* program : {"setup.exe", "CalcInstall.CAB"}) {
      const std::string source = job.publication.branding.folders.calculator + program;
      if (sendType != kBatchFolder && FileExists(source)) CopyFile(source, calculatorFolder + program);
    }
    BringInstallIcon(publication.branding);
    BuildCalculatorFolder(publication, reporter);
    const bool made = sendType == kBatchFolder || BuildDistFiles(publication.branding, sendType, path, reporter);
    warnings = reporter.Warnings();
    if (made && reporter.Reports().empty()) return {};
    return reporter.Reports().empty() ? Tr("It could not be made") : reporter.Reports();
  } catch (const RuntimeError& failure) {
    return failure.Description();
  } catch (const std::exception& failure) {  // on a thread of its own: nobody else would catch it
    return failure.what();
  }
}

std::vector<BatchResult> MakeBatch(Database& database, const std::vector<BatchJob>& jobs, int sendType,
                                   const std::string& outputFolder, Reporter& reporter) {
  if (!FolderExists(outputFolder)) MakeFolder(outputFolder);
  if (jobs.empty()) return {};
  // Once, before several look at it.
  if (!RefreshPages(jobs.front().publication.branding, reporter)) return {};
  const WorkFolders folders(outputFolder + "\\work");
  const DeflateOnce once;
  const auto now = reporter.Now();
  std::vector<std::optional<BatchResult>> results(jobs.size());
  {
    Workers workers(jobs, [&](const BatchJob& job, int worker) {
      BatchResult result = {job.supplierId, job.companyName, false, "", outputFolder + "\\" + BatchFileName(job)};
      const bool folder = sendType == kBatchFolder;
      if (!folder) result.path += std::string(".") + WayName(sendType);
      std::string warnings;
      result.detail = MakeOne(job, sendType, folder ? result.path + "\\" : folders.Of(static_cast<std::size_t>(worker)),
                              result.path, now, warnings);
      result.done = result.detail.empty();
      if (result.done) result.detail = warnings;
      if (!result.done) result.path.clear();
      return result;
    });
    std::size_t done = 0;
    std::vector<std::pair<std::size_t, BatchResult>> came;
    for (bool more = true; more;) {
      const bool last = reporter.Stopped();
      workers.Pause(reporter.Paused());
      if (last) workers.Stop();
      more = workers.Next(came) && !last;
      for (auto& [job, result] : came) {
        reporter.SetStatus(false, result.companyName, static_cast<int>(++done * 100 / jobs.size()));
        results[job] = std::move(result);
      }
      reporter.DoEvents();
    }
  }
  NoteAllMade(database, jobs, results, sendType, reporter);
  reporter.SetStatus(false, "", -1);
  std::vector<BatchResult> rows;
  for (auto& result : results) {
    if (result) rows.push_back(std::move(*result));
  }
  return rows;
}

std::string BatchReport(const std::vector<BatchResult>& results) {
  std::string report = "ID,CompanyName,Result,Detail,Path\n";
  for (const BatchResult& each : results) {
    report += std::to_string(each.supplierId) + "," + CsvCell(each.companyName) + "," +
              (each.done ? "done" : "failed") + "," + CsvCell(each.detail) + "," +
              CsvCell(each.path.empty() ? "" : NativePath(each.path)) + "\n";
  }
  return report;
}

}  // namespace tarvolinex
