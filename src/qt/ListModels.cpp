#include "qt/ListModels.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QSize>

#include "qt/EventBoundary.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {
constexpr int kRowPadding = 5;  // pixels

QSize RowSize() {
  return {0, QFontMetrics(QGuiApplication::font()).height() + kRowPadding};
}
}  // namespace

void RowsModel::Reset() {
  beginResetModel();
  rows_ = list_.Count();
  columns_ = static_cast<int>(list_.Columns().size());
  endResetModel();
}

void RowsModel::RowChanged(int row) {
  if (row >= 0 && row < rows_ && columns_ > 0) emit dataChanged(index(row, 0), index(row, columns_ - 1));
}

const ListView::Column* RowsModel::ColumnAt(int column) const {
  const auto& columns = list_.Columns();
  return column >= 0 && column < static_cast<int>(columns.size()) ? &columns[static_cast<std::size_t>(column)]
                                                                  : nullptr;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= list_.Count()) return {};
  const ListView::Row& row = list_.At(index.row());
  const int column = index.column();
  if (role == Qt::DisplayRole) {
    if (column == 0) return Shown(row.text);
    const auto cell = static_cast<std::size_t>(column - 1);
    return cell < row.cells.size() ? Shown(row.cells[cell]) : QString();
  }
  if (role == Qt::CheckStateRole && column == 0 && list_.CheckBoxes) {
    return static_cast<int>(row.checked ? Qt::Checked : Qt::Unchecked);
  }
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
  if (role != Qt::CheckStateRole || index.row() >= list_.Count()) return false;
  if ((value.toInt() == Qt::Checked) == list_.At(index.row()).checked) return false;
  Deliver([&] { list_.ToggleCheck(index.row()); });
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
