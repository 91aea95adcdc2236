// Letters before and after their way: for whom they are, what stands in them, what became of them.
#include <algorithm>
#include <map>
#include <set>

#include "core/Aliases.h"
#include "distribute/Email.h"
#include "distribute/SendLetters.h"
#include "exchange/Csv.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

// How each contact was sent a calculator the last time.
std::map<int, std::string> LastWays(Database& database) {
  std::map<int, std::string> ways;
  ListDeliveries(database, [&](int, const Delivery& each) {
    if (each.result == "sent") ways[each.contactId] = each.sentAs;
  });
  return ways;
}

int WayOf(const std::string& name, int otherwise) {
  for (const int way : {kSendProgram, kSendZip, kSendLink}) {
    if (name == WayName(way)) return way;
  }
  return otherwise;
}

bool IsOpen(const Letter& letter) {
  return letter.state == LetterState::Waiting || letter.state == LetterState::Sending;
}

}  // namespace

std::vector<Letter> LettersFor(Database& database, const std::vector<BatchJob>& jobs, const LetterOrder& order) {
  const std::map<int, std::string> lastWays = LastWays(database);
  const auto isWanted = [&](const ContactRow& contact) {
    if (contact.email.empty() || (order.contacts && !order.contacts->contains(contact.id))) return false;
    return !order.toLast || lastWays.contains(contact.id) || !contact.dateLastSent.empty();
  };
  std::vector<Letter> letters;
  for (const BatchJob& job : jobs) {
    std::set<std::string> addresses;
    const auto first = static_cast<std::ptrdiff_t>(letters.size());
    for (const ContactRow& contact : ContactsOf(database, job.supplierId)) {
      if (!isWanted(contact) || !addresses.insert(FoldCase(contact.email)).second) continue;
      Letter letter;
      letter.supplierId = job.supplierId;
      letter.companyName = job.companyName;
      letter.contactId = contact.id;
      letter.contact = contact.name;
      letter.firstName = contact.row.Text("FirstName");
      letter.email = contact.email;
      letter.subject = order.subject;
      letter.message = order.message;
      const auto last = lastWays.find(contact.id);
      const bool asLast = order.wayOfLast && last != lastWays.end();
      letter.sendType = asLast ? WayOf(last->second, order.sendType) : order.sendType;
      letter.instructions = order.instructions;
      letters.push_back(letter);
    }
    // Each file is built once.
    std::stable_sort(letters.begin() + first, letters.end(),
                     [](const Letter& a, const Letter& b) { return a.sendType < b.sendType; });
  }
  return letters;
}

WrittenLetter Written(const Letter& letter, const Branding& branding, const SupplierCalcSettingsRecord& supplier,
                      const std::string& instructions, const std::string& uploadIdentifier, const WebAccount& web) {
  const Words words = {branding.prefs, supplier};
  const auto filled = [&](const std::string& text) {
    return ReplaceAllNoCase(ReplaceAliases(text, words), "<FIRSTNAME>", letter.firstName);
  };
  Sending sending = {{branding, supplier, {}}, letter.supplierId,   {},           "", filled(letter.message),
                     letter.sendType,          letter.instructions, instructions, web};
  WrittenLetter written;
  written.to = letter.contact + " <" + letter.email + ">";
  written.subject = filled(letter.subject);
  written.text = addEmailInstructions(sending, uploadIdentifier.empty() ? "..." : uploadIdentifier);
  if (letter.sendType != kSendLink) written.attachment = FileNameOf(InstallFilePath("", letter.sendType));
  return written;
}

int LettersLeft(Database& database) {
  const std::vector<Letter> letters = Letters(database);
  return static_cast<int>(std::count_if(letters.begin(), letters.end(), IsOpen));
}

std::string LetterReport(const std::vector<Letter>& letters) {
  std::string report = "SupplierID,CompanyName,Contact,Email,Result,Detail\n";
  for (const Letter& each : letters) {
    report += std::to_string(each.supplierId) + "," + CsvCell(each.companyName) + "," + CsvCell(each.contact) + "," +
              CsvCell(each.email) + "," + (IsOpen(each) ? "left" : NameOf(each.state)) + "," +
              CsvCell(ReplaceAll(ReplaceAll(each.detail, "\r", ""), "\n", " ")) + "\n";
  }
  return report;
}

}  // namespace tarvolinex
