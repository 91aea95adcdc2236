#include "core/RecordJson.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

TEST(RecordJson, ARecordComesBackFromItsJson) {
  SupplierCalcSettingsRecord record;
  record.ID = -7;
  record.CompanyName = "Zoë \"Ltd\" \\ £";
  record.RangeEquipFROM[4] = *Currency::FromText("-12345.6789");
  record.Yield[2] = 9.3F;
  record.ResidualOption = true;
  const std::string text = FormatJsonObject(RecordToJson(record));
  EXPECT_NE(text.find("\"RangeEquipFROM4\": \"-12345.6789\""), std::string::npos);
  EXPECT_NE(text.find("\"Yield2\": 9.3,"), std::string::npos);
  SupplierCalcSettingsRecord back;
  ChangeRecord(back, ParseJsonObject(text));
  EXPECT_EQ(RecordBytes(back), RecordBytes(record));
  const char* money = R"({"RangeEquipFROM0": "922337203685477.5807", "RangeEquipFROM1": 0.1, "Com0": 1e1})";
  ChangeRecord(record, ParseJsonObject(money));
  EXPECT_EQ(record.RangeEquipFROM[0].ToText() + " " + record.RangeEquipFROM[1].ToText(), "922337203685477.5807 0.1000");
  EXPECT_EQ(record.Com[0], 10);
}

TEST(RecordJson, ReservedBytesAreHexadecimalUnderTheirOffset) {
  CalculatorPreferencesRecord record;
  ChangeRecord(record, ParseJsonObject(R"({"Reserved780": "0aFf", "MaxTerm": 60})"));
  EXPECT_EQ(RecordBytes(record).substr(780, 2), "\x0A\xFF");
  EXPECT_NE(FormatJsonObject(RecordToJson(record)).find("\"Reserved780\": \"0aff\""), std::string::npos);
}

TEST(RecordJson, WhatDoesNotFitChangesNothing) {
  CalculatorPreferencesRecord record;
  for (const char* text : {R"({"MaxTerm": 5, "None": 1})", R"({"MaxTerm": 5, "TaxRate": "x"})",
                           R"({"DepositOptions": 70000})", R"({"MaxTerm": 1.5})", R"({"ShowBackground": 2})",
                           R"({"OrgTown": 5})", R"({"Reserved780": "0a"})", R"({"Reserved780": "zzzz"})"}) {
    EXPECT_THROW(ChangeRecord(record, ParseJsonObject(text)), RuntimeError) << text;
  }
  EXPECT_EQ(record, CalculatorPreferencesRecord());
  for (const char* text : {"", "[1]", "{\"a\":null}", "{\"a\":[1]}", "{\"a\":1,\"a\":2}", "{\"a\":1} x", "3"}) {
    EXPECT_THROW(ParseJsonObject(text), RuntimeError) << text;
  }
}

}  // namespace tarvolinex
