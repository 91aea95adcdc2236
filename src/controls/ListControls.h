// The kinds of control that show several things to choose from.
#pragma once

#include "controls/Window.h"

namespace tarvolinex {

class ComboBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "COMBOBOX"; }

  struct Item {
    std::string text;
    int data = 0;
    bool operator==(const Item&) const = default;
  };
  const std::vector<Item>& Items() const { return items_; }
  // Leaves nothing selected, without a Click.
  void Clear();
  void Add(std::string text, int data = 0);
  int ListIndex() const { return listIndex_; }  // -1 = nothing selected
  // Fires Click when the index changes. An index outside the list selects nothing.
  void SetListIndex(int index);
  // What the user's choice does, also of the item that is selected already: Click. Nothing when locked or disabled.
  void Choose(int index);
  // The selected item's data; -1 when nothing is selected.
  int ItemData() const;
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);

  Event Click;

 private:
  std::vector<Item> items_;
  int listIndex_ = -1;
  bool locked_ = false;
};

class ListBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "LISTBOX"; }

  using Item = ComboBox::Item;
  const std::vector<Item>& Items() const { return items_; }
  void Clear();
  void Add(std::string text, int data = 0);
  int ListIndex() const { return listIndex_; }
  void SetListIndex(int index);
  int ItemData() const;
  // Other items: the one that was selected stays so, by its data, where it still is there. Fires nothing. Returns
  // whether they are others; the same are not painted anew, so that a click that has begun still meets its item.
  bool Renew(std::vector<Item> items);

  Event Click;
  Event DblClick;

 private:
  std::vector<Item> items_;
  int listIndex_ = -1;
};

// A sign before a row's first text, told by its shape.
enum class RowMark { None, Full, Empty, Tick };
// The sign as a character; "" for None.
std::string_view SignOf(RowMark mark);

class ListView : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "LISTVIEW"; }

  struct Column {
    std::string header;
    std::string tag;
    int width = 1440;           // twips
    bool rightAligned = false;  // holds numbers, and is sorted by them
  };
  struct Row {
    std::string key;
    std::string text;                // first column
    std::vector<std::string> cells;  // the others
    std::string toolTip;
    bool checked = false;
    bool hidden = false;  // by the filter
    RowMark mark = RowMark::None;
    bool operator==(const Row&) const = default;
  };

  std::vector<Column>& Columns() { return columns_; }
  const std::vector<Column>& Columns() const { return columns_; }
  bool CheckBoxes = false;
  std::string NoMatchText;  // stands in the list while the filter shows none of its rows

  const std::vector<Row>& Rows() const { return rows_; }
  const Row& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  int Count() const { return static_cast<int>(rows_.size()); }
  // A list that is being filled paints once, at the end: nothing is painted between BeginFill and EndFill.
  void BeginFill() { filling_ = true; }
  void EndFill();
  void Clear();
  // As Clear, and gives the rows away, so that whoever fills the list anew can use their memory again.
  std::vector<Row> TakeRows();
  void Add(Row row);
  void Remove(int row);
  // Other rows, in the list's order: those of the same key stay selected and ticked, and where the user looks stays.
  // Returns as a list box does.
  bool Renew(std::vector<Row> rows);
  // -1 when no row has the key.
  int Find(std::string_view key) const;
  void SetRowText(int row, std::string_view text);
  void SetRowToolTip(int row, std::string text);
  // cell 0 is the second column. Cells that the row does not have yet are added empty.
  void SetCell(int row, int cell, std::string_view text);
  void SetChecked(int row, bool checked);
  void SetMark(int row, RowMark mark);

  // Rows that the filter refuses are kept but not shown; nullptr shows all. Asked again after every fill.
  void SetFilter(std::function<bool(const Row&)> filter);
  // The row as one line, cells separated by tabs; empty for a row that is not there.
  std::string RowLine(int row) const;

  int FirstShown() const;                     // the first row that the filter shows, else the first; -1 = none
  int Selected() const { return selected_; }  // -1 = none
  // By program: fires nothing.
  void Select(int row);
  // By the user: fires ItemClick.
  void ClickRow(int row);
  void DoubleClickRow(int row);
  void ToggleCheck(int row);  // by the user: fires ItemCheck
  void ClickColumn(int column);

  int SortColumn = -1;  // -1 = in the order of filling
  bool SortAscending = true;
  // Sorts by SortColumn, texts without regard to case; the selected row stays selected. `pause` is called now and then.
  void Sort(const std::function<void()>& pause = {});

  Event ItemClick;
  Event DblClick;
  std::function<void(int row)> ItemCheck;
  std::function<void(int column)> ColumnClick;

 private:
  void PaintItems();
  void Filter();
  std::function<bool(const Row&)> filter_;
  std::vector<Column> columns_;
  std::vector<Row> rows_;
  int selected_ = -1;
  bool filling_ = false;
};

class TreeView : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TREEVIEW"; }

  struct Node {
    std::string key;
    std::string parent;  // key of the parent; empty for a root
    std::string text;
    bool expanded = false;
  };
  const std::vector<Node>& Nodes() const { return nodes_; }
  void Clear();
  void Add(Node node);
  void Remove(std::string_view key);  // with everything below it
  void SetNodeText(std::string_view key, std::string_view text);
  void Expand(std::string_view key);  // shows what lies below it
  const Node* Find(std::string_view key) const;
  const std::string& Selected() const { return selected_; }  // key; empty = none
  void Select(std::string_view key);                         // by program: fires nothing
  void ClickNode(std::string_view key);                      // by the user

  Event NodeClick;
  Event DblClick;

 private:
  std::vector<Node> nodes_;
  std::string selected_;
};

}  // namespace tarvolinex
