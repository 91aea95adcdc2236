// Tree views: few nodes, so each is an item of the widget.
#include <QHash>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>

#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

constexpr int kKeyRole = Qt::UserRole;

std::string KeyOf(const QTreeWidgetItem& item) {
  return Held(item.data(0, kKeyRole).toString());
}

// Builds the items of a tree once for any number of changes that come together.
class TreePainter : public QObject {
 public:
  TreePainter(TreeView& tree, QTreeWidget& widget, QObject& owner) : QObject(&owner), tree_(tree), widget_(widget) {}

  void Paint(Aspect aspect, int row) {
    if (aspect == Aspect::Focus) return widget_.setFocus();
    if (aspect == Aspect::State) {
      PaintShared(tree_, widget_);
      return PaintInputColour(widget_, tree_.BackColour());
    }
    if (aspect == Aspect::Items) return BuildLater();
    Build();
    if (aspect == Aspect::Row) PaintRow(row);
    if (aspect == Aspect::Selection) PaintSelection();
  }

  void Build() {
    if (!stale_) return;
    stale_ = false;
    const QSignalBlocker blocker(widget_);
    QSet<QString> wasExpanded, wasKnown;
    for (auto item = items_.cbegin(); item != items_.cend(); ++item) {
      wasKnown.insert(item.key());
      if (item.value()->isExpanded()) wasExpanded.insert(item.key());
    }
    widget_.clear();
    items_.clear();
    for (const TreeView::Node& node : tree_.Nodes()) {
      const QString key = Shown(node.key);
      QTreeWidgetItem* parent = items_.value(Shown(node.parent), widget_.invisibleRootItem());
      auto* item = new QTreeWidgetItem(parent, {Shown(node.text)});
      item->setData(0, kKeyRole, key);
      items_.insert(key, item);
    }
    for (const TreeView::Node& node : tree_.Nodes()) {
      const QString key = Shown(node.key);
      items_.value(key)->setExpanded(wasKnown.contains(key) ? wasExpanded.contains(key) : node.expanded);
    }
    PaintSelection();
  }

 private:
  void BuildLater() {
    if (std::exchange(stale_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { Build(); }, Qt::QueuedConnection);
  }

  void PaintRow(int row) {
    const TreeView::Node& node = tree_.Nodes()[static_cast<std::size_t>(row)];
    const QSignalBlocker blocker(widget_);
    QTreeWidgetItem* item = items_.value(Shown(node.key));
    if (!item) return;
    item->setText(0, Shown(node.text));
    if (node.expanded) item->setExpanded(true);
  }

  void PaintSelection() {
    const QSignalBlocker blocker(widget_);
    QTreeWidgetItem* item = items_.value(Shown(tree_.Selected()));
    widget_.setCurrentItem(item);
    if (item) widget_.scrollToItem(item);
  }

  TreeView& tree_;
  QTreeWidget& widget_;
  QHash<QString, QTreeWidgetItem*> items_;
  bool stale_ = true;
};

}  // namespace

bool BindTreeView(TreeView& tree, QWidget& widget, QObject& owner) {
  auto* drawn = qobject_cast<QTreeWidget*>(&widget);
  if (!drawn) return false;
  drawn->setHeaderHidden(true);
  drawn->setColumnCount(1);
  drawn->setUniformRowHeights(true);
  auto* painter = new TreePainter(tree, *drawn, owner);
  tree.Painter = [painter](Aspect aspect, int row) { painter->Paint(aspect, row); };
  painter->Paint(Aspect::State, -1);
  painter->Build();
  // After the widget has dealt with the click: the handler may build the tree anew.
  const auto click = [&tree, &owner](const std::string& key) {
    QMetaObject::invokeMethod(
        &owner, [&tree, key] { Deliver([&] { tree.ClickNode(key); }); }, Qt::QueuedConnection);
  };
  QObject::connect(drawn, &QTreeWidget::itemSelectionChanged, &owner, [drawn, click] {
    const QList<QTreeWidgetItem*> selected = drawn->selectedItems();
    if (!selected.isEmpty()) click(KeyOf(*selected.front()));
  });
  // A press on another node selects it, and the program hears of that; on the selected one it is the press that counts.
  QObject::connect(drawn, &QTreeWidget::itemPressed, &owner, [&tree, click](QTreeWidgetItem* item) {
    if (KeyOf(*item) == tree.Selected()) click(tree.Selected());
  });
  QObject::connect(drawn, &QTreeWidget::itemDoubleClicked, &owner, [&tree, &owner] {
    QMetaObject::invokeMethod(
        &owner,
        [&tree] {
          Deliver([&] {
            if (tree.DblClick) tree.DblClick();
          });
        },
        Qt::QueuedConnection);
  });
  return true;
}

}  // namespace tarvolinex
