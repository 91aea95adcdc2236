#include "cli/RowPipeline.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <fstream>
#include <iostream>
#include <mutex>
#include <thread>

#include "cli/ChosenSupplier.h"
#include "exchange/Csv.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"

namespace tarvolinex {

namespace {

SupplierCalcSettingsRecord SupplierOf(Run& run, const std::string& source) {
  SupplierCalcSettingsRecord supplier;
  if (source.empty()) return supplier;
  if (!IsIdOrNumber(source) || FileExists(source)) {
    if (FileExists(source) && FileLength(source) >= kCalculatorPreferencesSize) {
      throw RuntimeError(kItemNotFound, source + " is a preferences record, not a supplier's");
    }
    ReadRecord(source, supplier);
    return supplier;
  }
  Database database(run);
  return ChooseSupplier(run, database, source).settings;
}

// Pieces of the input go to whichever thread is free; what they come to is written in turn.
class Pipeline {
 public:
  Pipeline(CsvSource& source, const RowInput& input, TableOutput& output)
      : source_(source), input_(input), output_(output) {}

  void Run(const std::function<RowWork()>& makeWork) {
    const QuoteColumns columns = ReadHeader();
    columns_ = &columns;
    // A short input is done before a thread would have begun.
    constexpr std::size_t kWorthAThread = 1 << 14;
    const std::size_t threads =
        first_.text.size() < kWorthAThread ? 1 : std::clamp(std::thread::hardware_concurrency(), 1U, 16U);
    std::vector<std::jthread> others;
    for (std::size_t i = 1; i < threads; ++i) others.emplace_back([&] { Work(makeWork()); });
    Work(makeWork());
    for (std::jthread& other : others) other.join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  // Leaves the first piece without the heading.
  QuoteColumns ReadHeader() {
    std::vector<std::string_view> cells;
    while (source_.Next(first_)) {
      CsvReader reader(first_.text, source_.Name(), first_.linesBefore);
      if (!reader.Next(cells)) continue;
      QuoteColumns columns(cells, reader.Place());
      first_ = {std::string(reader.Rest()), reader.Line(), 1};
      return columns;
    }
    throw RuntimeError(kItemNotFound, source_.Name() + " has no header line");
  }

  bool Take(CsvPiece& piece, long& turn) {
    const std::lock_guard lock(reading_);
    if (ended_ || stopped_) return false;
    turn = pieces_++;
    if (turn == 0) {
      piece = std::move(first_);
      return true;
    }
    try {
      ended_ = !source_.Next(piece);
    } catch (...) {
      ended_ = true;
      WaitFor(turn);
      Fail(std::current_exception());
      Pass();
    }
    return !ended_;
  }

  void Work(const RowWork& work) {
    CsvPiece piece;
    std::string out;
    for (long turn = 0; Take(piece, turn);) {
      try {
        PriceRows(piece, turn, work, out);
        WaitFor(turn);
        if (!failure_) output_.Write(out);
      } catch (...) {
        WaitFor(turn);
        Fail(std::current_exception());
      }
      out.clear();
      Pass();
    }
  }

  void PriceRows(const CsvPiece& piece, long turn, const RowWork& work, std::string& out) {
    CsvReader reader(piece.text, source_.Name(), piece.linesBefore);
    const QuoteTerms terms{input_.supplier, input_.taxRate};
    const std::function<std::string()> place = [&] { return reader.Place(); };
    long number = piece.rowsBefore - 1;  // without the heading
    for (std::vector<std::string_view> cells; reader.Next(cells);) {
      QuoteRow row;
      columns_->Read(cells, row, place);
      QuoteTerms own = terms;
      own.capitalCostLocked = row.capitalCostLocked;
      try {
        work({row, own, ++number, place}, out);
      } catch (const RuntimeError& failure) {
        if (failure.Number() != kOverflow) throw;
        throw RuntimeError(kOverflow, reader.Place() + ": " + failure.Description());
      }
      if (out.size() < kMostKept) continue;
      // Long results are not kept: they wait here until it is their turn.
      WaitFor(turn);
      if (failure_) return;
      output_.Write(out);
      out.clear();
    }
  }

  void WaitFor(long turn) {
    std::unique_lock lock(writing_);
    passed_.wait(lock, [&] { return turn_ == turn; });
  }
  // The rest belongs to whose turn it is.
  void Fail(std::exception_ptr failure) {
    if (!failure_) failure_ = std::move(failure);
    stopped_ = true;
  }
  void Pass() {
    {
      const std::lock_guard lock(writing_);
      ++turn_;
    }
    passed_.notify_all();
  }

  static constexpr std::size_t kMostKept = 1 << 22;
  CsvSource& source_;
  const RowInput& input_;
  TableOutput& output_;
  const QuoteColumns* columns_ = nullptr;
  CsvPiece first_;
  std::mutex reading_, writing_;
  std::condition_variable passed_;
  long pieces_ = 0, turn_ = 0;
  bool ended_ = false;
  std::atomic<bool> stopped_ = false;
  std::exception_ptr failure_;  // of the earliest row
};

}  // namespace

RowInput ReadRowInput(Run& run, const Arguments& arguments) {
  CalculatorPreferencesRecord chosen;
  const std::string general = arguments.Value("--general");
  if (!general.empty()) ReadRecord(general, chosen);
  const SupplierCalcSettingsRecord supplier = SupplierOf(run, arguments.Value("--supplier"));
  // A shared database has brought the office's preferences by now; a file that is named goes before them.
  if (!general.empty()) run.CalculatorPreferences = chosen;
  return {arguments.Input(), supplier, run.CalculatorPreferences.TaxRate};
}

void WorkOnRows(const RowInput& input, TableOutput& output, const std::function<RowWork()>& makeWork) {
  if (input.source == "-") {
    std::ios::sync_with_stdio(false);
    CsvSource source(std::cin, "standard input");
    return Pipeline(source, input, output).Run(makeWork);
  }
  if (FolderExists(input.source)) throw RuntimeError(kPathAccess, input.source + " is a folder");
  if (!FileExists(input.source)) throw RuntimeError(kFileNotFound, input.source + " does not exist");
  std::ifstream file(NativePath(input.source), std::ios::binary);
  if (!file) throw RuntimeError(kPathAccess, input.source + " cannot be read");
  CsvSource source(file, input.source);
  Pipeline(source, input, output).Run(makeWork);
}

void FailToPrice(const RowJob& job, const std::string& how) {
  throw RuntimeError(kItemNotFound, job.place() + " cannot be priced" + how +
                                        ": no payments are left to run, no payment is given where one decides or no "
                                        "capital cost gives it, or nothing is financed");
}

}  // namespace tarvolinex
