// The run of messages to many suppliers that is on its way: one letter a reader, with how far it has come. What is
// written here outlives a stop, a crash and a lost network.
//
// The table is made when the first run begins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"

namespace tarvolinex {

// Stored as "waiting", "sending", "sent", "refused", "doubtful".
enum class LetterState { Waiting, Sending, Sent, Refused, Doubtful };
const char* NameOf(LetterState state);

struct Letter {
  int id = 0;  // given when the run begins
  int supplierId = 0;
  std::string companyName;
  int contactId = 0;
  std::string contact, firstName, email;
  std::string subject, message;  // with markers
  int sendType = 0;
  bool instructions = false;
  LetterState state = LetterState::Waiting;
  std::string detail;  // the server's words
};

// The letters of the last run, in their order; none before the first. Throws RuntimeError.
std::vector<Letter> Letters(Database& database);

// Begins a run with these, in place of the last one. A statement that fails is a fatal report.
void BeginLetters(Database& database, const std::vector<Letter>& letters);

// Marks one that waits as sending. False when it does not wait any more: another program has taken it. Throws
// RuntimeError. In the transaction that is open, if one is.
bool ClaimLetter(Database& database, int id);

// Whom it goes to by now. Throws RuntimeError. In the transaction that is open, if one is.
void SetLetterReader(Database& database, const Letter& letter);

// Throws RuntimeError. In the transaction that is open, if one is.
void SetLetterState(Database& database, int id, LetterState state, std::string_view detail);

}  // namespace tarvolinex
