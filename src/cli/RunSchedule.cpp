#include "calc/Schedule.h"

#include <charconv>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/RowPipeline.h"
#include "exchange/QuoteTables.h"

namespace tarvolinex {

namespace {

std::vector<std::int16_t> TermsOf(const Arguments& parsed) {
  const std::string list = parsed.Value("--terms");
  if (list.empty()) throw UsageError{"--terms N,N,... is needed"};
  std::vector<std::int16_t> terms;
  const char* at = list.data();
  const char* const end = at + list.size();
  for (;; ++at) {
    std::int16_t term = 0;
    const auto read = std::from_chars(at, end, term);
    if (read.ec != std::errc() || term < 1 || (read.ptr != end && *read.ptr != ',')) {
      throw UsageError{"--terms " + list + " is no list of numbers of payments, such as 24,36,48"};
    }
    terms.push_back(term);
    at = read.ptr;
    if (at == end) return terms;
  }
}

}  // namespace

int RunSchedule(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--general", "--start", "--output"}, {"--internal"}, 1);
  const CalendarDay start = parsed.Day("--start").value_or(LocalDay(run.Now()));
  const bool internal = parsed.Has("--internal");
  const RowInput input = ReadRowInput(run, parsed);
  const auto output = TableOutput::To(parsed.Value("--output"), ScheduleColumns(internal));
  WorkOnRows(input, *output, [&] {
    return [start, internal, schedule = Schedule()](const RowJob& job, std::string& out) mutable {
      const auto quote = Priced(job.row.mode, job.row.quote, job.terms);
      if (!quote) FailToPrice(job);
      MakeSchedule(*quote, start, schedule);
      AppendSchedule(job.number, schedule, internal, out);
    };
  });
  output->Commit();
  return kDone;
}

int RunCompare(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--general", "--terms", "--output"}, {}, 1);
  const std::vector<std::int16_t> terms = TermsOf(parsed);
  const RowInput input = ReadRowInput(run, parsed);
  const auto output = TableOutput::To(parsed.Value("--output"), VariantColumns());
  WorkOnRows(input, *output, [&] {
    return [&](const RowJob& job, std::string& out) {
      const auto variants = CompareTerms(job.row.mode, job.row.quote, job.terms, terms);
      for (std::size_t i = 0; i < variants.size(); ++i) {
        if (!variants[i]) FailToPrice(job, " at " + std::to_string(terms[i]) + " payments");
        AppendVariant(job.number, *variants[i], out);
      }
    };
  });
  output->Commit();
  return kDone;
}

}  // namespace tarvolinex
