#include "server/Upload.h"

#include <sys/stat.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/InstallFile.h"
#include "server/Parsing.h"
#include "server/References.h"
#include "server/Refusal.h"
#include "server/WholeText.h"

namespace tarvolinex::server {

namespace {

constexpr std::int64_t kMegabyte = 1 << 20;
const char* const kTooLarge = "The file is larger than this server takes.";

// The program reads what it is told in Windows-1252.
Answer TextAnswer(const std::string& sentence, bool success, std::string note) {
  std::string plain = ToWindows1252(sentence);
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == '<' || c == '>' || static_cast<unsigned char>(c) < ' '; },
      ' ');
  return {200, "text/plain; charset=windows-1252",
          "<STATUS>" + plain + "</STATUS>\r\n" + (success ? "SUCCESS" : "ERROR") + "\r\n", "", std::move(note)};
}

Reference KnownReference(const Request& request, const ServerSettings& settings) {
  const auto credentials = ReadAuthorization(request.authorization);
  if (!credentials) throw Refusal{"This server takes files only with a customer reference and its secret."};
  const auto reference = ReadReference(credentials->user);
  const auto found = reference ? FindReference(ReadReferences(settings.references), *reference) : std::nullopt;
  // An unknown reference takes as long as a wrong secret.
  if (!IsSecret(credentials->secret, found ? found->hash : kNobodysHash) || !found) {
    throw Refusal{"The customer reference is not known to this server, or its secret is wrong."};
  }
  return *found;
}

void CheckRoom(const Usage& usage, const Reference& reference, std::int64_t more) {
  if (usage.lastHour >= reference.hourly) {
    throw Refusal{"Your reference has sent as many files within an hour as it may. Please try again later."};
  }
  if (usage.bytes + more > reference.megabytes * kMegabyte) {
    throw Refusal{"Your reference has no room left on this server. Older links make room when they expire."};
  }
}

void CheckDisk(const Store& store, const ServerSettings& settings, std::int64_t more) {
  if (store.FreeBytes() - more < settings.keepFree) throw Refusal{"This server has no room left."};
}

// Letters, digits, blanks, ".", "-" and "_" alone, so that it is one name everywhere, in an address too.
std::string ProgramName(const std::string& calculator) {
  std::string name;
  for (const char c : calculator) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-';
    if (plain || (c == ' ' && !name.empty() && name.back() != ' ')) name += c;
  }
  name = Trim(name);
  return (name.empty() ? "Calculator" : name) + ".exe";
}

Record RecordOf(const CheckedCalculator& calculator, const std::string& id, const Reference& reference) {
  Record record;
  record.id = id;
  record.reference = reference.reference;
  record.token = RandomName();
  record.organisation = calculator.general.OrgCompanyName.Trimmed();
  record.supplier = calculator.supplier.CompanyName.Trimmed();
  record.calculator = calculator.general.AliasCalcName.Trimmed();
  record.program = ProgramName(record.calculator);
  record.logo = calculator.logo;
  record.page = calculator.general.PageBackColour;
  record.panel = calculator.general.CalcBackColour;
  record.text = calculator.general.CaptionColour;
  record.border = calculator.general.BorderColour;
  return record;
}

void MakePlace(const std::string& folder) {
  if (::mkdir(folder.c_str(), 0711) != 0) throw RuntimeError(kDeviceError, "Making " + folder);
}

// Looks the file through and stores it; returns the record.
Record Stored(const UploadedFile& file, const std::string& id, const Reference& reference, const Request& request,
              const ServerSettings& settings) {
  const Store store(settings.data);
  const auto size = static_cast<std::int64_t>(file.bytes.size());
  CheckDisk(store, settings, size);
  const Store::Incoming incoming(store);
  const std::string given = incoming.Path() + "/given";
  BeginFile(given, file.bytes);
  const CheckedCalculator calculator = CheckInstallFile(given, file.bytes, {settings.known, settings.unpacked});
  Record record = RecordOf(calculator, id, reference);
  record.received = request.now;
  record.expires = request.now + std::chrono::days(settings.days);
  record.bytes = record.room = size;
  for (const char* place : {"/page", "/program"}) MakePlace(incoming.Path() + place);
  for (const PageFile& part : calculator.page) {
    BeginFile(incoming.Path() + "/page/" + part.name, part.bytes);
    record.room += static_cast<std::int64_t>(part.bytes.size());
  }
  const std::string program = incoming.Path() + "/program/" + record.program;
  if (::rename(given.c_str(), program.c_str()) != 0) throw RuntimeError(kDeviceError, "Naming an install file");
  const auto allowed = [&](const Usage& usage) { CheckRoom(usage, reference, record.room); };
  if (!store.Keep(incoming, record, allowed)) throw Refusal{"A file of this name has been stored already."};
  return record;
}

Answer Take(const Request& request, const ServerSettings& settings, const Reference& reference) {
  if (!request.whole) throw Refusal{kTooLarge};
  const UploadedFile file = ReadUploadBody(request.contentType, request.body);
  if (static_cast<std::int64_t>(file.bytes.size()) > settings.largest) throw Refusal{kTooLarge};
  const auto id = IdentifierOf(file.name);
  if (!id) throw Refusal{"The file is not named CalcInstall_, an identifier and .exe."};
  if (!IsOf(*id, reference.reference, request.now)) {
    throw Refusal{"The identifier is not one of your reference and of today. Please check your computer's clock."};
  }
  const Record record = Stored(file, *id, reference, request, settings);
  return TextAnswer(
      "The calculator has been received and can be fetched for " + std::to_string(settings.days) + " days.", true,
      "stored id=" + record.id + " bytes=" + std::to_string(record.bytes));
}

Answer Tell(const Request& request, const ServerSettings& settings, const Reference& reference) {
  const Store store(settings.data);
  CheckDisk(store, settings, 0);
  const Usage usage = store.UsageOf(reference.reference, request.now);
  CheckRoom(usage, reference, 0);
  const std::int64_t left = reference.megabytes - (usage.bytes + kMegabyte - 1) / kMegabyte;
  return TextAnswer("The web server knows your reference " + reference.reference + ". It has room for " +
                        std::to_string(std::max<std::int64_t>(left, 0)) + " MB more and takes " +
                        std::to_string(reference.hourly - usage.lastHour) + " more files within this hour.",
                    true, "asked");
}

}  // namespace

Answer TakeUpload(const Request& request, const ServerSettings& settings) {
  std::string who = "ref=?";
  try {
    const Reference reference = KnownReference(request, settings);
    who = "ref=" + reference.reference;
    Answer answer = request.method == "POST" ? Take(request, settings, reference) : Tell(request, settings, reference);
    answer.note = who + " " + answer.note;
    return answer;
  } catch (const Refusal& refusal) {
    return TextAnswer(refusal.sentence, false, who + " refused: " + refusal.sentence);
  } catch (const RuntimeError& failure) {
    return TextAnswer(failure.Number() == kDiskFull ? "This server has no room left."
                                                    : "The server cannot store the file now. Please try again later.",
                      false, who + " failed: " + failure.Description());
  }
}

}  // namespace tarvolinex::server
