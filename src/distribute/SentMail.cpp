#include "distribute/SentMail.h"

#include <algorithm>
#include <string_view>

#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

std::string ListPath() {
  return AppFolder + "\\Sent.lst";
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

std::vector<Line> ReadLines() {
  std::vector<Line> lines;
  if (!FileExists(ListPath())) return lines;
  const std::string text = ReadFile(ListPath());
  for (const std::string_view each : Split(text, '\n')) {
    if (auto line = ReadLine(each)) lines.push_back(std::move(*line));
  }
  return lines;
}

bool IsHere(const Line& line) {
  return line.folder == NativePath(DataFolder);
}

std::vector<ContactDate> DatesOf(const std::vector<SentMail>& mail) {
  std::vector<ContactDate> dates;
  for (const SentMail& each : mail) dates.push_back({each.contact, each.date});
  return dates;
}

}  // namespace

std::vector<SentMail> RememberedMail() {
  std::vector<SentMail> mail;
  for (const Line& line : ReadLines()) {
    if (IsHere(line)) mail.push_back(line.mail);
  }
  return mail;
}

void NoteRememberedMail() {
  const auto mail = RememberedMail();
  if (!mail.empty()) SetDatesLastSent(DatesOf(mail), true);
}

void ForgetRememberedMail(int supplier) {
  try {
    std::string kept;
    for (const Line& line : ReadLines()) {
      if (!IsHere(line) || line.mail.supplier != supplier) kept += Written(line);
    }
    if (!kept.empty()) return WriteFile(ListPath(), kept);
    if (FileExists(ListPath())) DeleteFile(ListPath());
  } catch (const RuntimeError&) {
    // It is told again next time.
  }
}

void TryToNote(const std::vector<SentMail>& mail) {
  try {
    SetDatesLastSent(DatesOf(mail), false);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(failure.Number(), Tr("Nothing was sent, because the database in %1 does not take the date of "
                                            "sending: %2",
                                            {DataFolder, failure.Description()}));
  }
}

MailOnItsWay::MailOnItsWay(std::vector<SentMail> mail) : mail_(std::move(mail)) {
  std::string text;
  for (const Line& line : ReadLines()) text += Written(line);
  for (const SentMail& each : mail_) text += Written({each, NativePath(DataFolder)});
  file_.emplace(ListPath());
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
