#include "calc/InputRules.h"

#include <gtest/gtest.h>

namespace tarvolinex {

TEST(InputRules, NumbersAreFormattedByKind) {
  struct Case {
    int kind;
    const char* text;
    double largest;
    const char* shown;
  };
  const Case cases[] = {
      {kInputAmount, "12,345.67", 0, "12345.67"},
      {kInputAmount, "123456789", kLargestAmount, "99999999.00"},
      {kInputAmount, "500", 100, "99999999.00"},
      {kInputPercent, "12.5abc", 0, "12.50"},
      {kInputPercent, "150", 100, "100.00"},
      {kInputPercent, "150", 200, "150.00"},
      {kInputPercent, "-3", 100, "-3.00"},
      {kInputCount, "-3", 0, "0"},
      {kInputCount, "3.6", 0, "4"},
      {kInputWholeAmount, "abc", 0, "0"},
      {kInputFreeText, "  O'Neill's ", 0, "O`Neill`s"},
      {9, " as it is ", 0, " as it is "},
  };
  for (const Case& c : cases) EXPECT_EQ(FormatNumberInput(c.kind, c.text, c.largest), c.shown) << c.text;
}

TEST(InputRules, StepsStopAtTheLimit) {
  Window window("Frm");
  TextBox box(window, "Txt");
  const auto step = [&](const char* from, bool up, double limit, int kind) {
    box.SetText(from);
    StepInput(box, up, limit, kind);
    return box.Text();
  };
  EXPECT_EQ(step("99.90", true, 100, kInputPercent), "100.00");
  EXPECT_EQ(step("9.5", true, 100, kInputPercent), "9.75");
  EXPECT_EQ(step("50", false, 0, kInputAmount), "0.00");
  EXPECT_EQ(step("12,345.67", true, 1e8, kInputAmount), "12445.67");
  EXPECT_EQ(step("1", false, 1, kInputCount), "1");
  EXPECT_EQ(step("7", true, 1000, kInputCount), "8");
}

}  // namespace tarvolinex
