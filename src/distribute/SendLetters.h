// Calculators by mail to the people of many suppliers, in one run that can be taken up again.
//
// A letter is marked before its message leaves, by one program, and once more when the server has taken it. One that is
// still marked as leaving when a run is taken up is doubtful: nobody knows its fate, and it is not sent again by
// itself. So nobody gets two, whatever stops the run.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "distribute/Batch.h"
#include "distribute/Upload.h"
#include "platform/files/Files.h"
#include "store/Letters.h"

namespace tarvolinex {

// What is said to whom.
struct LetterOrder {
  bool toLast = false;                         // only who was sent one before; else every contact with an address
  std::optional<std::set<int>> contacts = {};  // only these
  int sendType = 0;
  bool wayOfLast = false;  // each in the way of the last time, and by the send type who has had none
  // "<FIRSTNAME>" stands for the reader's, "<SUPPLIERNAME>", "<CALCNAME>" and the other words as everywhere.
  std::string subject, message;
  bool instructions = false;
};

// One letter for each reader of these suppliers; of several contacts with one address the first. Throws RuntimeError.
std::vector<Letter> LettersFor(Database& database, const std::vector<BatchJob>& jobs, const LetterOrder& order);

// The message as it will be; the address of a link stands in it as "...".
struct WrittenLetter {
  std::string to, subject, text, attachment;
};
WrittenLetter Written(const Letter& letter, const Branding& branding, const SupplierCalcSettingsRecord& supplier,
                      const std::string& instructions, const std::string& uploadIdentifier, const WebAccount& web);

// How many letters of the last run are still to go; its doubtful and refused ones are not.
int LettersLeft(Database& database);

struct LetterRun {
  Branding branding;
  WebAccount web;
  int perMinute = 0;  // at most so many messages; 0 = as fast as they go
  // How long to wait before each new try when a server refuses for now or is not reached.
  std::vector<std::chrono::milliseconds> pauses = {std::chrono::seconds(5), std::chrono::seconds(30),
                                                   std::chrono::minutes(2)};
};

// A database's letters in the hands of this program: none beside it, and at a server no other desk, sends or drops
// them.
class PostRoom {
 public:
  // Letters that were leaving when an earlier run ended are doubtful from here on. The database and the reporter must
  // outlive it. Throws RuntimeError when another program has the letters.
  PostRoom(Database& database, LetterRun run, Reporter& reporter);

  // Begins a run with these, in place of the last one. Throws RuntimeError, and keeps the last one, when the settings
  // name no sender or no way for mail.
  void Begin(const std::vector<Letter>& letters);
  void Forget();

  // Goes on with the letters that are left: builds each supplier's calculator once, mails, notes date and delivery. A
  // refusal for good ends that letter alone. Returns when all are done, when the reporter's user stops it, or, with a
  // report, when what is in the way of one is in everybody's: a setting, or no server takes mail any more. The letters
  // tell how far it came. A failure of the database after a message has left is a fatal report.
  void Send();

 private:
  Database& database_;
  const LetterRun run_;
  Reporter& reporter_;
  std::optional<FileLock> alone_;
  struct LetGo {
    void operator()(Connection* server) const;
  };
  std::unique_ptr<Connection, LetGo> held_;  // by whom all desks at a server are kept out
};

// SupplierID, CompanyName, Contact, Email, Result, Detail as CSV with its heading; one that is left is "left".
std::string LetterReport(const std::vector<Letter>& letters);

}  // namespace tarvolinex
