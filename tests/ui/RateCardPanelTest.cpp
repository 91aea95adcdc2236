#include "ui/main/RateCardPanel.h"

#include "support/Fixture.h"

namespace tarvolinex {

class RateCardPanelTest : public ProgramTest {
 protected:
  RateCardPanelTest() { card.SetDefaults(); }
  // What the box shows when the text was typed and the box left.
  std::string Typed(TextBox& box, const std::string& text) {
    box.SetFocus();
    box.Type(text);
    window.LeaveField();
    return box.Text();
  }
  Window window{"FrmMain"};
  ShownSupplier shown;
  RateCardPanel card{window, run, shown};
};

TEST_F(RateCardPanelTest, ThresholdsStayInOrder) {
  const char* thresholds[] = {"100000.00", "20000.00", "5000.00", "1000.00"};
  for (int box = 1; box <= 4; ++box) card.txtRangeTo(box).SetText(thresholds[box - 1]);
  const std::tuple<int, const char*, const char*> cases[] = {{3, "50,000", "100000.00 50000.00 50000.00 1000.00"},
                                                             {4, "200000", "200000.00 200000.00 200000.00 200000.00"},
                                                             {1, "500", "500.00 500.00 500.00 500.00"},
                                                             {2, "999999999", "99999999.00 99999999.00 500.00 500.00"}};
  for (const auto& [box, typed, all] : cases) {
    Typed(card.txtRangeTo(box), typed);
    std::string boxes, labels;
    for (int i = 1; i <= 4; ++i) {
      boxes += (i > 1 ? " " : "") + card.txtRangeTo(i).Text();
      labels += (i > 1 ? " " : "") + card.lblRangeFrom(i - 1).Caption();
    }
    EXPECT_EQ(boxes, all);
    EXPECT_EQ(labels, all);
  }
  EXPECT_TRUE(shown.SupplierChanged);
}

TEST_F(RateCardPanelTest, RatesAreFormattedWithinTheirLimits) {
  EXPECT_EQ(Typed(card.TxtRangeYield(0), "150"), "100.00");
  EXPECT_EQ(Typed(card.txtComPerc(4), "150.555"), "150.56");
  EXPECT_EQ(Typed(card.TxtAddRate(0), " Isn't it? "), "Isn`t it?");
}

}  // namespace tarvolinex
