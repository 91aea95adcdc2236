// Both preference records, on disk and as the JSON of the commands, and what is computed with them; mail profiles,
// price lists, the web server's answer, mail addresses.
#include <sstream>

#include "calc/Payment.h"
#include "cli/QuoteRows.h"
#include "core/RecordJson.h"
#include "core/Records.h"
#include "distribute/Upload.h"
#include "exchange/Csv.h"
#include "fuzz/Targets.h"
#include "platform/files/ProfileFile.h"
#include "platform/network/MailMessage.h"
#include "platform/network/MailProfiles.h"
#include "platform/text/Text.h"
#include "publish/Template.h"

namespace tarvolinex::fuzz {

namespace {

template <typename Record>
bool ReadBack(std::string_view bytes, Record& record) {
  const std::string path = Put("record.dat", bytes);
  if (!Works([&] { ReadRecord(path, record); })) return false;
  Record again, shown = record;
  WriteRecord(path, record);
  ReadRecord(path, again);
  Expect(RecordBytes(again) == RecordBytes(record), "a record is read as it was written");
  const std::string text = FormatJsonObject(RecordToJson(record));
  ChangeRecord(shown, ParseJsonObject(text));
  Expect(FormatJsonObject(RecordToJson(shown)) == text, "a record says what its JSON says");
  return true;
}

void ReadPreferences(std::string_view bytes) {
  CalculatorPreferencesRecord record;
  if (ReadBack(bytes, record))
    FillPlaceholders("|CALCULATORNAME| |PICBACKGROUND| |LEASEORGEMAIL|", {TheRun().Places(), record, "1"}, true);
}

void ReadSupplier(std::string_view bytes) {
  SupplierCalcSettingsRecord record;
  if (!ReadBack(bytes, record)) return;
  for (int mode = 0; mode <= 6; ++mode) {
    QuoteRecord quote;
    quote.CapitalCost = record.RangeEquipFROM[2];
    quote.NumberOfPayments = record.ID;
    quote.ApplyPremium = true;
    quote.Payment = record.AdditionalPremiumMin;
    CalculateQuote(mode, quote, {record, record.Com[0]});
  }
}

void ReadJson(std::string_view bytes) {
  CalculatorPreferencesRecord preferences;
  SupplierCalcSettingsRecord supplier;
  const auto change = [&](auto& record) { Works([&] { ChangeRecord(record, ParseJsonObject(bytes)); }); };
  Works([&] { FormatJsonObject(ParseJsonObject(bytes)); });
  change(preferences);
  change(supplier);
}

void ReadIni(std::string_view bytes) {
  const std::string path = Put("Mail.INI", bytes);
  DefaultMailProfileName(path);
  for (const std::string& name : MailProfileNames(path)) {
    std::string mistake;
    const MailProfile read = LoadMailProfile(path, name, &mistake);
    SaveMailProfile(path, read);
    Expect(LoadMailProfile(path, name) == read, "a mail profile is read as it was written");
  }
  const std::string value = FromWindows1252(bytes.substr(0, std::min<std::size_t>(200, bytes.find_first_of("\r\n"))));
  WriteProfileString(path, "MAIL", "Key", value);
  Expect(GetProfileString(path, "mail", "KEY", "") == value, "a value is read as it was written");
  RemoveProfileSection(path, "Mail");
}

void ReadCsv(std::string_view bytes) {
  RateCard card;
  for (std::size_t i = 0; i < 5; ++i) {
    card.RangeEquipFROM[i] = Currency::FromUnits(static_cast<std::int64_t>(5 - i) * 100000000);
    card.Yield[i] = static_cast<float>(i) + 7.5F;
    card.Com[i] = 2.5F;
  }
  std::istringstream input{std::string(bytes)};
  Works([&] {
    CsvSource source(input, "rows.csv");
    CsvPiece piece;
    if (!source.Next(piece)) return;
    CsvReader reader(piece.text, source.Name());
    std::vector<std::string_view> cells;
    if (!reader.Next(cells)) return;
    const QuoteColumns columns(cells, reader.Place());
    while (reader.Next(cells)) {
      QuoteRow row;
      columns.Read(cells, row, [&] { return reader.Place(); });
      CalculateQuote(row.mode, row.quote, {card, 20, row.capitalCostLocked});
      std::string results;
      AppendQuoteResult(row.quote, results);
      Expect(results.find_first_not_of("0123456789.,-\n") == std::string::npos, "results are decimals");
    }
  });
}

void ReadAnswer(std::string_view bytes) {
  const UploadAnswer answer = ReadUploadAnswer(bytes);
  Expect(answer.status.find("</STATUS>") == std::string::npos, "a status ends at its tag");
}

// The first line is the sender, the second the subject, the rest the text.
void ReadMail(std::string_view bytes) {
  std::istringstream input{std::string(bytes)};
  MailMessage message;
  std::string sender;
  std::getline(input, sender);
  std::getline(input, message.subject);
  message.text = bytes;
  message.from = ParseMailAddress(sender);
  if (!IsMailAddress(message.from.address)) return;
  message.to = {{message.from.name, "someone@example.com"}};
  const std::string bytesSent = message.Bytes();
  Expect(bytesSent.find("charset=utf-8") != std::string::npos, "a text is sent in UTF-8");
  std::istringstream written(bytesSent);
  std::string line, names;
  while (std::getline(written, line) && line != "\r") {
    if (line.front() != ' ' && line.front() != '\t') names += line.substr(0, line.find(':')) + " ";
  }
  Expect(names == "Date From Subject To Message-Id MIME-Version Content-Type Content-Transfer-Encoding ",
         "a message has the header that the program gives it");
}

}  // namespace

std::vector<Target> TextTargets() {
  return {
      {"general", ReadPreferences}, {"supplier", ReadSupplier}, {"json", ReadJson}, {"ini", ReadIni}, {"csv", ReadCsv},
      {"answer", ReadAnswer},       {"mail", ReadMail}};
}

}  // namespace tarvolinex::fuzz
