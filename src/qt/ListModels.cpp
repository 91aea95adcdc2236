#include "qt/ListModels.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QSize>
#include <algorithm>

#include "qt/EventBoundary.h"
#include "qt/Look.h"
#include "qt/RowSigns.h"

namespace tarvolinex {

namespace {
constexpr int kRowPadding = 5;  // pixels

QSize RowSize() {
  return {0, QFontMetrics(QGuiApplication::font()).height() + kRowPadding};
}
}  // namespace

void RowsModel::Reset() {
  beginResetModel();
  shown_.clear();
  for (int row = 0; row < list_.Count(); ++row) {
    if (!list_.At(row).hidden) shown_.push_back(row);
  }
  columns_ = static_cast<int>(list_.Columns().size());
  endResetModel();
}

int RowsModel::RowAt(int line) const {
  return line >= 0 && line < static_cast<int>(shown_.size()) ? shown_[static_cast<std::size_t>(line)] : -1;
}

int RowsModel::LineOf(int row) const {
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), row);
  return found != shown_.end() && *found == row ? static_cast<int>(found - shown_.begin()) : -1;
}

void RowsModel::RowChanged(int row) {
  const int line = LineOf(row);
  if (line >= 0 && columns_ > 0) emit dataChanged(index(line, 0), index(line, columns_ - 1));
}

const ListView::Column* RowsModel::ColumnAt(int column) const {
  const auto& columns = list_.Columns();
  return column >= 0 && column < static_cast<int>(columns.size()) ? &columns[static_cast<std::size_t>(column)]
                                                                  : nullptr;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
  const int at = RowAt(index.row());
  if (!index.isValid() || at < 0 || at >= list_.Count()) return {};
  const ListView::Row& row = list_.At(at);
  const int column = index.column();
  if (role == Qt::DisplayRole) {
    if (column == 0) return Shown(row.text);
    const auto cell = static_cast<std::size_t>(column - 1);
    return cell < row.cells.size() ? Shown(row.cells[cell]) : QString();
  }
  if (role == Qt::CheckStateRole && column == 0 && list_.CheckBoxes) {
    return static_cast<int>(row.checked ? Qt::Checked : Qt::Unchecked);
  }
  if (role == Qt::DecorationRole && column == 0 && row.mark != RowMark::None) return RowSign(row.mark);
  if (role == Qt::ToolTipRole && !row.toolTip.empty()) return PlainToolTip(row.toolTip);
  if (role == Qt::TextAlignmentRole) return headerData(column, Qt::Horizontal, role);
  if (role == Qt::SizeHintRole) return RowSize();
  return {};
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const ListView::Column* column = orientation == Qt::Horizontal ? ColumnAt(section) : nullptr;
  if (!column) return {};
  if (role == Qt::DisplayRole) return Shown(column->header);
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>((column->rightAligned ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

Qt::ItemFlags RowsModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (list_.CheckBoxes && index.column() == 0) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

bool RowsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const int at = RowAt(index.row());
  if (role != Qt::CheckStateRole || at < 0 || at >= list_.Count()) return false;
  if ((value.toInt() == Qt::Checked) == list_.At(at).checked) return false;
  Deliver([&] { list_.ToggleCheck(at); });
  return true;
}

void ItemsModel::Reset() {
  beginResetModel();
  count_ = static_cast<int>(items_.size());
  endResetModel();
}

QVariant ItemsModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= items_.size()) return {};
  if (role == Qt::DisplayRole) return Shown(items_[row].text);
  if (role == Qt::SizeHintRole) return RowSize();
  return {};
}

}  // namespace tarvolinex
