// Combo boxes, list boxes and list views: models over the control's own rows.
#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <utility>

#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/ListModels.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

// The user's click on a row reaches the program after the widget has dealt with the mouse or key, because its handler
// may fill the list anew.
void DeliverLater(QObject& owner, std::function<void()> call) {
  QMetaObject::invokeMethod(
      &owner, [call = std::move(call)] { Deliver(call); }, Qt::QueuedConnection);
}

// What the list box and the list view share: which row is selected.
class Selection : public QObject {
 public:
  Selection(QAbstractItemView& view, QObject& owner) : QObject(&owner), view_(&view) {}

  void Paint(int row) {
    const bool was = std::exchange(painting_, true);
    const QModelIndex index = view_->model()->index(row, 0);
    QItemSelectionModel& selection = *view_->selectionModel();
    if (index.isValid()) {
      selection.setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
      view_->scrollTo(index);
    } else {
      selection.clear();
    }
    painting_ = was;
  }

  // As Reset, but the selected row stays where it is on the screen.
  void Renew(auto& model, auto selectedLine) {
    const bool was = std::exchange(painting_, true);
    QScrollBar& bar = *view_->verticalScrollBar();
    const int before = view_->currentIndex().row(), top = bar.value();
    model.Reset();
    const QModelIndex index = model.index(selectedLine(), 0);
    if (index.isValid()) {
      view_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
      view_->scrollTo(index);
    }
    const bool byRows = view_->verticalScrollMode() == QAbstractItemView::ScrollPerItem;
    const int line = byRows ? 1 : std::max(view_->sizeHintForRow(0), 1);
    bar.setValue(top + (index.isValid() && before >= 0 ? (index.row() - before) * line : 0));
    painting_ = was;
  }

  // call(row) for a selection that the user makes; the row is -1 when none is left.
  template <typename Call>
  void OnUser(Call call) {
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, call] {
      const QModelIndexList rows = view_->selectionModel()->selectedRows();
      if (!painting_) call(rows.isEmpty() ? -1 : rows.front().row());
    });
  }

  // While the model is reset its rows come and go without the user.
  void Reset(auto& model, auto selectedLine) {
    const bool was = std::exchange(painting_, true);
    model.Reset();
    Paint(selectedLine());
    painting_ = was;
  }

 private:
  QAbstractItemView* view_;
  bool painting_ = false;
};

// A style may draw the outline of a tick box from the window's colour, which a dark list swallows.
class TickDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QPalette& palette = option->palette;
    if (qGray(palette.color(QPalette::Base).rgb()) < 128) {
      option->palette.setColor(QPalette::Window, palette.color(QPalette::Text));
    }
  }
};

void PaintView(const Control& control, QWidget& view) {
  PaintShared(control, view);
  PaintInputColour(view, control.BackColour());
}

// Widths are set when the columns are not those shown, so that the user's own widths survive a fill.
void PaintColumns(ListView& list, QTreeView& view, std::vector<std::string>& shown) {
  std::vector<std::string> headers;
  for (const ListView::Column& column : list.Columns()) headers.push_back(column.header);
  QHeaderView& header = *view.header();
  if (headers != shown) {
    for (int i = 0; i < header.count(); ++i) {
      header.resizeSection(i, ToPixels(list.Columns()[static_cast<std::size_t>(i)].width));
    }
    shown = std::move(headers);
  }
  header.setSortIndicatorShown(list.SortColumn >= 0);
  const QSignalBlocker blocker(header);
  header.setSortIndicator(list.SortColumn, list.SortAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void SetUpView(QTreeView& view) {
  view.setRootIsDecorated(false);
  view.setItemsExpandable(false);
  view.setUniformRowHeights(true);
  view.setAllColumnsShowFocus(true);
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setSelectionMode(QAbstractItemView::SingleSelection);
  view.setSelectionBehavior(QAbstractItemView::SelectRows);
  view.header()->setSectionsClickable(true);
  view.header()->setSectionsMovable(false);
}

// Stands in the middle of a list that shows no row. A view lays nothing out in its viewport, so it follows the size.
class NoMatchLabel : public QLabel {
 public:
  explicit NoMatchLabel(QWidget& viewport) : QLabel(&viewport) {
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    viewport.installEventFilter(this);
    hide();
  }

 protected:
  bool eventFilter(QObject* viewport, QEvent* event) override {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
      setGeometry(static_cast<QWidget*>(viewport)->rect());
    }
    return false;
  }
};

void SetListPainter(ListView& list, QTreeView& view, RowsModel& model, Selection& selection) {
  auto* noMatch = new NoMatchLabel(*view.viewport());
  list.Painter = [&list, &view, &model, &selection, noMatch, shown = std::vector<std::string>()](Aspect aspect,
                                                                                                 int row) mutable {
    switch (aspect) {
      case Aspect::Focus:
        return view.setFocus();
      case Aspect::Row:
        return model.RowChanged(row);
      case Aspect::Selection:
        return selection.Paint(model.LineOf(list.Selected()));
      case Aspect::Renewed:
        return selection.Renew(model, [&] { return model.LineOf(list.Selected()); });
      case Aspect::Items:
      case Aspect::Text:
        selection.Reset(model, [&] { return model.LineOf(list.Selected()); });
        noMatch->setText(QString::fromStdString(list.NoMatchText));
        noMatch->setVisible(list.Count() > 0 && model.rowCount() == 0);
        return PaintColumns(list, view, shown);
      case Aspect::State:
        return PaintView(list, view);
    }
  };
}

}  // namespace

