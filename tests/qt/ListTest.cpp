#include "Player.h"
#include "qt/Binder.h"
#include "qt/ListModels.h"
#include "qt/Look.h"

namespace tarvolinex {

class Lists : public ShownWindow {
 protected:
  void Fill(int rows) {
    list.BeginFill();
    list.Clear();
    for (int i = 0; i < rows; ++i) {
      const std::string n = std::to_string(i);
      list.Add({"ID" + n, "Supplier " + n, {"tel " + n}, "", false});
    }
    list.EndFill();
  }
  ListView& list = form.LvwSuppliers;
};

TEST_F(Lists, ALongListIsShownFromTheControlsOwnRows) {
  Fill(10'000);
  QAbstractItemModel& model = *List().model();
  EXPECT_EQ(model.rowCount(), 10'000);
  const auto text = [&](int row, int column) { return model.index(row, column).data().toString(); };
  EXPECT_EQ(text(9'999, 0), "Supplier 9999");
  EXPECT_EQ(text(9'999, 1), "tel 9999");
  EXPECT_EQ(text(9'999, 2), "");  // a cell that the row does not have
  EXPECT_EQ(model.findChildren<QObject*>().size(), 0);
  list.SetCell(5, 0, "new");  // no copy: the row shows it without a fill
  EXPECT_EQ(text(5, 1), "new");

  // Rows that went while a fill is under way read as empty.
  list.BeginFill();
  list.Clear();
  EXPECT_EQ(text(9'999, 0), "");
  list.EndFill();
  EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(Lists, AClickReachesTheProgramOnceAndAProgramsSelectionDoesNot) {
  std::string clicks;
  Fill(10);
  list.ItemClick = [&] { clicks += std::to_string(list.Selected()); };
  list.DblClick = [&] { clicks += "!"; };
  ClickRow(3, List());
  ClickRow(3, List());  // again on the same row
  List().setFocus();
  Press(List(), Qt::Key_Down);
  Settle();
  list.Select(7);
  Settle();
  Press(List(), Qt::Key_Return);  // as a double click
  EXPECT_EQ(clicks, "334!");
  EXPECT_EQ(List().currentIndex().row(), 7);
}

TEST_F(Lists, TicksAreToggledByMouseAndKeyboard) {
  form.TabMain.SelectTab(kTabSettings);
  ListView& forms = form.forms.LvwForms;
  std::vector<int> ticks;
  forms.ItemCheck = [&](int row) { ticks.push_back(row); };
  for (const char* name : {"one", "two", "three"}) forms.Add({name, name, {}, "", false});
  Settle();
  auto& view = Find<QTreeView>("LvwForms");
  Click(*view.viewport(), view.visualRect(view.model()->index(1, 0)).topLeft() + QPoint(10, 9));
  EXPECT_TRUE(forms.At(1).checked);
  EXPECT_EQ(view.model()->index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  ClickRow(2, view);
  view.setFocus();
  Press(view, Qt::Key_Space);
  EXPECT_TRUE(forms.At(2).checked);
  EXPECT_EQ(ticks, std::vector<int>({1, 2}));
}

TEST_F(Lists, AColumnHeaderSortsAndShowsHow) {
  Fill(3);
  list.Select(0);
  list.ColumnClick = [&](int column) {
    list.SortColumn = column;
    list.SortAscending = false;
    list.Sort();
  };
  QHeaderView& header = *List().header();
  EXPECT_FALSE(header.isSortIndicatorShown());
  EXPECT_EQ(header.sectionSize(0), ToPixels(list.Columns()[0].width));
  Click(*header.viewport(), {header.sectionPosition(1) + 20, 8});
  EXPECT_EQ(list.At(0).text, "Supplier 2");
  EXPECT_EQ(List().currentIndex().row(), 2);  // the selected supplier has moved
  EXPECT_EQ(header.sortIndicatorSection(), 1);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  Press(List(), Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(header.sortIndicatorSection(), 0);
}

TEST(Trees, AreBuiltOnceAndKeepWhatTheUserOpened) {
  Window window("Any");
  TreeView tree(window, "Tree");
  QWidget root;
  QTreeWidget widget(&root);
  widget.setObjectName("Tree");
  const Binder binder(window, root);
  std::string clicked;
  tree.NodeClick = [&] { clicked = tree.Selected(); };
  tree.Add({"a", "", "First", false});
  tree.Add({"b", "a", "Below", false});
  QCoreApplication::processEvents();
  ASSERT_EQ(widget.topLevelItemCount(), 1);
  widget.topLevelItem(0)->setExpanded(true);
  tree.Add({"c", "", "Second", false});
  tree.Select("a");  // fires nothing, and builds what is still to be built
  EXPECT_EQ(widget.currentItem()->text(0), "First");
  EXPECT_TRUE(widget.topLevelItem(0)->isExpanded());
  EXPECT_EQ(clicked, "");
  widget.setCurrentItem(widget.topLevelItem(1));
  QCoreApplication::processEvents();
  EXPECT_EQ(clicked, "c");
  tree.SetNodeText("c", "Renamed");
  EXPECT_EQ(widget.topLevelItem(1)->text(0), "Renamed");
}

}  // namespace tarvolinex
