// Who has changed or made something last, and when: a supplier with its contacts and form links, a kept quote, a
// delivery.
//
// Their table is made with the first change; until then a database has none, and reading finds nothing.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

enum class Changed { Supplier, Quote, Delivery };

struct Change {
  std::string by;  // the database's user, or of a file the user of the machine
  std::string at;  // YYYY-MM-DD hh:mm:ss, of the clock of the desk that made it
  bool operator==(const Change&) const = default;
};

// Replaces what was noted for it by now and this desk's user, in the transaction that is open, and returns that. A
// failure is a fatal report.
Change NoteChange(Database& database, Changed what, int id);
// The same of something new, for whoever has more to tell of a failure. Throws RuntimeError.
void NoteMaker(Database& database, Changed what, int id);

// nullopt when nothing is noted. Throws RuntimeError.
std::optional<Change> LastChange(Database& database, Changed what, int id);

// Who made what, by its ID; nobody in a file, which is one person's. Throws RuntimeError.
std::unordered_map<int, std::string> MakersOf(Database& database, Changed what);

}  // namespace tarvolinex
