#include "core/Records.h"

#include <bit>
#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

static_assert(std::endian::native == std::endian::little, "records are copied as they lie in memory");

FixedText& FixedText::operator=(std::string_view text) {
  std::string_view cut = FirstCharacters(text, width_);
  text_ = cut.substr(0, cut.find_last_not_of(' ') + 1);
  return *this;
}

std::string FixedText::Trimmed() const {
  const auto first = text_.find_first_not_of(std::string_view(" \0", 2));
  if (first == std::string::npos) return {};
  return text_.substr(first, text_.find_last_not_of(std::string_view(" \0", 2)) - first + 1);
}

std::string FixedText::Padded() const {
  return FromWindows1252(Bytes());
}

std::string FixedText::Bytes() const {
  std::string bytes = ToWindows1252(text_);
  bytes.resize(static_cast<std::size_t>(width_), ' ');
  return bytes;
}

void FixedText::SetBytes(std::string_view bytes) {
  *this = FromWindows1252(bytes);
}

namespace {

template <auto Member, typename Record>
FieldMember Get(Record& record) {
  return FieldMember(&(record.*Member));
}

template <auto Member, typename Record>
FieldMember GetReserved(Record& record) {
  return FieldMember(std::span<char>(record.*Member));
}

// An element of one of the rate card's arrays.
template <auto Member, std::size_t Band, typename Record>
FieldMember GetBand(Record& record) {
  return FieldMember(&(record.*Member)[Band]);
}

using Preferences = CalculatorPreferencesRecord;
using Settings = SupplierCalcSettingsRecord;

int SizeOf(const FieldMember& member) {
  struct Sizer {
    int operator()(std::int16_t*) const { return 2; }
    int operator()(std::int32_t*) const { return 4; }
    int operator()(Colour*) const { return 4; }
    int operator()(float*) const { return 4; }
    int operator()(Currency*) const { return 8; }
    int operator()(bool*) const { return 2; }
    int operator()(FixedText* text) const { return text->Width(); }
    int operator()(std::span<char> bytes) const { return static_cast<int>(bytes.size()); }
  };
  return std::visit(Sizer{}, member);
}

struct Writer {
  char* out;
  template <typename Number>
  void operator()(Number* value) const {
    std::memcpy(out, value, sizeof(Number));
  }
  void operator()(bool* value) const { std::memset(out, *value ? 0xFF : 0, 2); }
  void operator()(Currency* value) const {
    const std::int64_t units = value->Units();
    std::memcpy(out, &units, sizeof units);
  }
  void operator()(FixedText* value) const {
    const std::string bytes = value->Bytes();
    std::memcpy(out, bytes.data(), bytes.size());
  }
  void operator()(std::span<char> bytes) const { std::memcpy(out, bytes.data(), bytes.size()); }
};

struct Reader {
  const char* in;
  template <typename Number>
  void operator()(Number* value) const {
    std::memcpy(value, in, sizeof(Number));
  }
  void operator()(bool* value) const { *value = in[0] != 0 || in[1] != 0; }
  void operator()(Currency* value) const {
    std::int64_t units = 0;
    std::memcpy(&units, in, sizeof units);
    *value = Currency::FromUnits(units);
  }
  void operator()(FixedText* value) const {
    value->SetBytes(std::string_view(in, static_cast<std::size_t>(value->Width())));
  }
  void operator()(std::span<char> bytes) const { std::memcpy(bytes.data(), in, bytes.size()); }
};

template <typename Record>
std::string Encode(const Record& record) {
  Record copy = record;
  const auto fields = FieldsOf(record);
  const auto& last = fields.back();
  std::string bytes(static_cast<std::size_t>(last.offset + SizeOf(last.member(copy))), '\0');
  for (const auto& field : fields) std::visit(Writer{bytes.data() + field.offset}, field.member(copy));
  return bytes;
}

template <typename Record>
bool Decode(std::string_view bytes, Record& record) {
  if (bytes.size() < Encode(Record()).size()) return false;
  for (const auto& field : FieldsOf(record)) std::visit(Reader{bytes.data() + field.offset}, field.member(record));
  return true;
}

template <typename Record>
void Read(std::string_view path, Record& record) {
  const std::string bytes = ReadFile(path);
  if (!Decode(bytes, record)) {
    throw RuntimeError(kDeviceError, Tr("%1 holds %2 bytes; the record has %3",
                                        {path, std::to_string(bytes.size()), std::to_string(Encode(record).size())}));
  }
}

template <typename Record>
void Write(std::string_view path, const Record& record) {
  std::string bytes = Encode(record);
  if (FileExists(path)) {
    const std::string old = ReadFile(path);
    if (old.size() > bytes.size()) bytes += old.substr(bytes.size());
  }
  WriteFile(path, bytes);
}

}  // namespace

