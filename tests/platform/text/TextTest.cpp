#include "platform/text/Text.h"

#include <gtest/gtest.h>

namespace tarvolinex {

TEST(Text, LeadingNumberTakesWellFormedThousandsOnly) {
  const std::pair<const char*, double> cases[] = {{"", 0},
                                                  {"abc", 0},
                                                  {"12.5abc", 12.5},
                                                  {"  7", 7},
                                                  {"-3.25", -3.25},
                                                  {".5", 0.5},
                                                  {"12,345.67", 12345.67},
                                                  {"12,34", 12},
                                                  {"1234,567", 1234},
                                                  {"1,234,567.891", 1234567.891},
                                                  {"1,2345", 1},
                                                  {"12.", 12},
                                                  {"-", 0},
                                                  {"1e3", 1},
                                                  {"£100", 0},
                                                  {"0,123", 0},
                                                  {"5,", 5}};
  for (const auto& [text, number] : cases) EXPECT_DOUBLE_EQ(LeadingNumber(text), number) << text;
}

TEST(Text, ExactNumberTextRefusesAnythingElse) {
  std::string buffer;
  for (const char* text :
       {"", " ", "abc", "12x", "12,34", "1.2.3", "nan", "inf", "--1", "1 2", "1,23", "0x10", "1e5"}) {
    EXPECT_FALSE(ExactNumberText(text, buffer)) << text;
  }
  for (const auto& [text, number] : {std::pair{" 12,345.67 ", "12345.67"}, {"+5", "5"}, {"-.5", "-0.5"}}) {
    EXPECT_EQ(ExactNumberText(text, buffer), number);
  }
}

TEST(Text, FormatFixedRoundsDecimalsAwayFromZero) {
  const std::tuple<double, int, const char*> cases[] = {
      {1.005, 2, "1.01"},   {329.1253, 2, "329.13"}, {0.125, 2, "0.13"},
      {-0.125, 2, "-0.13"}, {-0.001, 2, "0.00"},     {99.995, 2, "100.00"},
      {9.5, 0, "10"},       {2.4, 0, "2"},           {1e15, 2, "1000000000000000.00"},
      {0.0 / 1, 2, "0.00"},
  };
  for (const auto& [value, decimals, text] : cases) EXPECT_EQ(FormatFixed(value, decimals), text) << value;
}

TEST(Text, EveryByteOfTheCodePageSurvivesTheRoundTrip) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes);
  EXPECT_EQ(ToWindows1252("€£Zoë"), "\x80\xA3Zo\xEB");
  EXPECT_EQ(ToWindows1252("日"), "?");
}

TEST(Text, CaseIsFoldedForTheLettersOfTheCodePage) {
  EXPECT_TRUE(EqualNoCase("ÄRGER Ž", "ärger ž"));
  EXPECT_EQ(UpperCase("zoë œuvre ÿ"), "ZOË ŒUVRE Ÿ");
  EXPECT_FALSE(EqualNoCase("×", "÷"));
  for (const char* text : {"\U0001F642 É", "\x80\xBF broken \xF0\x9F", "日本"})
    EXPECT_EQ(UpperCase(UpperCase(text)), UpperCase(text));
  EXPECT_EQ(FoldCase("\U0001F642É"), "\U0001F642é");
  EXPECT_EQ(CompareNoCase("abc", "ABD"), -1);
  EXPECT_EQ(CompareNoCase("Zoë", "zoe"), 1);
}

TEST(Text, ReplacementsAreNotSearchedAgain) {
  EXPECT_EQ(ReplaceAll("a'b'c", "'", "''"), "a''b''c");
  EXPECT_EQ(ReplaceAllNoCase("x<Id>y<ID>", "<id>", "<ID>"), "x<ID>y<ID>");
  EXPECT_EQ(FirstCharacters("£££", 2), "££");
}

}  // namespace tarvolinex
