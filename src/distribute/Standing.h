// How what the suppliers' people have compares with what would go out today.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "publish/CalculatorFolder.h"
#include "publish/Ingredients.h"
#include "store/Database.h"
#include "store/Deliveries.h"
#include "store/Row.h"

namespace tarvolinex {

// "never", "current", "stale".
enum class Currentness { Never, Current, Stale };
const char* NameOf(Currentness state);
// For a person: "out of date".
std::string WordsOf(Currentness state);

struct Standing {
  int supplierId = 0;
  std::string companyName;
  Currentness state = Currentness::Never;
  std::string lastSent, sentAs;  // of the last message that was taken
  std::string changes;           // since then, in words
};

// Tells it of one supplier after the other, by what all of them have in common at the moment of the construction. The
// members throw RuntimeError. The database must outlive it.
class Standings {
 public:
  Standings(Database& database, const Branding& branding);
  // Without the name when nothing has been sent: its row is then not read.
  Standing Of(int supplierId);
  Standing Of(const Row& supplier);

 private:
  std::vector<FormRow> FormsOf(int supplier) const;
  Database& database_;
  std::map<int, LastSent> sent_;
  std::string organisation_;
  std::map<int, std::vector<int>> links_;
  std::map<int, FormRow> forms_;
  FormPrints prints_;
};

// One supplier's, without its name. Throws RuntimeError.
Standing StandingOf(Database& database, const Branding& branding, int supplierId);

// Gives every supplier's, in the order of the names. Throws RuntimeError.
void ForEachStanding(Database& database, const Branding& branding, const std::function<void(const Standing&)>& read);

// Notes one calculator's way to its readers. Who has sent does not fail because it could not be noted: that is
// reported.
void NoteDelivery(Database& database, const Publication& publication, const std::vector<Delivery>& deliveries,
                  Reporter& reporter);
// A file that somebody hands on: "exe", "zip" or "folder".
void NoteMade(Database& database, int supplierId, const Publication& publication, const std::string& sentAs,
              Reporter& reporter);

// "2026-11-25 14:07:09", local.
std::string DeliveryDate(std::chrono::system_clock::time_point when);

}  // namespace tarvolinex