bool BindComboBox(ComboBox& box, QWidget& widget, QObject& owner) {
  auto* combo = qobject_cast<QComboBox*>(&widget);
  if (!combo) return false;
  auto* model = new ItemsModel(box.Items(), &owner);
  {
    const QSignalBlocker blocker(combo);
    combo->setModel(model);
  }
  box.Painter = [&box, combo, model](Aspect aspect, int) {
    const QSignalBlocker blocker(combo);
    if (aspect == Aspect::Focus) return combo->setFocus();
    if (aspect == Aspect::State) {
      PaintShared(box, *combo);
      QPalette palette;
      if (box.Locked()) palette.setColor(QPalette::ButtonText, combo->palette().color(QPalette::PlaceholderText));
      combo->setPalette(palette);
    }
    if (aspect == Aspect::Items) model->Reset();
    if (combo->currentIndex() != box.ListIndex()) combo->setCurrentIndex(box.ListIndex());
  };
  box.Painter(Aspect::State, -1);
  box.Painter(Aspect::Items, -1);
  QObject::connect(combo, &QComboBox::activated, &owner, [&box](int index) {
    Deliver([&] { box.Choose(index); });
    box.Painter(Aspect::Selection, -1);
  });
  return true;
}

bool BindListBox(ListBox& box, QWidget& widget, QObject& owner) {
  auto* view = qobject_cast<QListView*>(&widget);
  if (!view) return false;
  auto* model = new ItemsModel(box.Items(), &owner);
  view->setModel(model);
  view->setUniformItemSizes(true);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  auto* selection = new Selection(*view, owner);
  box.Painter = [&box, view, model, selection](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return view->setFocus();
    if (aspect == Aspect::State) return PaintView(box, *view);
    if (aspect == Aspect::Items) return selection->Reset(*model, [&] { return box.ListIndex(); });
    if (aspect == Aspect::Renewed) return selection->Renew(*model, [&] { return box.ListIndex(); });
    selection->Paint(box.ListIndex());
  };
  box.Painter(Aspect::State, -1);
  box.Painter(Aspect::Items, -1);
  selection->OnUser([&box, &owner](int row) { DeliverLater(owner, [&box, row] { box.SetListIndex(row); }); });
  // A click on the item that is selected already.
  QObject::connect(view, &QListView::pressed, &owner, [&box, view](const QModelIndex& index) {
    view->setProperty("again", index.row() == box.ListIndex());
  });
  QObject::connect(view, &QListView::clicked, &owner, [&box, &owner, view] {
    if (!view->property("again").toBool()) return;
    DeliverLater(owner, [&box] {
      if (box.Click) box.Click();
    });
  });
  QObject::connect(view, &QListView::doubleClicked, &owner, [&box, &owner] {
    DeliverLater(owner, [&box] {
      if (box.DblClick) box.DblClick();
    });
  });
  return true;
}

bool BindListView(ListView& list, QWidget& widget, QObject& owner) {
  auto* view = qobject_cast<QTreeView*>(&widget);
  if (!view) return false;
  SetUpView(*view);
  if (list.CheckBoxes) view->setItemDelegate(new TickDelegate(&owner));
  auto* model = new RowsModel(list, &owner);
  view->setModel(model);
  auto* selection = new Selection(*view, owner);
  SetListPainter(list, *view, *model, *selection);
  list.Painter(Aspect::State, -1);
  list.Painter(Aspect::Items, -1);
  selection->OnUser([&list, &owner, selection, model](int line) {
    if (line < 0) return selection->Paint(model->LineOf(list.Selected()));  // a row that was clicked away stays
    DeliverLater(owner, [&list, row = model->RowAt(line)] { list.ClickRow(row); });
  });
  // A click on the row that is selected already.
  QObject::connect(view, &QTreeView::pressed, &owner, [&list, view, model](const QModelIndex& index) {
    view->setProperty("again", model->RowAt(index.row()) == list.Selected());
  });
  QObject::connect(view, &QTreeView::clicked, &owner, [&list, &owner, view, model](const QModelIndex& index) {
    if (!view->property("again").toBool()) return;
    DeliverLater(owner, [&list, row = model->RowAt(index.row())] { list.ClickRow(row); });
  });
  QObject::connect(view, &QTreeView::doubleClicked, &owner, [&list, &owner, model](const QModelIndex& index) {
    DeliverLater(owner, [&list, row = model->RowAt(index.row())] { list.DoubleClickRow(row); });
  });
  // The user's own widths are the control's, so that the window can remember them.
  QObject::connect(view->header(), &QHeaderView::sectionResized, &owner, [&list](int column, int, int pixels) {
    auto& columns = list.Columns();
    if (pixels > 0 && column < static_cast<int>(columns.size())) {
      columns[static_cast<std::size_t>(column)].width = ToTwips(pixels);
    }
  });
  QObject::connect(view->header(), &QHeaderView::sectionClicked, &owner, [&list](int column) {
    Deliver([&] { list.ClickColumn(column); });
    list.Painter(Aspect::Items, -1);  // the header has turned its own arrow
  });
  return true;
}

}  // namespace tarvolinex
