#include "cli/PricedRows.h"

#include <map>
#include <mutex>

#include "calc/Schedule.h"

namespace tarvolinex {

namespace {

// For rows that are not printed.
class NoOutput final : public TableOutput {
 public:
  void Write(std::string_view) override {}
  void Commit() override {}
};

}  // namespace

std::vector<QuoteFigures> PricedRows(const RowInput& input, void (*check)(QuoteFigures)) {
  std::map<long, QuoteFigures> rows;
  std::mutex taking;
  NoOutput nowhere;
  WorkOnRows(input, nowhere, [&] {
    return [&](const RowJob& job, std::string&) {
      const auto priced = Priced(job.row.mode, job.row.quote, job.terms);
      if (!priced) FailToPrice(job);
      const QuoteFigures figures = {job.row.mode, job.row.capitalCostLocked, job.row.quote, *priced};
      if (check) check(figures);
      const std::lock_guard lock(taking);
      rows[job.number] = figures;
    };
  });
  std::vector<QuoteFigures> figures;
  for (const auto& [number, row] : rows) figures.push_back(row);
  return figures;
}

}  // namespace tarvolinex
