// The window class on a large database: filling the list, selecting, one keystroke.
#include <benchmark/benchmark.h>

#include <string>

#include "LargeDatabase.h"
#include "store/Suppliers.h"
#include "support/ScriptedDesktop.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {
namespace {

struct LargeWindow {
  LargeWindow() {
    UseDesktop(&desktop);
    form.Load();
  }
  LargeDatabase database;
  ScriptedDesktop desktop;
  FrmMain form;
};

FrmMain& Form() {
  static LargeWindow window;
  return window.form;
}

void FillSupplierList(benchmark::State& state) {
  Form();
  for (auto _ : state) LoadSupplierList(false);
}
BENCHMARK(FillSupplierList)->Unit(benchmark::kMillisecond);

void SelectSupplier(benchmark::State& state) {
  FrmMain& form = Form();
  int row = 0;
  for (auto _ : state) form.LvwSuppliers.ClickRow(row = (row + 4999) % kSuppliers);
}
BENCHMARK(SelectSupplier)->Unit(benchmark::kMillisecond);

void Keystroke(benchmark::State& state) {
  FrmMain& form = Form();
  int i = 0;
  for (auto _ : state) form.quote.TxtProCalc(kBoxCapitalCost).Type(std::to_string(10000 + ++i % 100));
}
BENCHMARK(Keystroke)->Unit(benchmark::kMicrosecond);

void KeystrokeInPayment(benchmark::State& state) {
  FrmMain& form = Form();
  int i = 0;
  for (auto _ : state) form.quote.TxtProCalc(kBoxPayment).Type(std::to_string(300 + ++i % 100));
}
BENCHMARK(KeystrokeInPayment)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvolinex
