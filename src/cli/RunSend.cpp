#include <algorithm>
#include <array>
#include <set>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
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

}  // namespace

int RunSend(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--contact", "--as", "--subject", "--message"}, {"--instructions"},
                         0);
  const std::string id = SupplierIdOf(parsed);
  const auto contacts = parsed.Values("--contact");
  if (contacts.empty()) throw UsageError{"--contact ID is needed, once for each contact"};
  const int way = WayOf(parsed.Value("--as"));
  Database database(run);
  Sending sending;
  sending.publication = ChooseCalculator(run, database, id);
  sending.supplierId = std::stoi(id);
  sending.recipients = RecipientsOf(database, sending.supplierId, contacts);
  sending.subject = parsed.Value("--subject");
  sending.message = ReplaceAll(ReplaceAll(parsed.Value("--message"), "\r\n", "\n"), "\n", "\r\n");
  sending.sendType = way;
  sending.includeInstructions = parsed.Has("--instructions");
  if (sending.includeInstructions) sending.instructions = GetInstructions(run.AppFolder, way, run);
  sending.web = OwnWebAccount(run);
  const SendSteps steps = {[](Sending&) { return true; }, [] {}, [](Sending&) {}, [] { return nullptr; }};
  return SendCalculator(sending, steps, database, run) ? kDone : kFailed;
}

}  // namespace tarvolinex
