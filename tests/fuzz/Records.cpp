// Both preference records, on disk and as the JSON of the commands, and what is computed with them.
#include "core/Records.h"

#include "calc/Payment.h"
#include "cli/RecordJson.h"
#include "fuzz/Targets.h"
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
  if (ReadBack(bytes, record)) FillPlaceholders("|CALCULATORNAME| |PICBACKGROUND| |LEASEORGEMAIL|", record, true);
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
  JsonObject object;
  if (!Works([&] { object = ParseJsonObject(bytes); })) return;
  FormatJsonObject(object);
  Works([&] { ChangeRecord(preferences, object); });
  Works([&] { ChangeRecord(supplier, object); });
}

}  // namespace

std::vector<Target> RecordTargets() {
  return {{"general", ReadPreferences}, {"supplier", ReadSupplier}, {"json", ReadJson}};
}

}  // namespace tarvolinex::fuzz
