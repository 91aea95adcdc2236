// tarvolinex-server: what the administrator of a server does.
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Parsing.h"
#include "server/References.h"
#include "server/ServerSettings.h"
#include "server/Store.h"

namespace tarvolinex::server {

namespace {

constexpr const char* kHelp =
    "usage: tarvolinex-server add REFERENCE ORGANISATION [MEGABYTES [UPLOADS]]\n"
    "       tarvolinex-server list [REFERENCE]\n"
    "       tarvolinex-server remove REFERENCE\n"
    "       tarvolinex-server withdraw IDENTIFIER|REFERENCE\n"
    "       tarvolinex-server expire\n"
    "\n"
    "add       lets the customer reference upload and prints its new secret, which stands nowhere else;\n"
    "          MEGABYTES is its room (500), UPLOADS how many files it may send in an hour (60).\n"
    "          For a reference that is there already the secret is a new one.\n"
    "list      the references, or what one of them has uploaded\n"
    "remove    takes the right to upload away; its links stay until they expire\n"
    "withdraw  ends one link, or all links of a reference, now\n"
    "expire    ends what is older than the settings allow, and tidies up; a timer runs it every hour\n";

struct BadUsage {};  // the words make no sense

using Words = std::vector<std::string>;

std::string ReferenceFrom(const std::string& word) {
  const auto reference = ReadReference(word);
  if (!reference) throw RuntimeError(kDeviceError, word + " is no customer reference: it is a whole number");
  return *reference;
}

std::int64_t NumberFrom(const std::string& word) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size() || number <= 0 || number > 1'000'000) {
    throw RuntimeError(kDeviceError, word + " is no number between 1 and 1,000,000");
  }
  return number;
}

// What belongs to the receiving program is changed as its user, never as root.
void BecomeOwnerOf(const std::string& folder) {
  if (::geteuid() != 0) return;
  struct stat status = {};
  const std::string links = folder + "/links";
  if (::lstat(links.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid == 0) {
    throw RuntimeError(kDeviceError, links + " is no folder of the receiving program's user");
  }
  if (::setgroups(0, nullptr) != 0 || ::setgid(status.st_gid) != 0 || ::setuid(status.st_uid) != 0) {
    throw RuntimeError(kDeviceError, "Becoming the owner of " + folder);
  }
}

int Add(const ServerSettings& settings, const Words& words) {
  if (words.size() < 2 || words.size() > 4) throw BadUsage();
  Reference added;
  added.reference = ReferenceFrom(words[0]);
  added.organisation = ReplaceAll(words[1], "\n", " ");
  if (Trim(added.organisation).empty()) throw BadUsage();
  if (words.size() > 2) added.megabytes = NumberFrom(words[2]);
  if (words.size() > 3) added.hourly = NumberFrom(words[3]);
  const std::string secret = RandomName();
  added.hash = HashOf(secret);
  auto references = ReadReferences(settings.references);
  std::erase_if(references, [&](const Reference& each) { return each.reference == added.reference; });
  references.push_back(added);
  WriteReferences(settings.references, references);
  std::printf("%s\n", secret.c_str());
  return 0;
}

int Remove(const ServerSettings& settings, const Words& words) {
  if (words.size() != 1) throw BadUsage();
  const std::string reference = ReferenceFrom(words[0]);
  auto references = ReadReferences(settings.references);
  if (std::erase_if(references, [&](const Reference& each) { return each.reference == reference; }) == 0) {
    throw RuntimeError(kDeviceError, "There is no reference " + reference);
  }
  WriteReferences(settings.references, references);
  return 0;
}

std::string Day(Moment moment) {
  const std::time_t seconds = moment.time_since_epoch().count();
  std::tm parts = {};
  ::gmtime_r(&seconds, &parts);
  char text[16] = "";
  std::strftime(text, sizeof text, "%Y-%m-%d", &parts);
  return text;
}

int List(const ServerSettings& settings, const Words& words) {
  if (words.size() > 1) throw BadUsage();
  const auto references = ReadReferences(settings.references);
  const Store store(settings.data);
  const Moment now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  if (words.empty()) {
    for (const Reference& each : references) {
      const Usage usage = store.UsageOf(each.reference, now);
      std::printf("%s\t%s\t%.1f of %lld MB\t%lld of %lld this hour\n", each.reference.c_str(),
                  each.organisation.c_str(), static_cast<double>(usage.bytes) / (1 << 20),
                  static_cast<long long>(each.megabytes), static_cast<long long>(usage.lastHour),
                  static_cast<long long>(each.hourly));
    }
    return 0;
  }
  for (const Record& record : store.Of(ReferenceFrom(words[0]))) {
    const bool over = record.ended.empty() && record.expires <= now;
    const std::string state = over ? "expired" : record.ended.empty() ? "until " + Day(record.expires) : record.ended;
    std::printf("%s\t%s\t%lld KB\t%s\t%s\n", record.id.c_str(), Day(record.received).c_str(),
                static_cast<long long>(record.bytes / 1024), state.c_str(), record.supplier.c_str());
  }
  return 0;
}

int Withdraw(const ServerSettings& settings, const Words& words) {
  if (words.size() != 1) throw BadUsage();
  BecomeOwnerOf(settings.data);
  const Store store(settings.data);
  std::vector<Record> records;
  if (const auto one = IsIdentifier(words[0]) ? store.Find(words[0]) : std::nullopt) {
    records.push_back(*one);
  } else {
    records = store.Of(ReferenceFrom(words[0]));
  }
  std::erase_if(records, [&](const Record& record) { return !record.ended.empty() && !store.CanBeFetched(record); });
  if (records.empty()) throw RuntimeError(kDeviceError, "There is no link of " + words[0]);
  store.End(records, "withdrawn");
  std::printf("%zu withdrawn\n", records.size());
  return 0;
}

int Expire(const ServerSettings& settings, const Words& words) {
  if (!words.empty()) throw BadUsage();
  BecomeOwnerOf(settings.data);
  const std::size_t ended =
      Store(settings.data).Sweep(std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
  std::printf("%zu expired\n", ended);
  return 0;
}

int RunCommand(const std::string& command, const Words& words) {
  const ServerSettings settings = ReadServerSettings();
  if (command == "add") return Add(settings, words);
  if (command == "list") return List(settings, words);
  if (command == "remove") return Remove(settings, words);
  if (command == "withdraw") return Withdraw(settings, words);
  if (command == "expire") return Expire(settings, words);
  throw BadUsage();
}

int RunProgram(const Words& words) {
  try {
    if (words.size() == 1 && words[0] == "--help") {
      std::fputs(kHelp, stdout);
      return 0;
    }
    if (words.empty()) throw BadUsage();
    return RunCommand(words[0], Words(words.begin() + 1, words.end()));
  } catch (const BadUsage&) {
    std::fputs(kHelp, stderr);
    return 2;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tarvolinex-server: %s\n", failure.what());
    return 1;
  }
}

}  // namespace

}  // namespace tarvolinex::server

int main(int count, char** words) {
  return tarvolinex::server::RunProgram({words + 1, words + count});
}
