// 10,000 kept quotes: their list read, shown, and searched at each keystroke.
#include <benchmark/benchmark.h>

#include "LargeDatabase.h"
#include "support/ScriptedDesktop.h"
#include "ui/quotes/FrmQuotes.h"

namespace tarvolinex {
namespace {

class KeptQuotes {
 public:
  KeptQuotes() {
    UseDesktop(&desktop_);
    database.Open(large_.run.DataFolder);
    KeepManyQuotes(large_.run, database);
  }
  ~KeptQuotes() { UseDesktop(nullptr); }

 private:
  LargeDatabase large_{100};
  ScriptedDesktop desktop_;

 public:
  Run& run = large_.run;
  Database database{run};
};

void ReadList(benchmark::State& state) {
  KeptQuotes kept;
  for (auto _ : state) {
    int count = 0;
    ListQuotes(kept.database, {}, [&](const QuoteListRow&) { ++count; });
    if (count != kQuotes) state.SkipWithError("not all of them");
  }
}
BENCHMARK(ReadList)->Unit(benchmark::kMillisecond);

void FillQuotesWindow(benchmark::State& state) {
  KeptQuotes kept;
  std::vector<RemovedRows> removed;
  for (auto _ : state) {
    FrmQuotes quotes(kept.run, kept.database, {}, removed);
    quotes.Load();
    if (quotes.LvwQuotes.Count() != kQuotes) state.SkipWithError("not all of them");
  }
}
BENCHMARK(FillQuotesWindow)->Unit(benchmark::kMillisecond);

// One letter more and one less: many matches, few, none.
void SearchQuotes(benchmark::State& state) {
  KeptQuotes kept;
  std::vector<RemovedRows> removed;
  FrmQuotes quotes(kept.run, kept.database, {}, removed);
  quotes.Load();
  const char* texts[] = {"c", "cu", "customer 79", "customer 79 press", "nobody", ""};
  std::size_t next = 0;
  for (auto _ : state) quotes.TxtSearch.SetText(texts[next++ % std::size(texts)]);
}
BENCHMARK(SearchQuotes)->Unit(benchmark::kMillisecond);

void SortQuotes(benchmark::State& state) {
  KeptQuotes kept;
  std::vector<RemovedRows> removed;
  FrmQuotes quotes(kept.run, kept.database, {}, removed);
  quotes.Load();
  int column = 0;
  for (auto _ : state) quotes.LvwQuotes.ClickColumn(column++ % 12);
}
BENCHMARK(SortQuotes)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolinex
