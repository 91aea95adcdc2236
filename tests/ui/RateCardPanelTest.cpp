#include "support/Fixture.h"

namespace tarvolinex {

class RateCardPanelTest : public WindowTest {
 protected:
  RateCardPanelTest() {
    form->rateCard.SetDefaults();
    form->quote.SetDefaults();
    const char* thresholds[] = {"100000.00", "20000.00", "5000.00", "1000.00"};
    for (int i = 1; i <= 4; ++i) To(i).SetText(thresholds[i - 1]);
  }
  TextBox& To(int box) { return form->rateCard.txtRangeTo(box); }
  std::string All() { return To(1).Text() + " " + To(2).Text() + " " + To(3).Text() + " " + To(4).Text(); }
};

TEST_F(RateCardPanelTest, ThresholdsStayInOrder) {
  Type(To(3), "50,000");
  EXPECT_EQ(form->rateCard.lblRangeFrom(2).Caption(), "50000.00");
  form->LeaveField();
  EXPECT_EQ(All(), "100000.00 50000.00 50000.00 1000.00");
  Type(To(4), "200000");
  form->LeaveField();
  EXPECT_EQ(All(), "200000.00 200000.00 200000.00 200000.00");
  Type(To(1), "500");
  form->LeaveField();
  EXPECT_EQ(All(), "500.00 500.00 500.00 500.00");
  EXPECT_EQ(form->rateCard.lblRangeFrom(3).Caption(), "500.00");
  Type(To(2), "999999999");
  form->LeaveField();
  EXPECT_EQ(To(2).Text(), "99999999.00");
  EXPECT_TRUE(form->shown.SupplierChanged);
}

TEST_F(RateCardPanelTest, RatesAreFormattedWithinTheirLimits) {
  Type(form->rateCard.TxtRangeYield(0), "150");
  form->LeaveField();
  EXPECT_EQ(form->rateCard.TxtRangeYield(0).Text(), "100.00");
  Type(form->rateCard.txtComPerc(4), "150.555");
  form->LeaveField();
  EXPECT_EQ(form->rateCard.txtComPerc(4).Text(), "150.56");
  Type(form->rateCard.TxtAddRate(0), " Isn't it? ");
  form->LeaveField();
  EXPECT_EQ(form->rateCard.TxtAddRate(0).Text(), "Isn`t it?");
}

using RateCardOfSample = SampleTest;

// The cursor stands in a rate box while another supplier's rates are loaded.
TEST_F(RateCardOfSample, WhatNobodyTypedIsStoredAsItWas) {
  form->database.Plain().Execute("UPDATE suppliers SET Yield0=9.125 WHERE ID=1");
  form->rateCard.TxtRangeYield(0).SetFocus();
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(form->rateCard.TxtRangeYield(0).Text(), "9.125");
  form->rateCard.TxtRangeYield(0).Type("£5");  // no rate: what is on record comes back
  form->rateCard.txtRangeTo(2).SetFocus();
  form->rateCard.TxtRangeYield(1).SetFocus();
  form->rateCard.TxtRangeYield(1).Type("8.126");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Ask("SELECT Yield0 FROM suppliers WHERE ID=1"), "9.125");
  EXPECT_EQ(Ask("SELECT Yield1 FROM suppliers WHERE ID=1"), "8.13");
}

TEST_F(RateCardPanelTest, WhatASupplierDoesNotOfferIsLockedAndSaysWhy) {
  SupplierCalcSettings.AdditionalPremium = SupplierCalcSettings.ResidualOption =
      SupplierCalcSettings.MaintenanceOption = true;
  form->quote.ApplySupplierOptions();
  form->quote.ChkPremium.SetValue(true);
  Box(kBoxResidual).SetText("500");
  EXPECT_TRUE(form->quote.ChkPremium.Enabled());
  SupplierCalcSettings = {};
  form->quote.ApplySupplierOptions();
  EXPECT_FALSE(form->quote.ChkPremium.Enabled() || form->quote.ChkPremium.Value());
  EXPECT_EQ(form->quote.ChkPremium.ToolTip(), "Additional Rate Premium disabled for this Dealer");
  EXPECT_EQ(form->quote.LblPremium.Caption(), "Additional Rate Premium");
  EXPECT_TRUE(Box(kBoxResidual).Locked() && Box(kBoxMaintenance).Locked());
  EXPECT_TRUE(form->quote.CboProCalc(kListResidualMode).Locked());
  EXPECT_EQ(Box(kBoxResidual).Text(), "0");
  EXPECT_EQ(Box(kBoxResidual).ToolTip(), "Balloon disabled for this Dealer");
  EXPECT_EQ(Box(kBoxMaintenance).ToolTip(), "Service disabled for this Dealer");
}

}  // namespace tarvolinex
