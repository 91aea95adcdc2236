#include "LargeDatabase.h"

#include <sqlite3.h>

#include <filesystem>
#include <string>

#include "calc/Schedule.h"
#include "platform/files/Files.h"
#include "store/KeptQuotes.h"

namespace tarvolinex {

LargeDatabase::LargeDatabase(int suppliers) {
  const std::string folder = (std::filesystem::temp_directory_path() / "tarvolinex-bench").string();
  run.AppFolder = run.DataFolder = folder;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  // Without them the window's load waits for the answer to a report.
  for (const char* text : {"inst0.txt", "inst1.txt", "inst2.txt"}) WriteFile(folder + "\\" + text, "Open it");
  sqlite3* raw = nullptr;
  sqlite3_open((folder + "/Tarvolinex.mdb").c_str(), &raw);
  const std::string read = "CREATE TABLE n(i); WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM c LIMIT " +
                           std::to_string(suppliers) + ") INSERT INTO n SELECT i FROM c;";
  sqlite3_exec(raw, ReadFile(SCHEMA).c_str(), nullptr, nullptr, nullptr);
  sqlite3_exec(raw, read.c_str(), nullptr, nullptr, nullptr);
  sqlite3_exec(
      raw,
      "INSERT INTO suppliers(CompanyName,Address1,Address2,Town,County,PostCode,tel,RangeEquipFROM0,"
      "RangeEquipFROM1,RangeEquipFROM2,RangeEquipFROM3,Yield0,Yield1,Yield2,Yield3,Yield4,Com0,Com4) "
      "SELECT 'Supplier ' || (i * 7919 % 100003), i || ' High Street', 'Trading Estate', 'Town ' || (i % 300),"
      "'County', 'AB1 ' || i, '01632 960' || (i % 1000), 100000, 50000, 20000, 5000, 7, 8, 9, 10, 12, 1, 3 FROM n;"
      "INSERT INTO contacts(Supplierid,firstname,surname,email) SELECT a.i, 'First' || a.i, 'Sur' || a.i || b.i,"
      "'c' || a.i || '@example.com' FROM n a, (SELECT i FROM n WHERE i <= 5) b;"
      "DROP TABLE n",
      nullptr, nullptr, nullptr);
  sqlite3_close(raw);
  run.CalculatorPreferences.AliasSupplier = "Supplier";
}

LargeDatabase::~LargeDatabase() {
  std::error_code ignored;
  std::filesystem::remove_all(run.AppFolder, ignored);
}

void KeepManyQuotes(Run& run, Database& database) {
  KeptQuote quote;
  quote.date = CalendarDay(std::chrono::year(2026) / 11 / 25);
  quote.origin = OriginOf(ReadSupplier(database, 1), run.CalculatorPreferences);
  quote.details.equipment = "Two-colour offset press with dryer";
  quote.details.validUntil = quote.date;
  constexpr int kEach = 10;
  for (int customer = 0; customer < kQuotes / kEach; ++customer) {
    quote.details.customer = "Customer " + std::to_string(customer * 7919 % 100003);
    quote.origin.supplierId = customer % 100 + 1;
    std::vector<QuoteFigures> figures;
    for (int i = 0; i < kEach; ++i) {
      QuoteFigures& one = figures.emplace_back();
      one.asked.CapitalCost = Currency::FromUnits((5000 + customer * kEach + i) * 10000LL);
      one.asked.NumberOfPayments = 36;
      one.priced = Priced(kModeForward, one.asked, {quote.origin.supplier, 20}).value();
    }
    KeepQuotes(database, quote, figures);
  }
}

}  // namespace tarvolinex
