// 10,000 suppliers on a server of PostgreSQL's on this machine, beside the same rows in a file: how long the window
// takes for a list, a selection and a save, and how many round trips that is; the same where each round trip takes 20
// ms; and five desks that each save 1,000 times.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

#include "LargeDatabase.h"
#include "platform/data/ConnectionText.h"
#include "store/DatabaseCopy.h"
#include "support/DroppingProxy.h"
#include "support/ScriptedDesktop.h"
#include "support/SharedServer.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {
namespace {

// In milliseconds.
double TimeOf(const std::function<void()>& action) {
  const auto begin = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double MedianOf(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
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
    {"a field is edited and stored", 41, [](FrmMain& form, int) {
       static int town = 0;  // what another desk has stored is no change
       form.supplier.TxtSupplier(3).SetFocus();
       form.supplier.TxtSupplier(3).Type("Town " + std::to_string(++town));
       form.Toolbar1.Press("SAVE");
     }}};

// Of a desk on the file, or on the server behind that port.
void Prepare(const LargeDatabase& large, const std::string& where, const std::string& port, Run& run) {
  run.AppFolder = run.DataFolder = large.run.AppFolder;
  run.CalculatorPreferences = large.run.CalculatorPreferences;
  if (port.empty()) return;
  run.SharedDatabase =
      "driver={PostgreSQL};server=127.0.0.1;uid=tarvolinex;port=" + port + ";database=" + ValueIn(where, "database");
}

// In turns. The round trips are counted at a desk of their own, because what counts them takes its time too, and in the
// end at a supplier of its own.
void CompareWithFile(const LargeDatabase& large, const std::string& where) {
  const std::string& port = SharedServer::The().Port();
  DroppingProxy proxy(port);
  Run here, there, counted;
  Prepare(large, where, "", here);
  Prepare(large, where, port, there);
  Prepare(large, where, proxy.Port(), counted);
  FrmMain file(here), office(there), counting(counted);
  file.Load();
  const double start = TimeOf([&] { office.Load(); });
  int before = proxy.Parcels();
  const auto trips = [&] { return proxy.Parcels() - std::exchange(before, proxy.Parcels()); };
  counting.Load();
  std::printf("%-32s %10s %10s %8s %12s\n", "", "file", "server", "ratio", "round trips");
  std::printf("%-32s %10s %7.1f ms %8s %12d\n", "the window is loaded", "", start, "", trips());
  for (const Job& job : kJobs) {
    std::vector<double> near, far;
    for (int i = 0; i < job.runs; ++i) {
      near.push_back(TimeOf([&] { job.action(file, i); }));
      far.push_back(TimeOf([&] { job.action(office, i); }));
      job.action(counting, i + 1);
    }
    std::printf("%-32s %7.1f ms %7.1f ms %8.2f %12.1f\n", job.name, MedianOf(near), MedianOf(far),
                MedianOf(far) / MedianOf(near), static_cast<double>(trips()) / job.runs);
  }
}

void MeasureFarAway(const LargeDatabase& large, const std::string& where) {
  const Process proxy("exec " BENCH_FOLDER "/delaying-proxy " + SharedServer::The().Port() + " 10");
  Run far;
  Prepare(large, where, proxy.FirstLine(), far);
  FrmMain office(far);
  std::printf("\n%-32s %10s\n", "", "20 ms away");
  std::printf("%-32s %7.1f ms\n", "the window is loaded", TimeOf([&] { office.Load(); }));
  for (const Job& job : kJobs) {
    std::vector<double> times;
    for (int i = 0; i < job.runs; ++i) times.push_back(TimeOf([&] { job.action(office, i); }));
    std::printf("%-32s %7.1f ms\n", job.name, MedianOf(times));
  }
}

// Each looks and stores what it has found and one more: a lost update would leave less in the end.
void SaveAtFiveDesks(const std::string& where) {
  constexpr int kDesks = 5, kSaves = 1000;
  const auto read = [](Connection& connection) {
    Recordset row;
    row.Open("SELECT RangeEquipFROM4 FROM suppliers WHERE ID=3", connection);
    return static_cast<int>(ValueNumber(row.Field(0)));
  };
  Connection judge;
  judge.Open(where);
  const int before = read(judge);
  const auto begin = std::chrono::steady_clock::now();
  std::vector<std::thread> desks;
  for (int desk = 0; desk < kDesks; ++desk) {
    desks.emplace_back([&] {
      Connection connection;
      connection.Open(where + ";wait=60");
      for (int i = 0; i < kSaves; ++i) {
        connection.Begin();
        connection.Execute("UPDATE suppliers SET RangeEquipFROM4=" + std::to_string(read(connection) + 1) +
                           " WHERE ID=3");
        connection.Commit();
      }
    });
  }
  for (std::thread& desk : desks) desk.join();
  const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  std::printf("\n%d desks, %d saves each: %.0f saves a second, %d lost\n", kDesks, kSaves, kDesks * kSaves / took,
              kDesks * kSaves - (read(judge) - before));
}

}  // namespace
}  // namespace tarvolinex

int main(int argc, char** argv) {
  using namespace tarvolinex;
  const LargeDatabase large(argc > 1 ? std::atoi(argv[1]) : kSuppliers);
  ScriptedDesktop desktop;
  UseDesktop(&desktop);
  const std::string where = SharedServer::The().NewDatabase();
  {
    Connection from, to;
    from.Open("dbq=" + large.run.DataFolder + "/Tarvolinex.mdb");
    to.Open(where);
    CopyDatabase(from, to, [](int, const std::string&) {});
  }
  CompareWithFile(large, where);
  MeasureFarAway(large, where);
  SaveAtFiveDesks(where);
  UseDesktop(nullptr);
}
