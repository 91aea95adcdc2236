// Whose calculator is out of date, in the list and on the tab.
#include "support/Fixture.h"

namespace tarvolinex {

class StandingMarksTest : public SampleTest {
 protected:
  void LookedAt() {
    while (form->standing.TmrStanding.Running()) form->standing.TmrStanding.Tick();
  }
  std::string StateOf(int supplier) {
    const ListView& list = form->LvwSuppliers;
    return list.At(list.Find("ID" + std::to_string(supplier))).cells.at(StandingMarks::kStateCell);
  }
  int Shown() {
    int shown = 0;
    for (const ListView::Row& row : form->LvwSuppliers.Rows()) shown += row.hidden ? 0 : 1;
    return shown;
  }
  void NoteSent(int supplier) {
    const Publication publication = {form->OwnBranding(), ReadSupplier(form->database, supplier).settings,
                                     LinkedForms(form->database, supplier)};
    NoteDelivery(form->database, publication, {{"2027-01-15 09:00:00", supplier, "", 1, "", "", "zip", "sent", "", ""}},
                 run);
  }
};

TEST_F(StandingMarksTest, FollowWhatIsSentAndWhatIsChanged) {
  LookedAt();
  EXPECT_EQ(StateOf(3), "never sent");
  NoteSent(3);
  NoteSent(4);
  Choose("Saxonholt Dental Systems Ltd");
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(StateOf(3), "") << "a new list begins without";
  LookedAt();
  EXPECT_EQ(StateOf(3) + ", " + StateOf(4) + ", " + StateOf(5), "current, current, never sent");
  Choose("Saxonholt Dental Systems Ltd");
  Type(form->rateCard.TxtRangeYield(1), "19.75");
  form->TabMain.Choose(kTabSend);
  LookedAt();
  EXPECT_EQ(StateOf(3), "out of date");
  const std::string told = form->standing.LblStanding.Caption();
  EXPECT_NE(told.find("Sent on 2027-01-15 09:00:00 as zip; changed since: yield of band 2 from"), std::string::npos)
      << told;
  // A word of the organisation's is everybody's.
  CalculatorPreferences.TaxRate = 21;
  form->UsePreferences();
  LookedAt();
  EXPECT_EQ(StateOf(4) + ", " + StateOf(5), "out of date, never sent");
  Choose("Aldermoor Print Finishing Ltd");
  LookedAt();
  EXPECT_EQ(form->standing.LblStanding.Caption(), "This calculator has not been sent yet");
}

TEST_F(StandingMarksTest, AreLookedAtWhereverTheListIsSortedToAndOnlyAtRest) {
  form->menus.MnuRefresh.Choose();
  form->quote.loading = true;
  form->standing.TmrStanding.Tick();
  EXPECT_FALSE(form->standing.TmrStanding.Running());
  EXPECT_EQ(StateOf(3), "");
  form->quote.loading = false;
  form->TimerOthers.Tick();
  // The last row becomes the first when that has been looked at.
  bool sorted = false;
  form->LvwSuppliers.Painter = [&](Aspect, int) {
    if (std::exchange(sorted, true)) return;
    for (int click = 0; click < 2; ++click) form->LvwSuppliers.ClickColumn(0);
  };
  LookedAt();
  form->LvwSuppliers.Painter = nullptr;
  for (const ListView::Row& row : form->LvwSuppliers.Rows()) EXPECT_NE(row.mark, RowMark::None) << row.text;
}

TEST_F(StandingMarksTest, TheListIsChosenAndSortedByThem) {
  NoteSent(3);
  form->menus.MnuRefresh.Choose();
  LookedAt();
  const int all = Shown();
  ComboBox& choice = form->standing.CboStanding;
  choice.Choose(3);
  EXPECT_EQ(choice.Items()[3].text, "\u2713 current");
  EXPECT_EQ(Shown(), 1);
  EXPECT_EQ(form->shown.CurrentSupplierId, 3) << "whatever acts on the selected supplier acts on one that is seen";
  form->TxtFilter.SetText("aldermoor");
  EXPECT_EQ(Shown(), 0);
  form->TxtFilter.SetText("");
  choice.Choose(0);
  EXPECT_EQ(Shown(), all);
  form->LvwSuppliers.ClickColumn(StandingMarks::kStateCell + 1);
  EXPECT_EQ(form->LvwSuppliers.At(0).key, "ID3");
}

}  // namespace tarvolinex
