// Who has got mail that the database does not know of yet. Mail cannot be called back, so it is written down
// ("Sent.lst" in the app folder: the database's own folder is what has just refused) before the date of sending is
// noted in the database, and crossed out after it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files/Files.h"
#include "store/Database.h"
#include "store/Deliveries.h"

namespace tarvolinex {

struct SentMail {
  int supplier = 0, contact = 0;
  std::string date;  // as the database is to store it
  std::string name;  // the contact's
  // The same for the list of what has gone out, with what went into the calculator; empty when a line says nothing of
  // it.
  Delivery delivery = {};
  std::string organisationIngredients = {}, supplierIngredients = {};
};

// Where it is written down, and the folder of the database that it is written down for.
struct SentList {
  std::string appFolder, dataFolder;
};

// What is written down of the database. Lines that nobody understands are left out.
std::vector<SentMail> RememberedMail(const SentList& list);

// Notes what is written down in the open database, when it takes it; it stays written down until it is forgotten.
// Throws RuntimeError with what the database says of the dates.
void NoteRememberedMail(const SentList& list, Database& database);

// Crosses out what is written down of the supplier. A failure is passed over: nobody is then mailed twice.
void ForgetRememberedMail(const SentList& list, int supplier);

// Finds out whether the database takes the date of these contacts; it does not keep it. Throws RuntimeError naming the
// database's folder.
void TryToNote(Database& database, const std::vector<SentMail>& mail);

// One message on its way. The file is made, beside its place, before the message goes out: a full disk must not be in
// the way afterwards.
class MailOnItsWay {
 public:
  // Throws RuntimeError when it cannot be written down.
  MailOnItsWay(const SentList& list, std::vector<SentMail> mail);
  // The message has gone out: from here on it is remembered. False when that failed after all.
  bool Remember();
  const std::vector<SentMail>& Mail() const { return mail_; }

 private:
  std::vector<SentMail> mail_;
  std::optional<WholeFile> file_;
};

}  // namespace tarvolinex
