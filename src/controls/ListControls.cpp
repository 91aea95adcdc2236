#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "controls/Controls.h"
#include "platform/text/Text.h"

namespace tarvolinex {

void ComboBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  Paint(Aspect::Items);
}

void ComboBox::Add(std::string text, int data) {
  items_.push_back({std::move(text), data});
  Paint(Aspect::Items);
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) index = -1;
  if (listIndex_ == index) return;
  listIndex_ = index;
  Paint(Aspect::Selection);
  Fire(Click);
}

void ComboBox::Choose(int index) {
  if (locked_ || !Enabled()) return;
  if (index == listIndex_) return Fire(Click);
  SetListIndex(index);
}

int ComboBox::ItemData() const {
  return listIndex_ < 0 ? -1 : items_[static_cast<std::size_t>(listIndex_)].data;
}

void ComboBox::SetLocked(bool locked) {
  if (std::exchange(locked_, locked) != locked) Paint(Aspect::State);
}

void ListBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  Paint(Aspect::Items);
}

void ListBox::Add(std::string text, int data) {
  items_.push_back({std::move(text), data});
  Paint(Aspect::Items);
}

void ListBox::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) index = -1;
  if (listIndex_ == index) return;
  listIndex_ = index;
  Paint(Aspect::Selection);
  if (index >= 0) Fire(Click);
}

int ListBox::ItemData() const {
  return listIndex_ < 0 ? -1 : items_[static_cast<std::size_t>(listIndex_)].data;
}

bool ListBox::Renew(std::vector<Item> items) {
  if (items == items_) return false;
  const auto selected = std::ranges::find(items, ItemData(), &Item::data);
  listIndex_ = listIndex_ < 0 || selected == items.end() ? -1 : static_cast<int>(selected - items.begin());
  items_ = std::move(items);
  Paint(Aspect::Renewed);
  return true;
}

void ListView::PaintItems() {
  if (!filling_) Paint(Aspect::Items);
}

void ListView::EndFill() {
  filling_ = false;
  Filter();
  PaintItems();
}

void ListView::SetFilter(std::function<bool(const Row&)> filter) {
  filter_ = std::move(filter);
  Filter();
  PaintItems();
}

void ListView::Filter() {
  for (Row& row : rows_) row.hidden = filter_ && !filter_(row);
}

std::string ListView::RowLine(int row) const {
  if (row < 0 || row >= Count()) return {};
  std::string line = At(row).text;
  for (const std::string& cell : At(row).cells) line += "\t" + cell;
  return line;
}

void ListView::Clear() {
  rows_.clear();
  selected_ = -1;
  PaintItems();
}

std::vector<ListView::Row> ListView::TakeRows() {
  std::vector<Row> rows = std::exchange(rows_, {});
  rows_.reserve(rows.size());
  Clear();
  return rows;
}

void ListView::Add(Row row) {
  rows_.push_back(std::move(row));
  PaintItems();
}

void ListView::Remove(int row) {
  if (row < 0 || row >= Count()) return;
  rows_.erase(rows_.begin() + row);
  if (selected_ == row) {
    selected_ = -1;
  } else if (selected_ > row) {
    --selected_;
  }
  PaintItems();
}

bool ListView::Renew(std::vector<Row> rows) {
  std::set<std::string> ticked;
  for (const Row& row : rows_) {
    if (row.checked) ticked.insert(row.key);
  }
  const std::string selected = selected_ < 0 ? std::string() : At(selected_).key;
  const std::vector<Row> before = std::exchange(rows_, std::move(rows));
  for (Row& row : rows_) row.checked = ticked.contains(row.key);
  selected_ = Find(selected);
  filling_ = true;
  Sort();
  filling_ = false;
  Filter();
  if (rows_ == before) return false;
  Paint(Aspect::Renewed);
  return true;
}

int ListView::Find(std::string_view key) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.key == key; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void ListView::SetRowText(int row, std::string_view text) {
  if (row < 0 || row >= Count()) return;
  rows_[static_cast<std::size_t>(row)].text = text;
  Paint(Aspect::Row, row);
}

void ListView::SetRowToolTip(int row, std::string text) {
  if (row < 0 || row >= Count()) return;
  rows_[static_cast<std::size_t>(row)].toolTip = std::move(text);
  Paint(Aspect::Row, row);
}

void ListView::SetCell(int row, int cell, std::string_view text) {
  if (row < 0 || row >= Count()) return;
  auto& cells = rows_[static_cast<std::size_t>(row)].cells;
  if (cells.size() <= static_cast<std::size_t>(cell)) cells.resize(static_cast<std::size_t>(cell) + 1);
  if (cells[static_cast<std::size_t>(cell)] == text) return;
  cells[static_cast<std::size_t>(cell)] = text;
  Paint(Aspect::Row, row);
}

std::string_view SignOf(RowMark mark) {
  constexpr std::string_view kSigns[] = {"", "\u25CF", "\u25CB", "\u2713"};
  return kSigns[static_cast<std::size_t>(mark)];
}

