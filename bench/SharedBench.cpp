// 10,000 suppliers on a server of PostgreSQL's on this machine, beside the same rows in a file: how long the window
// takes for a list, a selection and a save, and how many round trips that is.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>

#include "LargeDatabase.h"
#include "platform/data/ConnectionText.h"
#include "store/DatabaseCopy.h"
#include "support/DroppingProxy.h"
#include "support/ScriptedDesktop.h"
#include "support/SharedServer.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {
namespace {

// The median of some runs, in milliseconds.
double Median(int runs, const std::function<void(int)>& action) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    action(i);
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

struct Job {
  const char* name;
  int runs;
  std::function<void(FrmMain&, int)> action;
};

const Job kJobs[] = {
    {"the list is filled", 9, [](FrmMain& form, int) { form.LoadSupplierList(false); }},
    {"a supplier is selected", 41,
     [](FrmMain& form, int i) { form.LvwSuppliers.ClickRow((i + 1) * 97 % form.LvwSuppliers.Count()); }},
    {"a field is edited and stored", 41, [](FrmMain& form, int i) {
       form.supplier.TxtSupplier(3).SetFocus();
       form.supplier.TxtSupplier(3).Type("Town " + std::to_string(i));
       form.Toolbar1.Press("SAVE");
     }}};

}  // namespace
}  // namespace tarvolinex

int main(int argc, char** argv) {
  using namespace tarvolinex;
  const LargeDatabase large(argc > 1 ? std::atoi(argv[1]) : kSuppliers);
  ScriptedDesktop desktop;
  UseDesktop(&desktop);
  SharedServer& server = SharedServer::The();
  DroppingProxy proxy(server.Port());
  const std::string where = server.NewDatabase();
  {
    Connection from, to;
    from.Open("dbq=" + large.run.DataFolder + "/Tarvolinex.mdb");
    to.Open(where);
    CopyDatabase(from, to, [](int, const std::string&) {});
  }
  Run shared;
  shared.AppFolder = shared.DataFolder = large.run.AppFolder;
  shared.CalculatorPreferences = large.run.CalculatorPreferences;
  shared.SharedDatabase = "driver={PostgreSQL};server=127.0.0.1;uid=tarvolinex;port=" + proxy.Port() +
                          ";database=" + ValueIn(where, "database");
  Run own;
  own.AppFolder = own.DataFolder = large.run.AppFolder;
  own.CalculatorPreferences = large.run.CalculatorPreferences;
  auto file = std::make_unique<FrmMain>(own), office = std::make_unique<FrmMain>(shared);
  file->Load();
  const int before = proxy.Parcels();
  const double start = Median(1, [&](int) { office->Load(); });
  std::printf("%-32s %10s %10s %8s %12s\n", "", "file", "server", "ratio", "round trips");
  std::printf("%-32s %10s %7.1f ms %8s %12d\n", "the window is loaded", "", start, "", proxy.Parcels() - before);
  for (const Job& job : kJobs) {
    const double here = Median(job.runs, [&](int i) { job.action(*file, i); });
    const int sent = proxy.Parcels();
    const double there = Median(job.runs, [&](int i) { job.action(*office, i); });
    std::printf("%-32s %7.1f ms %7.1f ms %8.2f %12.1f\n", job.name, here, there, there / here,
                static_cast<double>(proxy.Parcels() - sent) / job.runs);
  }
  file.reset();
  office.reset();
  UseDesktop(nullptr);
}