std::span<const RecordField<Preferences>> FieldsOf(const Preferences&) {
  static const RecordField<Preferences> fields[] = {
      {"CalcBackColour", 0, Get<&Preferences::CalcBackColour>},
      {"CaptionColour", 4, Get<&Preferences::CaptionColour>},
      {"InputBackColour", 8, Get<&Preferences::InputBackColour>},
      {"InputTextColour", 12, Get<&Preferences::InputTextColour>},
      {"MinTerm", 16, Get<&Preferences::MinTerm>},
      {"MaxTerm", 20, Get<&Preferences::MaxTerm>},
      {"MaxCapitalCost", 24, Get<&Preferences::MaxCapitalCost>},
      {"MinCapitalCost", 28, Get<&Preferences::MinCapitalCost>},
      {"Reserved32", 32, GetReserved<&Preferences::Reserved32>},
      {"IconName", 44, Get<&Preferences::IconName>},
      {"AliasSupplier", 69, Get<&Preferences::AliasSupplier>},
      {"AliasCalcName", 94, Get<&Preferences::AliasCalcName>},
      {"AliasResidual", 119, Get<&Preferences::AliasResidual>},
      {"AliasDeposit", 144, Get<&Preferences::AliasDeposit>},
      {"AliasVat", 169, Get<&Preferences::AliasVat>},
      {"CurrencySymbol", 194, Get<&Preferences::CurrencySymbol>},
      {"TaxRate", 198, Get<&Preferences::TaxRate>},
      {"OrgCompanyName", 202, Get<&Preferences::OrgCompanyName>},
      {"OrgAddress1", 232, Get<&Preferences::OrgAddress1>},
      {"OrgAddress2", 262, Get<&Preferences::OrgAddress2>},
      {"OrgAddress3", 292, Get<&Preferences::OrgAddress3>},
      {"OrgTown", 322, Get<&Preferences::OrgTown>},
      {"OrgCounty", 352, Get<&Preferences::OrgCounty>},
      {"OrgPostCode", 382, Get<&Preferences::OrgPostCode>},
      {"OrgWebAddress", 402, Get<&Preferences::OrgWebAddress>},
      {"OrgTel", 552, Get<&Preferences::OrgTel>},
      {"OrgFax", 577, Get<&Preferences::OrgFax>},
      {"OrgEmail", 602, Get<&Preferences::OrgEmail>},
      {"OrgContactName", 652, Get<&Preferences::OrgContactName>},
      {"Reserved702", 702, GetReserved<&Preferences::Reserved702>},
      {"BorderColour", 710, Get<&Preferences::BorderColour>},
      {"OrgCaptionColour", 714, Get<&Preferences::OrgCaptionColour>},
      {"AliasMaint", 718, Get<&Preferences::AliasMaint>},
      {"AliasCapEquip", 743, Get<&Preferences::AliasCapEquip>},
      {"PageBackColour", 768, Get<&Preferences::PageBackColour>},
      {"MaxDepositPercent", 772, Get<&Preferences::MaxDepositPercent>},
      {"MinDepositPercent", 776, Get<&Preferences::MinDepositPercent>},
      {"Reserved780", 780, GetReserved<&Preferences::Reserved780>},
      {"Reserved782", 782, GetReserved<&Preferences::Reserved782>},
      {"Reserved806", 806, GetReserved<&Preferences::Reserved806>},
      {"MinAdvancedPayments", 808, Get<&Preferences::MinAdvancedPayments>},
      {"MinResidualPercent", 810, Get<&Preferences::MinResidualPercent>},
      {"MaxResidualPercent", 814, Get<&Preferences::MaxResidualPercent>},
      {"DepositOptions", 818, Get<&Preferences::DepositOptions>},
      {"ShowHeaderLogo", 820, Get<&Preferences::ShowHeaderLogo>},
      {"ShowBackground", 822, Get<&Preferences::ShowBackground>},
  };
  return fields;
}

