#include <QElapsedTimer>
#include <QHeaderView>
#include <QListView>
#include <QTreeView>
#include <QTreeWidget>

#include "ShownWindow.h"
#include "qt/Binder.h"
#include "qt/ListModels.h"
#include "qt/Look.h"

namespace tarvolinex {
namespace {

class Lists : public ShownWindow {
 protected:
  void Fill(int rows) {
    form_.LvwSuppliers.BeginFill();
    form_.LvwSuppliers.Clear();
    for (int i = 0; i < rows; ++i) {
      const std::string n = std::to_string(i);
      form_.LvwSuppliers.Add({"ID" + n, "Supplier " + n, {"tel " + n}, "", false});
    }
    form_.LvwSuppliers.EndFill();
  }
  QTreeView& View(const char* name = "LvwSuppliers") { return Find<QTreeView>(name); }
  void ClickRow(QTreeView& view, int row) {
    Click(*view.viewport(), view.visualRect(view.model()->index(row, 0)).center());
    Settle();
  }
};

TEST_F(Lists, ALongListIsShownFromTheControlsOwnRows) {
  Fill(10'000);
  QAbstractItemModel& model = *View().model();
  EXPECT_EQ(model.rowCount(), 10'000);
  const auto text = [&](int row, int column) { return model.index(row, column).data().toString(); };
  EXPECT_EQ(text(9'999, 0), "Supplier 9999");
  EXPECT_EQ(text(9'999, 1), "tel 9999");
  EXPECT_EQ(text(9'999, 2), "");  // a cell that the row does not have
  EXPECT_EQ(View().model()->findChildren<QObject*>().size(), 0);
  form_.LvwSuppliers.SetCell(5, 0, "new");  // no copy: the row shows it without a fill
  EXPECT_EQ(text(5, 1), "new");

  // Rows that went while a fill is under way read as empty.
  form_.LvwSuppliers.BeginFill();
  form_.LvwSuppliers.Clear();
  EXPECT_EQ(text(9'999, 0), "");
  form_.LvwSuppliers.EndFill();
  EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(Lists, AClickReachesTheProgramOnceAndAProgramsSelectionDoesNot) {
  std::vector<int> clicks;
  Fill(10);
  form_.LvwSuppliers.ItemClick = [&] { clicks.push_back(form_.LvwSuppliers.Selected()); };
  ClickRow(View(), 3);
  ClickRow(View(), 3);  // again on the same row
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Down);
  Settle();
  form_.LvwSuppliers.Select(7);
  Settle();
  EXPECT_EQ(clicks, std::vector<int>({3, 3, 4}));
  EXPECT_EQ(View().currentIndex().row(), 7);
}

TEST_F(Lists, TicksAreToggledByMouseAndKeyboard) {
  form_.TabMain.SelectTab(kTabSettings);
  ListView& forms = form_.rateCard.LvwForms;
  std::vector<int> ticks;
  forms.ItemCheck = [&](int row) { ticks.push_back(row); };
  for (const char* name : {"one", "two", "three"}) forms.Add({name, name, {}, "", false});
  Settle();
  QTreeView& view = View("LvwForms");
  Click(*view.viewport(), view.visualRect(view.model()->index(1, 0)).topLeft() + QPoint(10, 9));
  Settle();
  EXPECT_TRUE(forms.At(1).checked);
  EXPECT_EQ(view.model()->index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  ClickRow(view, 2);
  view.setFocus();
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_TRUE(forms.At(2).checked);
  EXPECT_EQ(ticks, std::vector<int>({1, 2}));
}

TEST_F(Lists, ReturnDoesWhatADoubleClickDoes) {
  int opened = -1;
  form_.LvwSuppliers.Add({"ID7", "One", {}, ""});
  form_.LvwSuppliers.DblClick = [&] { opened = form_.LvwSuppliers.Selected(); };
  form_.LvwSuppliers.Select(0);
  QTest::keyClick(&Find<QWidget>("LvwSuppliers"), Qt::Key_Return);
  EXPECT_EQ(opened, 0);
}

TEST_F(Lists, AColumnHeaderSortsAndShowsHow) {
  ListView& list = form_.LvwSuppliers;
  Fill(3);
  list.Select(0);
  list.ColumnClick = [&](int column) {
    list.SortColumn = column;
    list.SortAscending = false;
    list.Sort();
  };
  QHeaderView& header = *View().header();
  EXPECT_FALSE(header.isSortIndicatorShown());
  EXPECT_EQ(header.sectionSize(0), ToPixels(form_.LvwSuppliers.Columns()[0].width));
  Click(*header.viewport(), {header.sectionPosition(1) + 20, 8});
  EXPECT_EQ(list.At(0).text, "Supplier 2");
  EXPECT_EQ(View().currentIndex().row(), 2);  // the selected supplier has moved
  EXPECT_EQ(header.sortIndicatorSection(), 1);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  QTest::keyClick(&View(), Qt::Key_1, Qt::ControlModifier);
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

}  // namespace
}  // namespace tarvolinex