void ListView::SetMark(int row, RowMark mark) {
  if (row < 0 || row >= Count() || At(row).mark == mark) return;
  rows_[static_cast<std::size_t>(row)].mark = mark;
  Paint(Aspect::Row, row);
}

void ListView::SetChecked(int row, bool checked) {
  if (row < 0 || row >= Count()) return;
  rows_[static_cast<std::size_t>(row)].checked = checked;
  if (!filling_) Paint(Aspect::Row, row);
}

int ListView::FirstShown() const {
  for (int row = 0; row < Count(); ++row) {
    if (!At(row).hidden) return row;
  }
  return rows_.empty() ? -1 : 0;
}

void ListView::Select(int row) {
  selected_ = row >= 0 && row < Count() ? row : -1;
  if (!filling_) Paint(Aspect::Selection);
}

void ListView::ClickRow(int row) {
  if (!Enabled()) return;
  Owner().LeaveField();
  Select(row);
  if (selected_ >= 0) Fire(ItemClick);
}

void ListView::DoubleClickRow(int row) {
  if (!Enabled() || row < 0 || row >= Count()) return;
  if (selected_ != row) ClickRow(row);
  Fire(DblClick);
}

void ListView::ToggleCheck(int row) {
  if (!Enabled() || row < 0 || row >= Count()) return;
  SetChecked(row, !At(row).checked);
  if (ItemCheck) ItemCheck(row);
}

void ListView::ClickColumn(int column) {
  if (!Enabled()) return;
  Owner().LeaveField();
  if (ColumnClick) ColumnClick(column);
}

namespace {

// A text that sorts as its number does.
std::string SortableNumber(std::string_view text) {
  constexpr double kAboveAll = 1e15;
  const double hundredths = std::clamp(LeadingNumber(text) * 100, -kAboveAll, kAboveAll);
  return std::to_string(std::llround(4 * kAboveAll + hundredths));
}

}  // namespace

void ListView::Sort(const std::function<void()>& pause) {
  if (SortColumn < 0) return;
  const auto text = [&](std::size_t row) -> const std::string& {
    static const std::string empty;
    if (SortColumn == 0) return rows_[row].text;
    const auto cell = static_cast<std::size_t>(SortColumn - 1);
    return cell < rows_[row].cells.size() ? rows_[row].cells[cell] : empty;
  };
  std::vector<std::string> folded(rows_.size());
  const auto column = static_cast<std::size_t>(SortColumn);
  const bool numbers = column < columns_.size() && columns_[column].rightAligned;
  for (std::size_t i = 0; i < rows_.size(); ++i) folded[i] = numbers ? SortableNumber(text(i)) : FoldCase(text(i));
  if (pause) pause();
  const std::vector<std::size_t> order = OrderOf(folded, SortAscending);
  if (pause) pause();
  std::vector<Row> sorted;
  sorted.reserve(rows_.size());
  int selected = -1;
  for (const std::size_t from : order) {
    if (static_cast<int>(from) == selected_) selected = static_cast<int>(sorted.size());
    sorted.push_back(std::move(rows_[from]));
  }
  rows_ = std::move(sorted);
  selected_ = selected;
  PaintItems();
}

void TreeView::Clear() {
  nodes_.clear();
  selected_.clear();
  Paint(Aspect::Items);
}

void TreeView::Add(Node node) {
  nodes_.push_back(std::move(node));
  Paint(Aspect::Items);
}

void TreeView::Remove(std::string_view key) {
  if (!Find(key)) return;
  std::vector<std::string> doomed{std::string(key)};
  for (std::size_t i = 0; i < doomed.size(); ++i) {
    for (const Node& node : nodes_) {
      if (node.parent == doomed[i]) doomed.push_back(node.key);
    }
  }
  const auto isDoomed = [&](const std::string& k) {
    return std::find(doomed.begin(), doomed.end(), k) != doomed.end();
  };
  std::erase_if(nodes_, [&](const Node& node) { return isDoomed(node.key); });
  if (isDoomed(selected_)) selected_.clear();
  Paint(Aspect::Items);
}

void TreeView::SetNodeText(std::string_view key, std::string_view text) {
  const auto found = std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& n) { return n.key == key; });
  if (found == nodes_.end()) return;
  found->text = text;
  Paint(Aspect::Row, static_cast<int>(found - nodes_.begin()));
}

void TreeView::Expand(std::string_view key) {
  const auto found = std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& n) { return n.key == key; });
  if (found == nodes_.end()) return;
  found->expanded = true;
  Paint(Aspect::Row, static_cast<int>(found - nodes_.begin()));
}

const TreeView::Node* TreeView::Find(std::string_view key) const {
  const auto found = std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& n) { return n.key == key; });
  return found == nodes_.end() ? nullptr : &*found;
}

void TreeView::Select(std::string_view key) {
  selected_ = Find(key) ? std::string(key) : std::string();
  Paint(Aspect::Selection);
}

void TreeView::ClickNode(std::string_view key) {
  if (!Enabled()) return;
  Owner().LeaveField();
  Select(key);
  if (!selected_.empty()) Fire(NodeClick);
}

}  // namespace tarvolinex
