// A database of 10,000 suppliers (or another number) with five contacts each and a window on it, shared by the
// benchmarks.
#pragma once

#include "core/Run.h"
#include "store/Database.h"

namespace tarvolinex {

inline constexpr int kSuppliers = 10000;

// Makes the database in a temporary folder, which becomes the run's app folder and data folder; the folder goes with
// the object.
class LargeDatabase {
 public:
  explicit LargeDatabase(int suppliers = kSuppliers);
  ~LargeDatabase();
  LargeDatabase(const LargeDatabase&) = delete;
  LargeDatabase& operator=(const LargeDatabase&) = delete;

  Run run;
};

inline constexpr int kQuotes = 10000;
// Keeps so many quotes of a hundred suppliers and a thousand customers in the database, which is open.
void KeepManyQuotes(Run& run, Database& database);

}  // namespace tarvolinex
