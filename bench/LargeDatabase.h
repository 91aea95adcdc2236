// A database of 10,000 suppliers with 50,000 contacts and a window on it, shared by the benchmarks.
#pragma once

namespace tarvolinex {

inline constexpr int kSuppliers = 10000;

// Makes the database in a temporary folder, which becomes app folder and data folder; the folder goes with the object.
class LargeDatabase {
 public:
  LargeDatabase();
  ~LargeDatabase();
  LargeDatabase(const LargeDatabase&) = delete;
  LargeDatabase& operator=(const LargeDatabase&) = delete;
};

}  // namespace tarvolinex