std::span<const RecordField<Settings>> FieldsOf(const Settings&) {
  static const RecordField<Settings> fields[] = {
      {"ID", 0, Get<&Settings::ID>},
      {"CompanyName", 2, Get<&Settings::CompanyName>},
      {"Address1", 52, Get<&Settings::Address1>},
      {"Address2", 102, Get<&Settings::Address2>},
      {"Town", 152, Get<&Settings::Town>},
      {"County", 202, Get<&Settings::County>},
      {"PostCode", 252, Get<&Settings::PostCode>},
      {"Tel", 267, Get<&Settings::Tel>},
      {"Fax", 297, Get<&Settings::Fax>},
      {"www", 327, Get<&Settings::www>},
      {"email", 377, Get<&Settings::email>},
      {"RangeEquipFROM0", 427, GetBand<&Settings::RangeEquipFROM, 0>},
      {"RangeEquipFROM1", 435, GetBand<&Settings::RangeEquipFROM, 1>},
      {"RangeEquipFROM2", 443, GetBand<&Settings::RangeEquipFROM, 2>},
      {"RangeEquipFROM3", 451, GetBand<&Settings::RangeEquipFROM, 3>},
      {"RangeEquipFROM4", 459, GetBand<&Settings::RangeEquipFROM, 4>},
      {"Yield0", 467, GetBand<&Settings::Yield, 0>},
      {"Yield1", 471, GetBand<&Settings::Yield, 1>},
      {"Yield2", 475, GetBand<&Settings::Yield, 2>},
      {"Yield3", 479, GetBand<&Settings::Yield, 3>},
      {"Yield4", 483, GetBand<&Settings::Yield, 4>},
      {"Com0", 487, GetBand<&Settings::Com, 0>},
      {"Com1", 491, GetBand<&Settings::Com, 1>},
      {"Com2", 495, GetBand<&Settings::Com, 2>},
      {"Com3", 499, GetBand<&Settings::Com, 3>},
      {"Com4", 503, GetBand<&Settings::Com, 4>},
      {"AdditionalPremium", 507, Get<&Settings::AdditionalPremium>},
      {"ResidualOption", 509, Get<&Settings::ResidualOption>},
      {"AdditionalPremiumMsg", 511, Get<&Settings::AdditionalPremiumMsg>},
      {"AdditionalPremiumYield", 541, Get<&Settings::AdditionalPremiumYield>},
      {"AdditionalPremiumMin", 545, Get<&Settings::AdditionalPremiumMin>},
      {"MaintenanceOption", 553, Get<&Settings::MaintenanceOption>},
  };
  return fields;
}

std::string RecordBytes(const Preferences& record) {
  return Encode(record);
}
std::string RecordBytes(const Settings& record) {
  return Encode(record);
}
bool ReadRecordBytes(std::string_view bytes, Preferences& record) {
  return Decode(bytes, record);
}
bool ReadRecordBytes(std::string_view bytes, Settings& record) {
  return Decode(bytes, record);
}
void ReadRecord(std::string_view path, Preferences& record) {
  Read(path, record);
}
void ReadRecord(std::string_view path, Settings& record) {
  Read(path, record);
}
void WriteRecord(std::string_view path, const Preferences& record) {
  Write(path, record);
}
void WriteRecord(std::string_view path, const Settings& record) {
  Write(path, record);
}

}  // namespace tarvolinex
