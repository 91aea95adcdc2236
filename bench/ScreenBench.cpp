// The drawn window on a large database: from a key press until everything has been painted.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTest>

#include "LargeDatabase.h"
#include "controls/Desktop.h"
#include "qt/PixelGridView.h"
#include "qt/QtDesktop.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FrmMain.h"
#include "ui/options/FrmOptions.h"
#include "ui/quotes/FrmQuotes.h"

namespace tarvolinex {
namespace {

struct DrawnWindow {
  DrawnWindow() {
    UseDesktop(&desktop);
    form.Load();
    desktop.Show(form);
    QApplication::processEvents();
  }
  QWidget* Widget(const char* name) { return desktop.WidgetOf(form)->findChild<QWidget*>(name); }
  LargeDatabase database;
  QtDesktop desktop;
  FrmMain form{database.run};
};

DrawnWindow* drawn = nullptr;

void KeystrokeUntilPainted(benchmark::State& state) {
  QWidget* box = drawn->Widget("TxtProCalc_0");
  box->setFocus();
  int i = 0;
  for (auto _ : state) {
    if (++i % 6 == 0) QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, static_cast<Qt::Key>(Qt::Key_1 + i % 9));
    QApplication::processEvents();
  }
}
BENCHMARK(KeystrokeUntilPainted)->Unit(benchmark::kMillisecond);

void SelectUntilPainted(benchmark::State& state) {
  QWidget* list = drawn->Widget("LvwSuppliers");
  for (auto _ : state) {
    QTest::keyClick(list, Qt::Key_Down);
    QApplication::processEvents();
  }
}
BENCHMARK(SelectUntilPainted)->Unit(benchmark::kMillisecond);

class PaintCount : public QObject {
 public:
  using QObject::QObject;
  int painted = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++painted;
    return false;
  }
};

// A stroke across the icon editor: the pointer is reported eight cells further each time.
void StrokeUntilPainted(benchmark::State& state) {
  FrmIconEdit editor(drawn->database.run);
  editor.SetLoadPic("");
  drawn->desktop.Show(editor);
  QApplication::processEvents();
  auto* grid = drawn->desktop.WidgetOf(editor)->findChild<PixelGridView*>("Picture3");
  PaintCount count;
  grid->installEventFilter(&count);
  QTest::mousePress(grid, Qt::LeftButton, {}, grid->MiddleOf(0, 0).toPoint());
  int i = 0;
  for (auto _ : state) {
    ++i;
    editor.Picture2(i % 16).Press();  // so that cells do change
    const int before = count.painted;
    QTest::mouseMove(grid, grid->MiddleOf(i * 8 % 32, i / 4 % 32).toPoint());
    while (count.painted == before) QApplication::processEvents();
  }
  QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->MiddleOf(0, 0).toPoint());
}
BENCHMARK(StrokeUntilPainted)->Unit(benchmark::kMillisecond);

void AddForms(int count) {
  Connection& connection = drawn->form.database.Plain();
  connection.Begin();
  for (int i = 0; i < count; ++i) {
    connection.Execute("INSERT INTO Forms (Description, LinkName, available) VALUES('Page " + std::to_string(i) +
                       "', 'Page " + std::to_string(i) + "', YES)");
  }
  connection.Commit();
}

// Once with the tree closed, once with its forms in view.
void OpenOptionsUntilPainted(benchmark::State& state) {
  constexpr int kForms = 500;
  static const bool added = (AddForms(kForms), true);
  benchmark::DoNotOptimize(added);
  for (auto _ : state) {
    FrmOptions options(drawn->form.run, drawn->form.database);
    options.Load();
    if (state.range(0) != 0) options.ShowForms();
    drawn->desktop.Show(options);
    QApplication::processEvents();
    state.PauseTiming();
    options.Close();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(OpenOptionsUntilPainted)->ArgName("forms")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// One letter more or other ones in the search of 10,000 kept quotes: all, many, few, none of them match.
void SearchQuotesUntilPainted(benchmark::State& state) {
  static const bool added = (KeepManyQuotes(drawn->database.run, drawn->form.database), true);
  benchmark::DoNotOptimize(added);
  std::vector<RemovedRows> removed;
  FrmQuotes quotes(drawn->form.run, drawn->form.database, {}, removed);
  quotes.Load();
  drawn->desktop.Show(quotes);
  QApplication::processEvents();
  const char* texts[] = {"c", "cu", "customer 79", "customer 79 press", "nobody", ""};
  std::size_t next = 0;
  for (auto _ : state) {
    quotes.TxtSearch.Type(texts[next++ % std::size(texts)]);
    QApplication::processEvents();
  }
  quotes.Close();
  QApplication::processEvents();
}
BENCHMARK(SearchQuotesUntilPainted)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolinex

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  tarvolinex::DrawnWindow window;
  tarvolinex::drawn = &window;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
