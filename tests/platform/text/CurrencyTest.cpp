#include "platform/text/Currency.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvolinex {

TEST(Currency, TextIsReadExactlyWithHalvesToEven) {
  const std::pair<const char*, std::int64_t> cases[] = {
      {"12345.67", 123456700},
      {"0.00005", 0},
      {"0.00015", 2},
      {"0.000051", 1},
      {"-0.00015", -2},
      {"-1", -10000},
      {".5", 5000},
      {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
      {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()},
  };
  for (const auto& [text, units] : cases) EXPECT_EQ(Currency::FromText(text)->Units(), units) << text;
  for (const char* text : {"", "-", ".", "1.2.3", "12a", "922337203685477.5808", "99999999999999999999"}) {
    EXPECT_FALSE(Currency::FromText(text)) << text;
  }
}

TEST(Currency, TextHasFourDecimalsAndReadsBack) {
  for (const std::int64_t units :
       {std::int64_t{0}, std::int64_t{-5}, std::int64_t{3291253}, std::numeric_limits<std::int64_t>::min(),
        std::numeric_limits<std::int64_t>::max()}) {
    const auto amount = Currency::FromUnits(units);
    EXPECT_EQ(Currency::FromText(amount.ToText())->Units(), units);
  }
  EXPECT_EQ(Currency::FromUnits(-5).ToText(), "-0.0005");
}

TEST(Currency, WhatDoesNotFitIsRefused) {
  EXPECT_FALSE(Currency::FromDouble(1e15));
  EXPECT_FALSE(Currency::FromDouble(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(Currency::FromUnits(std::numeric_limits<std::int64_t>::max()).Plus(Currency::FromUnits(1)));
  EXPECT_EQ(Currency::FromDouble(0.00025)->Units(), 2);
}

TEST(Currency, HundredthsRoundAwayFromZero) {
  EXPECT_EQ(Currency::FromUnits(3291250).Hundredths(), 32913);
  EXPECT_EQ(Currency::FromUnits(3291249).Hundredths(), 32912);
  EXPECT_EQ(Currency::FromUnits(-150).Hundredths(), -2);
}

}  // namespace tarvolinex
