#include "core/Records.h"

#include "support/Failure.h"
#include "support/Fixture.h"

namespace tarvolinex {

TEST(Records, ValuesLieWhereTheCalculatorLooksForThem) {
  SupplierCalcSettingsRecord supplier;
  supplier.ID = 258;
  supplier.CompanyName = "Zoë £";
  supplier.RangeEquipFROM[0] = *Currency::FromText("12345.67");
  supplier.MaintenanceOption = true;
  const std::string bytes = RecordBytes(supplier);
  EXPECT_EQ(bytes.substr(0, 2), std::string("\x02\x01"));
  EXPECT_EQ(bytes.substr(2, 6), "Zo\xEB \xA3 ");
  EXPECT_EQ(bytes.substr(427, 8), std::string("\xBC\xCC\x5B\x07\0\0\0\0", 8));  // 123456700
  EXPECT_EQ(bytes.substr(553), "\xFF\xFF");
  CalculatorPreferencesRecord preferences;
  preferences.TaxRate = 17.5F;
  preferences.MaxCapitalCost = -2;
  const std::string general = RecordBytes(preferences);
  EXPECT_EQ(general.substr(198, 4), std::string("\0\0\x8C\x41", 4));
  EXPECT_EQ(general.substr(24, 4), "\xFE\xFF\xFF\xFF");
}

TEST(Records, WhatWasReadIsWrittenBackByteForByte) {
  TemporaryFolder folder;
  std::string bytes;
  for (int i = 0; i < 900; ++i) bytes += static_cast<char>(i * 7 + 33);
  for (const int flag : {820, 822}) bytes.replace(static_cast<std::size_t>(flag), 2, "\xFF\xFF");
  const std::string path = folder.File("General.dat", bytes);
  CalculatorPreferencesRecord record;
  ReadRecord(path, record);
  WriteRecord(path, record);
  EXPECT_EQ(ReadFile(path), bytes);
}

TEST(Records, TextsAreCutToTheirWidthAndReadBackTrimmed) {
  FixedText text(5);
  text = "  ££££££££";
  EXPECT_EQ(text.Trimmed(), "£££");
  EXPECT_EQ(text.Bytes(), "  \xA3\xA3\xA3");
  text = "ab";
  EXPECT_EQ(text.Padded(), "ab   ");
  text.SetBytes(std::string("ab\0\0\0", 5));
  EXPECT_EQ(text.Trimmed(), "ab");
}

TEST(Records, AShortFileIsRefusedAndNamesItself) {
  TemporaryFolder folder;
  const std::string path = folder.File("Supplier.dat", std::string(554, ' '));
  SupplierCalcSettingsRecord record;
  EXPECT_NE(FailureOf([&] { ReadRecord(path, record); }).Description().find(path), std::string::npos);
}

}  // namespace tarvolinex
