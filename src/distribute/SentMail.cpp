#include "distribute/SentMail.h"

#include <algorithm>
#include <string_view>

#include "platform/RuntimeError.h"
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

// Supplier, contact, date, name, folder, with tabs between them.
std::optional<Line> ReadLine(std::string_view text) {
  const auto parts = Split(text, '\t');
  if (parts.size() != 5) return std::nullopt;
  Line line;
  line.mail = {static_cast<int>(LeadingNumber(parts[0])), static_cast<int>(LeadingNumber(parts[1])),
               std::string(parts[2]), std::string(parts[3])};
  line.folder = parts[4];
  return line;
}

std::string Written(const Line& line) {
  const auto plain = [](std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return text;
  };
  return std::to_string(line.mail.supplier) + "\t" + std::to_string(line.mail.contact) + "\t" + plain(line.mail.date) +
         "\t" + plain(line.mail.name) + "\t" + plain(line.folder) + "\n";
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
  if (!mail.empty()) SetDatesLastSent(database, DatesOf(mail), true);
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
