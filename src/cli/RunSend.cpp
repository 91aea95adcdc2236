#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <set>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/ManySuppliers.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "distribute/InstallPackage.h"
#include "distribute/SendLetters.h"
#include "distribute/Upload.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

// The words of --as, by send type.
constexpr std::array<const char*, 3> kWays = {"exe", "zip", "link"};

int WayOf(const std::string& word) {
  const auto* found = std::find(kWays.begin(), kWays.end(), word);
  if (found == kWays.end()) throw UsageError{"--as is one of exe, zip, link"};
  return static_cast<int>(found - kWays.begin());
}

// Before anything is made, as the window does.
void CheckLinks(const Run& run, int way) {
  const std::string lacks = way == kSendLink ? WhatLinksLack(OwnWebAccount(run)) : "";
  if (!lacks.empty()) throw RuntimeError(kItemNotFound, lacks);
}

std::vector<Recipient> RecipientsOf(Database& database, int supplier, const std::vector<std::string>& ids) {
  std::vector<Recipient> recipients;
  std::set<std::string> wanted(ids.begin(), ids.end());
  for (const ContactRow& contact : ContactsOf(database, supplier)) {
    if (contact.email.empty() || wanted.erase(std::to_string(contact.id)) == 0) continue;
    recipients.push_back({contact.id, contact.name, contact.email});
  }
  if (wanted.empty()) return recipients;
  const auto missing = std::find_if(ids.begin(), ids.end(), [&](const std::string& id) { return wanted.contains(id); });
  throw RuntimeError(kItemNotFound, "The supplier has no contact with the ID " + *missing + " and an e-mail address");
}

std::string WithLineEnds(const std::string& message) {
  return ReplaceAll(ReplaceAll(message, "\r\n", "\n"), "\n", "\r\n");
}

int PerMinute(const Arguments& parsed) {
  const std::string text = parsed.Value("--per-minute", "0");
  int number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size() || number < 0) {
    throw UsageError{"--per-minute " + text + " is no number of messages"};
  }
  return number;
}

LetterOrder OrderOf(const Arguments& parsed) {
  const std::string to = parsed.Value("--to");
  if (to != "all" && to != "last") throw UsageError{"--to is one of all, last"};
  if (parsed.Value("--subject").empty()) throw UsageError{"--subject TEXT is needed"};
  LetterOrder order;
  order.toLast = to == "last";
  order.sendType = WayOf(parsed.Value("--as"));
  order.subject = parsed.Value("--subject");
  order.message = WithLineEnds(parsed.Value("--message"));
  order.instructions = parsed.Has("--instructions");
  return order;
}

// Of a run that is taken up those that are left.
void ShowWhatWouldGo(Run& run, Database& database, const std::vector<Letter>& letters) {
  for (const Letter& letter : letters) {
    if (letter.state != LetterState::Waiting) continue;
    const std::string instructions = letter.instructions ? GetInstructions(run.AppFolder, letter.sendType, run) : "";
    const WrittenLetter written = Written(letter, OwnBranding(run), ReadSupplier(database, letter.supplierId).settings,
                                          instructions, "", OwnWebAccount(run));
    std::cout << "To: " << written.to << "\nSubject: " << written.subject << '\n';
    if (!written.attachment.empty()) std::cout << "Attached: " << written.attachment << '\n';
    std::cout << '\n' << ReplaceAll(written.text, "\r", "") << "\n\n";
  }
}

std::vector<Letter> NewLetters(Run& run, Database& database, const Arguments& parsed, const LetterOrder& order) {
  return LettersFor(database, BatchJobs(database, OwnBranding(run), WantedBy(parsed)), order);
}

// One that is unfinished is forgotten only when the user agrees.
void BeginRun(Run& run, Database& database, PostRoom& room, const Arguments& parsed, const LetterOrder& order) {
  const int left = LettersLeft(database);
  if (left > 0 && run.MessageBox(Tr("A run is unfinished: %1 messages are left. Begin another one and forget them?",
                                    {std::to_string(left)}),
                                 Tr("Email"), BoxButtons::YesNo, BoxIcon::Question) != Answer::Yes) {
    throw RuntimeError(kItemNotFound, "--resume goes on with the unfinished run, --yes begins another one");
  }
  room.Begin(NewLetters(run, database, parsed, order));
}

int SendToMany(Run& run, const Arguments& parsed) {
  const bool resumes = parsed.Has("--resume");
  // An unfinished run goes on with what it was begun with.
  const LetterOrder order = resumes && !parsed.Has("--as") ? LetterOrder() : OrderOf(parsed);
  if (!resumes) CheckLinks(run, order.sendType);
  const int perMinute = PerMinute(parsed);
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  if (parsed.Has("--dry-run")) {
    ShowWhatWouldGo(run, database, resumes ? Letters(database) : NewLetters(run, database, parsed, order));
    return kDone;
  }
  database.DemandWritable();
  PostRoom room(database, {OwnBranding(run), OwnWebAccount(run), perMinute}, run);
  if (!resumes) BeginRun(run, database, room, parsed, order);
  const StopWhenInterrupted stop(run);
  room.Send();
  const std::vector<Letter> letters = Letters(database);
  std::cout << LetterReport(letters);
  const bool whole =
      std::all_of(letters.begin(), letters.end(), [](const Letter& each) { return each.state == LetterState::Sent; });
  return whole ? kDone : kFailed;
}

}  // namespace

int RunSend(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments,
                         {"--supplier", "--contact", "--as", "--subject", "--message", "--to", "--per-minute"},
                         {"--instructions", "--all", "--stale", "--dry-run", "--resume"}, 0);
  const bool one = parsed.Has("--supplier");
  if (IsForMany(parsed) || (parsed.Has("--resume") && !one)) return SendToMany(run, parsed);
  for (const char* option : {"--to", "--per-minute", "--dry-run", "--resume"}) {
    if (parsed.Has(option)) throw UsageError{std::string(option) + " goes with --all or --stale"};
  }
  const std::string id = SupplierIdOf(parsed);
  const auto contacts = parsed.Values("--contact");
  if (contacts.empty()) throw UsageError{"--contact ID is needed, once for each contact"};
  const int way = WayOf(parsed.Value("--as"));
  CheckLinks(run, way);
  Database database(run);
  Sending sending;
  sending.publication = ChooseCalculator(run, database, id);
  database.DemandWritable();
  sending.supplierId = std::stoi(id);
  sending.recipients = RecipientsOf(database, sending.supplierId, contacts);
  sending.subject = parsed.Value("--subject");
  sending.message = WithLineEnds(parsed.Value("--message"));
  sending.sendType = way;
  sending.includeInstructions = parsed.Has("--instructions");
  if (sending.includeInstructions) sending.instructions = GetInstructions(run.AppFolder, way, run);
  sending.web = OwnWebAccount(run);
  const SendSteps steps = {[](Sending&) { return true; }, [] {}, [](Sending&) {}, [] { return nullptr; }};
  return SendCalculator(sending, steps, database, run) ? kDone : kFailed;
}

}  // namespace tarvolinex
