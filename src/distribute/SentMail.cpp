#include "distribute/SentMail.h"

#include <algorithm>
#include <string_view>

#include "platform/RuntimeError.h"
#include "platform/text/Json.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

std::string ListPath(const SentList& list) {
  return list.appFolder + "\\Sent.lst";
}

struct Line {
  SentMail mail;
  std::string folder;  // of the database
};

// What else is written down of a message, by its name in the list.
template <typename Visit>
void ForEachText(SentMail& mail, const Visit& visit) {
  visit("SentAt", mail.delivery.date);
  visit("CompanyName", mail.delivery.companyName);
  visit("Email", mail.delivery.email);
  visit("As", mail.delivery.sentAs);
  visit("Subject", mail.delivery.subject);
  visit("Message", mail.delivery.message);
  visit("Organisation", mail.organisationIngredients);
  visit("Supplier", mail.supplierIngredients);
}

std::string DeliveryText(SentMail mail) {
  JsonObject object;
  ForEachText(mail, [&](const char* name, const std::string& text) { object.emplace_back(name, text); });
  return ReplaceAll(FormatJsonObject(object), "\n", "");
}

void ReadDelivery(std::string_view text, SentMail& mail) {
  try {
    const JsonObject object = ParseJsonObject(text);
    ForEachText(mail, [&](std::string_view name, std::string& value) {
      for (const auto& [member, stored] : object) {
        if (member == name) value = std::get<std::string>(stored);
      }
    });
    mail.delivery.supplierId = mail.supplier;
    mail.delivery.contactId = mail.contact;
    mail.delivery.contact = mail.name;
    mail.delivery.result = "sent";
  } catch (const std::exception&) {
    mail.delivery = {};
  }
}

// Supplier, contact, date, name, folder and, in later lists, the delivery, with tabs between them.
std::optional<Line> ReadLine(std::string_view text) {
  const auto parts = Split(text, '\t');
  if (parts.size() != 5 && parts.size() != 6) return std::nullopt;
  Line line;
  line.mail = {static_cast<int>(LeadingNumber(parts[0])), static_cast<int>(LeadingNumber(parts[1])),
               std::string(parts[2]), std::string(parts[3])};
  line.folder = parts[4];
  if (parts.size() == 6) ReadDelivery(parts[5], line.mail);
  return line;
}

std::string Written(const Line& line) {
  const auto plain = [](std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return text;
  };
  return std::to_string(line.mail.supplier) + "\t" + std::to_string(line.mail.contact) + "\t" + plain(line.mail.date) +
         "\t" + plain(line.mail.name) + "\t" + plain(line.folder) +
         (line.mail.delivery.date.empty() ? "" : "\t" + DeliveryText(line.mail)) + "\n";
}

std::vector<Line> ReadLines(const SentList& list) {
  std::vector<Line> lines;
  if (!FileExists(ListPath(list))) return lines;
  const std::string text = ReadFile(ListPath(list));
  for (const std::string_view each : Split(text, '\n')) {
    if (auto line = ReadLine(each)) lines.push_back(std::move(*line));
  }
  return lines;
}

bool IsHere(const SentList& list, const Line& line) {
  return line.folder == NativePath(list.dataFolder);
}

std::vector<ContactDate> DatesOf(const std::vector<SentMail>& mail) {
  std::vector<ContactDate> dates;
  for (const SentMail& each : mail) dates.push_back({each.contact, each.date});
  return dates;
}

}  // namespace

std::vector<SentMail> RememberedMail(const SentList& list) {
  std::vector<SentMail> mail;
  for (const Line& line : ReadLines(list)) {
    if (IsHere(list, line)) mail.push_back(line.mail);
  }
  return mail;
}

void NoteRememberedMail(const SentList& list, Database& database) {
  const auto mail = RememberedMail(list);
  if (mail.empty()) return;
  SetDatesLastSent(database, DatesOf(mail), true);
  try {
    for (const SentMail& each : mail) {
      if (each.delivery.date.empty() || HasDelivery(database, each.delivery)) continue;
      NoteDeliveries(database, {each.delivery}, each.organisationIngredients, each.supplierIngredients);
    }
  } catch (const RuntimeError&) {
    // A list that cannot be kept does not stop the mail.
  }
}

void ForgetRememberedMail(const SentList& list, int supplier) {
  try {
    std::string kept;
    for (const Line& line : ReadLines(list)) {
      if (!IsHere(list, line) || line.mail.supplier != supplier) kept += Written(line);
    }
    if (!kept.empty()) return WriteFile(ListPath(list), kept);
    if (FileExists(ListPath(list))) DeleteFile(ListPath(list));
  } catch (const RuntimeError&) {
    // It is told again next time.
  }
}

void TryToNote(Database& database, const std::vector<SentMail>& mail) {
  try {
    SetDatesLastSent(database, DatesOf(mail), false);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(failure.Number(), Tr("Nothing was sent, because the database in %1 does not take the date of "
                                            "sending: %2",
                                            {database.Folder(), failure.Description()}));
  }
}

MailOnItsWay::MailOnItsWay(const SentList& list, std::vector<SentMail> mail) : mail_(std::move(mail)) {
  std::string text;
  for (const Line& line : ReadLines(list)) text += Written(line);
  for (const SentMail& each : mail_) text += Written({each, NativePath(list.dataFolder)});
  file_.emplace(ListPath(list));
  file_->Write(text);
}

bool MailOnItsWay::Remember() {
  try {
    file_->Commit();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace tarvolinex
