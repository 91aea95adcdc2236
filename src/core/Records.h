// The two preference records that the published calculators share with the program. Their layout on disk is fixed
// byte for byte: little-endian, no padding between fields, texts in Windows-1252 padded with blanks.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "controls/Controls.h"
#include "platform/text/Currency.h"

namespace tarvolinex {

// A text of at most `Width` characters: a longer one is cut when it is assigned.
class FixedText {
 public:
  explicit FixedText(int width) : width_(width) {}
  FixedText& operator=(std::string_view text);
  int Width() const { return width_; }
  std::string Trimmed() const;
  std::string Padded() const;  // to its width
  // Exactly Width bytes of Windows-1252, and back.
  std::string Bytes() const;
  void SetBytes(std::string_view bytes);
  bool operator==(const FixedText&) const = default;

 private:
  int width_;
  std::string text_;  // without trailing blanks
};

// "General.dat": the organisation's own words, colours, limits and details.
struct CalculatorPreferencesRecord {
  Colour CalcBackColour = 0, CaptionColour = 0, InputBackColour = 0, InputTextColour = 0;
  std::int32_t MinTerm = 0, MaxTerm = 0;                // months
  std::int32_t MaxCapitalCost = 0, MinCapitalCost = 0;  // whole currency units
  std::array<char, 12> Reserved32 = {};
  FixedText IconName{25};
  FixedText AliasSupplier{25}, AliasCalcName{25}, AliasResidual{25}, AliasDeposit{25}, AliasVat{25};
  FixedText CurrencySymbol{4};
  float TaxRate = 0;  // percent
  FixedText OrgCompanyName{30}, OrgAddress1{30}, OrgAddress2{30}, OrgAddress3{30}, OrgTown{30}, OrgCounty{30};
  FixedText OrgPostCode{20}, OrgWebAddress{150}, OrgTel{25}, OrgFax{25}, OrgEmail{50}, OrgContactName{50};
  std::array<char, 8> Reserved702 = {};
  Colour BorderColour = 0, OrgCaptionColour = 0;
  FixedText AliasMaint{25}, AliasCapEquip{25};
  Colour PageBackColour = 0;
  float MaxDepositPercent = 0, MinDepositPercent = 0;  // of the capital cost
  std::array<char, 2> Reserved780 = {};
  std::array<char, 24> Reserved782 = {};
  std::array<char, 2> Reserved806 = {};
  std::int16_t MinAdvancedPayments = 0;
  float MinResidualPercent = 0, MaxResidualPercent = 0;  // of the capital cost
  std::int16_t DepositOptions = 0;                       // 1 value, 2 percentage, 4 advanced payments
  bool ShowHeaderLogo = false, ShowBackground = false;
  bool operator==(const CalculatorPreferencesRecord&) const = default;
};

// A supplier's rate card. A capital cost C belongs to band 0 above RangeEquipFROM[0], to band i from 1 to 3 above
// RangeEquipFROM[i] up to RangeEquipFROM[i - 1], to band 4 up to RangeEquipFROM[3]; RangeEquipFROM[4] is only carried.
struct RateCard {
  std::array<Currency, 5> RangeEquipFROM = {};  // falling
  std::array<float, 5> Yield = {};              // percent a year
  std::array<float, 5> Com = {};                // percent of the capital cost
  bool AdditionalPremium = false, ResidualOption = false, MaintenanceOption = false;
  FixedText AdditionalPremiumMsg{30};
  float AdditionalPremiumYield = 0;  // percent a year on top
  Currency AdditionalPremiumMin;     // the premium applies above this capital cost
  bool operator==(const RateCard&) const = default;
};

// "Supplier.dat": a supplier's identity and rate card.
struct SupplierCalcSettingsRecord : RateCard {
  std::int16_t ID = 0;
  FixedText CompanyName{50}, Address1{50}, Address2{50}, Town{50}, County{50}, PostCode{15};
  FixedText Tel{30}, Fax{30}, www{50}, email{50};
  bool operator==(const SupplierCalcSettingsRecord&) const = default;
};

// Sizes on disk in bytes; files of a record are told apart by them.
inline constexpr int kCalculatorPreferencesSize = 824;
inline constexpr int kSupplierCalcSettingsSize = 555;

// One field of a record: where it lies and what it is in memory.
using FieldMember = std::variant<std::int16_t*, std::int32_t*, Colour*, float*, Currency*, bool*, FixedText*,
                                 std::span<char>>;  // the last: reserved bytes, kept as they are
template <typename Record>
struct RecordField {
  std::string name;
  int offset;  // bytes
  FieldMember (*member)(Record&);
};

// The fields in the order of their offsets; together they cover the whole record.
std::span<const RecordField<CalculatorPreferencesRecord>> FieldsOf(const CalculatorPreferencesRecord&);
std::span<const RecordField<SupplierCalcSettingsRecord>> FieldsOf(const SupplierCalcSettingsRecord&);

// Exactly the record's size.
std::string RecordBytes(const CalculatorPreferencesRecord& record);
std::string RecordBytes(const SupplierCalcSettingsRecord& record);

// Reads record 1 of the file. Throws RuntimeError when the file is missing, unreadable or shorter than the record.
void ReadRecord(std::string_view path, CalculatorPreferencesRecord& record);
void ReadRecord(std::string_view path, SupplierCalcSettingsRecord& record);

// The same of the bytes of such a file; false when they are too few.
bool ReadRecordBytes(std::string_view bytes, CalculatorPreferencesRecord& record);
bool ReadRecordBytes(std::string_view bytes, SupplierCalcSettingsRecord& record);

// Writes record 1; a file that was longer keeps its extra bytes. Whole or not at all. Throws RuntimeError.
void WriteRecord(std::string_view path, const CalculatorPreferencesRecord& record);
void WriteRecord(std::string_view path, const SupplierCalcSettingsRecord& record);

}  // namespace tarvolinex
