#include "calc/Schedule.h"

#include <charconv>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/RowPipeline.h"
#include "controls/Desktop.h"
#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

// Appends cells to a line, each with the comma after it; fast, because a schedule has many.
class LineWriter {
 public:
  explicit LineWriter(std::string& out) : out_(out) {}
  void Number(long number) {
    char text[24];
    Append(text, std::to_chars(text, text + sizeof text, number).ptr);
  }
  // Whole hundredths.
  void Money(Currency amount) {
    constexpr int kFinerDigits = 2;
    char text[24];
    Append(text, amount.WriteText(text) - kFinerDigits);
  }
  void Text(std::string_view text) {
    out_ += text;
    out_ += ',';
  }
  void End() { out_.back() = '\n'; }

 private:
  void Append(const char* from, const char* to) {
    out_.append(from, to);
    out_ += ',';
  }
  std::string& out_;
};

void AppendSchedule(long row, const Schedule& schedule, bool internal, std::string& out) {
  LineWriter line(out);
  for (const ScheduleLine& each : schedule.lines) {
    line.Number(row);
    line.Number(each.number);
    line.Text(DayText(each.date));
    line.Text(KindName(each.kind));
    for (const Currency amount : {each.amount, each.tax, each.amountIncTax}) line.Money(amount);
    if (internal) {
      for (const Currency amount : {each.interest, each.principal, each.balance}) line.Money(amount);
    }
    line.End();
  }
}

CalendarDay StartOf(const Arguments& parsed) {
  const std::string text = parsed.Value("--start");
  if (text.empty()) return LocalDay(TheDesktop().Now());
  const auto day = DayFromText(text);
  if (!day) throw UsageError{"--start " + text + " is no day; write it as YYYY-MM-DD"};
  return *day;
}

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
  const CalendarDay start = StartOf(parsed);
  const bool internal = parsed.Has("--internal");
  std::vector<SheetColumn> columns = {{"Row", CellKind::Count},
                                      {"Number", CellKind::Count},
                                      {"Date", CellKind::Date},
                                      {"Kind"},
                                      {"Amount", CellKind::Money, true},
                                      {"Tax", CellKind::Money, true},
                                      {"AmountIncTax", CellKind::Money, true}};
  if (internal) {
    columns.push_back({"Interest", CellKind::Money, true});
    columns.push_back({"Principal", CellKind::Money, true});
    columns.push_back({"Balance", CellKind::Money});
  }
  const RowInput input = ReadRowInput(run, parsed);
  const auto output = TableOutput::To(parsed.Value("--output"), columns);
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
  const auto output = TableOutput::To(parsed.Value("--output"), {{"Row", CellKind::Count},
                                                                 {"NumberOfPayments", CellKind::Count},
                                                                 {"Payment", CellKind::Money},
                                                                 {"PaymentIncTax", CellKind::Money},
                                                                 {"Total", CellKind::Money},
                                                                 {"TotalIncTax", CellKind::Money}});
  WorkOnRows(input, *output, [&] {
    return [&](const RowJob& job, std::string& out) {
      LineWriter line(out);
      for (const auto& variant : CompareTerms(job.row.mode, job.row.quote, job.terms, terms)) {
        if (!variant) FailToPrice(job);
        line.Number(job.number);
        line.Number(variant->quote.NumberOfPayments);
        for (const Currency amount : {variant->quote.Payment, variant->quote.PaymentIncTax}) line.Money(Shown(amount));
        for (const Currency amount : {variant->total, variant->totalIncTax}) line.Money(amount);
        line.End();
      }
    };
  });
  output->Commit();
  return kDone;
}

}  // namespace tarvolinex
