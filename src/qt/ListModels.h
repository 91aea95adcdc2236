// Item models over the rows that a control holds: no row is ever copied.
#pragma once

#include <QAbstractListModel>
#include <QAbstractTableModel>
#include <vector>

#include "controls/Controls.h"

namespace tarvolinex {

// The rows and columns of a list view. The control outlives the model; the model tells its views of a change only when
// it is told, so rows that have gone meanwhile read as empty.
class RowsModel : public QAbstractTableModel {
 public:
  RowsModel(ListView& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

  // The control's rows or columns have changed.
  void Reset();
  void RowChanged(int row);

  // Rows that the control hides have no line in the views: the control's row of a line, and the line of a row (-1 for a
  // hidden one).
  int RowAt(int line) const;
  int LineOf(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Only a row's tick can be set.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  const ListView::Column* ColumnAt(int column) const;

  ListView& list_;
  std::vector<int> shown_;  // rows of the control, by line
  int columns_ = 0;
};

// The items of a combo box or a list box, which outlives the model.
class ItemsModel : public QAbstractListModel {
 public:
  ItemsModel(const std::vector<ComboBox::Item>& items, QObject* parent) : QAbstractListModel(parent), items_(items) {}

  void Reset();
  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const std::vector<ComboBox::Item>& items_;
  int count_ = 0;
};

}  // namespace tarvolinex
