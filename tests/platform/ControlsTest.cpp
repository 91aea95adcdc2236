#include "platform/Controls.h"

#include <gtest/gtest.h>

namespace tarvolinex {

namespace {

struct Sample : Window {
  Sample() : Window("FrmSample") {}
  TextBox first{*this, "TxtFirst"}, second{*this, "TxtSecond"};
  CheckBox check{*this, "Chk"};
  ComboBox combo{*this, "Cbo"};
  ListBox list{*this, "Lst"};
  ListView view{*this, "Lvw"};
  CommandButton button{*this, "Cmd"};
  Menu file{*this, "MnuFile", "", "&File"}, save{*this, "MnuSave", "MnuFile", "&Save"};
  Toolbar bar{*this, "Bar"};
  TabStrip tabs{*this, "Tabs"};
};

}  // namespace

TEST(Controls, EventsFireWhenValuesChangeWhoeverChangesThem) {
  Sample w;
  std::string log;
  w.first.Change = [&] { log += "t"; };
  w.check.Click = [&] { log += "c"; };
  w.combo.Click = [&] { log += "o"; };
  w.list.Click = [&] { log += "l"; };
  w.view.ItemClick = [&] { log += "v"; };
  w.combo.Add("a");
  w.list.Add("a");
  w.view.Add({"ID1", "a", {}, ""});
  for (int i = 0; i < 2; ++i) {
    w.first.SetText("x");
    w.check.SetValue(true);
    w.combo.SetListIndex(0);
    w.list.SetListIndex(0);
    w.view.Select(0);
  }
  EXPECT_EQ(log, "tcol");
  w.view.ClickRow(0);
  EXPECT_EQ(log, "tcolv");
}

TEST(Controls, LockedAndDisabledControlsIgnoreTheUser) {
  Sample w;
  w.first.SetMaxLength(3);
  w.first.Type("£££££");
  EXPECT_EQ(w.first.Text(), "£££");
  w.first.SetLocked(true);
  w.first.Type("no");
  EXPECT_EQ(w.first.Text(), "£££");
  w.combo.Add("a");
  w.combo.SetLocked(true);
  w.combo.Choose(0);
  EXPECT_EQ(w.combo.ListIndex(), -1);
  int clicks = 0;
  w.save.Click = w.button.Click = [&] { ++clicks; };
  w.file.SetEnabled(false);
  w.save.Choose();
  w.button.SetEnabled(false);
  w.button.Press();
  EXPECT_EQ(clicks, 0);
}

TEST(Controls, TheFocusedFieldIsLeftBeforeACommandActs) {
  Sample w;
  std::string log;
  w.first.Validate = [&] { log += "V"; };
  w.first.LostFocus = [&] { log += "L"; };
  w.second.GotFocus = [&] { log += "G"; };
  w.button.Click = [&] { log += "b"; };
  w.save.Click = [&] { log += "m"; };
  w.bar.Add({"Go", "GO", "", "", ""});
  w.bar.ButtonClick = [&](const std::string& key) { log += key; };
  w.tabs.Add("1");
  w.tabs.Add("2");
  w.tabs.Click = [&] { log += "t"; };
  w.first.SetFocus();
  w.button.Press();
  w.save.Choose();
  w.bar.Press("GO");
  w.tabs.Choose(1);
  EXPECT_EQ(log, "VLbVLmVLGOVLt");
  log.clear();
  w.second.SetFocus();
  EXPECT_EQ(log, "VLG");
}

TEST(Controls, AHandlerThatMovesTheFocusBackWins) {
  Sample w;
  int entered = 0;
  w.first.LostFocus = [&] { w.first.SetFocus(); };
  w.second.GotFocus = [&] { ++entered; };
  w.first.SetFocus();
  w.second.SetFocus();
  EXPECT_EQ(w.ActiveControl(), &w.first);
  EXPECT_EQ(entered, 0);
}

TEST(Controls, SortingKeepsTheSelectedRowAndPaintsOnce) {
  Sample w;
  int paints = 0;
  w.view.Painter = [&](Aspect aspect, int) { paints += aspect == Aspect::Items; };
  w.view.BeginFill();
  for (const char* name : {"beta", "Alpha", "Ärger", "gamma"}) w.view.Add({name, name, {name}, ""});
  w.view.EndFill();
  EXPECT_EQ(paints, 1);
  w.view.Select(0);
  w.view.SortColumn = 1;
  w.view.SortAscending = false;
  w.view.Sort();
  EXPECT_EQ(w.view.At(0).key, "Ärger");
  EXPECT_EQ(w.view.At(w.view.Selected()).key, "beta");
  w.view.Remove(0);
  EXPECT_EQ(w.view.At(w.view.Selected()).key, "beta");
}

TEST(Controls, RemovingATreeNodeTakesWhatIsBelowIt) {
  Window w("FrmTree");
  TreeView tree(w, "Tvw");
  tree.Add({"A", "", "a"});
  tree.Add({"B", "A", "b"});
  tree.Add({"C", "B", "c"});
  tree.Add({"D", "", "d"});
  tree.Select("C");
  tree.Remove("A");
  EXPECT_EQ(tree.Nodes().size(), 1U);
  EXPECT_EQ(tree.Selected(), "");
}

}  // namespace tarvolinex
