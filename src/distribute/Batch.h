// Calculators of many suppliers, made on all cores.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "distribute/Standing.h"
#include "publish/CalculatorFolder.h"
#include "store/Database.h"

namespace tarvolinex {

// One supplier's, ready to be made; the calculator folder of its branding is still to be chosen.
struct BatchJob {
  int supplierId = 0;
  std::string companyName;
  Publication publication;
  std::string fault;  // why it can not be published; empty = it can
};

// Those of the suppliers that are wanted, in the order of the names. Throws RuntimeError.
std::vector<BatchJob> BatchJobs(Database& database, const Branding& branding,
                                const std::function<bool(const Standing&)>& wanted);

// The one of a letter or a row that names the supplier so. Throws RuntimeError.
BatchJob JobFor(Database& database, const Branding& branding, int supplierId, const std::string& companyName);

struct BatchResult {
  int supplierId = 0;
  std::string companyName;
  bool done = false;
  std::string detail;  // why not, or a warning
  std::string path;    // of the folder or file; as the program writes paths
};

// As kSend... of InstallPackage, or a published folder.
inline constexpr int kBatchFolder = -1;

// Makes a folder or an install file for each, named by the ID and the supplier's name, in the output folder, which is
// made when it is missing; what stands there under such a name is replaced. One that fails is its row and no more. The
// reporter shows the name in hand and may stop the rest: they have no row then. Notes what was made. Throws
// RuntimeError when nothing can be made at all.
std::vector<BatchResult> MakeBatch(Database& database, const std::vector<BatchJob>& jobs, int sendType,
                                   const std::string& outputFolder, Reporter& reporter);

// ID, CompanyName, Result, Detail, Path as CSV, with its heading, for "report.csv".
std::string BatchReport(const std::vector<BatchResult>& results);

// Builds one in a calculator folder of its own and packs it under the path; kBatchFolder only builds. Says what went
// wrong, or "" when nothing did; warnings are added.
std::string MakeOne(const BatchJob& job, int sendType, const std::string& calculatorFolder, const std::string& path,
                    std::chrono::system_clock::time_point now, std::string& warnings);

// "12 Acme Print": a name that every system takes.
std::string BatchFileName(const BatchJob& job);

}  // namespace tarvolinex
