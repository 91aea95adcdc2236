// What has gone out: one row a calculator and reader, with what went into it.
//
// Their tables are made when the first delivery is noted; until then a database has none, and reading finds nothing.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

struct Delivery {
  std::string date;  // YYYY-MM-DD hh:mm:ss, local
  int supplierId = 0;
  std::string companyName;  // as it was then
  int contactId = 0;        // 0 = a file that somebody hands on
  std::string contact, email;
  std::string sentAs;  // "exe", "zip", "link"; "folder" for a published folder
  std::string result;  // "sent", "made", "doubtful", or "refused: " and why
  std::string subject, message;
};

// Notes them with what went into the calculator, in the transaction that is open. Throws RuntimeError.
void AddDeliveries(Database& database, const std::vector<Delivery>& deliveries,
                   const std::string& organisationIngredients, const std::string& supplierIngredients);

// The same, together or not at all.
void NoteDeliveries(Database& database, const std::vector<Delivery>& deliveries,
                    const std::string& organisationIngredients, const std::string& supplierIngredients);

// Whether one of that moment to that contact has been noted. Throws RuntimeError.
bool HasDelivery(Database& database, const Delivery& delivery);

// Every delivery in the order in which they were noted, with its number; without the messages. Throws RuntimeError.
void ListDeliveries(Database& database, const std::function<void(int number, const Delivery&)>& read);

// The message of one; empty when there is none of that number. Throws RuntimeError.
std::string MessageOfDelivery(Database& database, int number);

// What each supplier was last sent by mail: when, as what, and what went into it. Throws RuntimeError.
struct LastSent {
  std::string date, sentAs, organisationIngredients, supplierIngredients;
};
std::map<int, LastSent> LastSentOf(Database& database);
// The same of one; nullopt when it was sent nothing.
std::optional<LastSent> LastSentTo(Database& database, int supplierId);

}  // namespace tarvolinex
