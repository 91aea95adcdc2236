// The window class on a large database: filling the list, each step of a supplier's life, one keystroke.
#include <benchmark/benchmark.h>

#include <string>

#include "LargeDatabase.h"
#include "store/Suppliers.h"
#include "support/ScriptedDesktop.h"
#include "ui/main/FrmMain.h"
#include "ui/main/FrmSearch.h"

namespace tarvolinex {
namespace {

struct LargeWindow {
  LargeWindow() {
    UseDesktop(&desktop);
    form.Load();
  }
  LargeDatabase database;
  ScriptedDesktop desktop;
  FrmMain form{database.run};
};

FrmMain& Form() {
  static LargeWindow window;
  return window.form;
}

void FillSupplierList(benchmark::State& state) {
  FrmMain& form = Form();
  for (auto _ : state) form.LoadSupplierList(false);
}
BENCHMARK(FillSupplierList)->Unit(benchmark::kMillisecond);

void SelectSupplier(benchmark::State& state) {
  FrmMain& form = Form();
  int row = 0;
  for (auto _ : state) form.LvwSuppliers.ClickRow(row = (row + 4999) % kSuppliers);
}
BENCHMARK(SelectSupplier)->Unit(benchmark::kMillisecond);

void SaveSupplierFields(benchmark::State& state) {
  FrmMain& form = Form();
  form.LvwSuppliers.ClickRow(17);
  int i = 0;
  for (auto _ : state) {
    form.supplier.TxtSupplier(3).Type("Town " + std::to_string(++i));
    form.Toolbar1.Press("SAVE");
  }
}
BENCHMARK(SaveSupplierFields)->Unit(benchmark::kMillisecond);

void AddOne(FrmMain& form) {
  form.Toolbar1.Press("SAVE");
  form.menus.MnuAdd.Choose();
  form.supplier.TxtSupplier(kSupplierName).Type("Zebra");
  form.Toolbar1.Press("SAVE");
}

void RemoveOne(FrmMain& form) {
  static_cast<ScriptedDesktop&>(TheDesktop()).answers = {Answer::Yes};
  form.Toolbar1.Press("REMSUPP");
}

void AddSupplier(benchmark::State& state) {
  FrmMain& form = Form();
  for (auto _ : state) {
    AddOne(form);
    state.PauseTiming();
    RemoveOne(form);
    state.ResumeTiming();
  }
}
BENCHMARK(AddSupplier)->Unit(benchmark::kMillisecond);

void RemoveAddedSupplier(benchmark::State& state) {
  FrmMain& form = Form();
  for (auto _ : state) {
    state.PauseTiming();
    AddOne(form);
    state.ResumeTiming();
    RemoveOne(form);
  }
}
BENCHMARK(RemoveAddedSupplier)->Unit(benchmark::kMillisecond);

void SearchContact(benchmark::State& state) {
  FrmMain& form = Form();
  FrmSearch search(form.run, form.database,
                   [&](int supplierId, int contactId) { form.ShowContact(supplierId, contactId); });
  int i = 0;
  for (auto _ : state) {
    search.TxtSearch(1).SetText("Sur" + std::to_string(40000 + ++i % 10000));
    search.CmdFind.Press();
  }
}
BENCHMARK(SearchContact)->Unit(benchmark::kMillisecond);

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
