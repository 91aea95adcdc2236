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

TEST(InputRules, WhatABoxMayNotHoldIsNamedAndDoesNotStay) {
  const NumberRule amount = {kInputAmount, kLargestAmount, "Deposit", "% of Cost", "£"};
  const NumberRule rate = {kInputPercent, 100, "Yield", "", "£"},
                   payments = {kInputPayments, kMostPayments, "Payments", "", "£"};
  struct Case {
    const NumberRule& rule;
    const char *text, *fault, *left;  // 50 was in the box before
  };
  const Case cases[] = {
      {amount, "£12,345.67", "", "12345.67"},
      {amount, "", "", "0.00"},
      {amount, "10%", "Deposit: 10% goes with \"% of Cost\" beside the box", "50"},
      {amount, "-", "Deposit: - is no number", "50"},
      {amount, "12.5.3", "Deposit: 12.5.3 is no number", "12.50"},
      {amount, "100000000", "Deposit: 100000000 is more than 99999999.00", "99999999.00"},
      {amount, "-5", "Deposit: -5 is less than 0.00", "-5.00"},
      {rate, "8.5 %", "", "8.50"},
      {rate, "£25", "Yield: £25 is an amount; this is a percentage", "50"},
      {rate, "250", "Yield: 250 is more than 100.00", "100.00"},
      {payments, "", "Payments: a number is wanted", "50"},
      {payments, "0", "Payments: 0 is less than 1", "50"},
      {payments, "70000", "Payments: 70000 is more than 1000", "1000"},
      {payments, "36%", "Payments: 36% does not belong here", "50"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FaultOf(c.rule, c.text), c.fault);
    EXPECT_EQ(TextWhenLeft(c.rule, c.text, "50"), c.left) << c.text;
  }
  EXPECT_EQ(TextWhenLeft(payments, "0", ""), "1");
}

}  // namespace tarvolinex
