#include "platform/text/Currency.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvolinex {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max(),
                       kLeast = std::numeric_limits<std::int64_t>::min();

TEST(Currency, TextIsReadExactlyWithHalvesToEvenAndWrittenWithFourDecimals) {
  const std::pair<const char*, std::int64_t> cases[] = {{"12345.67", 123456700},
                                                        {"0.00005", 0},
                                                        {"0.00015", 2},
                                                        {"0.000051", 1},
                                                        {"-0.00015", -2},
                                                        {"-1", -10000},
                                                        {".5", 5000},
                                                        {"922337203685477.5807", kMost},
                                                        {"-922337203685477.5808", kLeast}};
  for (const auto& [text, units] : cases) EXPECT_EQ(Currency::FromText(text)->Units(), units) << text;
  for (const char* text : {"", "-", ".", "1.2.3", "12a", "922337203685477.5808", "99999999999999999999"}) {
    EXPECT_FALSE(Currency::FromText(text)) << text;
  }
  const std::pair<std::int64_t, const char*> written[] = {{0, "0.0000"},
                                                          {-5, "-0.0005"},
                                                          {3291253, "329.1253"},
                                                          {kLeast, "-922337203685477.5808"},
                                                          {kMost, "922337203685477.5807"}};
  for (const auto& [units, text] : written) EXPECT_EQ(Currency::FromUnits(units).ToText(), text);
}

TEST(Currency, WhatDoesNotFitIsRefused) {
  EXPECT_FALSE(Currency::FromDouble(1e15));
  EXPECT_FALSE(Currency::FromDouble(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(Currency::FromUnits(kMost).Plus(Currency::FromUnits(1)));
  EXPECT_EQ(Currency::FromDouble(0.00025)->Units(), 2);
}

TEST(Currency, HundredthsRoundAwayFromZero) {
  for (const auto& [units, hundredths] : {std::pair{3291250, 32913}, {3291249, 32912}, {-150, -2}}) {
    EXPECT_EQ(Currency::FromUnits(units).Hundredths(), hundredths);
  }
}

}  // namespace tarvolinex
