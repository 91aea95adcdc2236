// Menus, toolbars, tab strips and timers.
#include <QAction>
#include <QHash>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

constexpr int kToolbarPicture = 24;

void PaintToolbarButton(const Toolbar& toolbar, QAction& action, int button) {
  const Toolbar::Button& state = toolbar.Buttons()[static_cast<std::size_t>(button)];
  action.setText(Shown(state.caption.empty() ? state.toolTip : state.caption).replace("&", "&&"));
  action.setToolTip(PlainToolTip(state.toolTip.empty() ? state.caption : state.toolTip));
  action.setEnabled(state.enabled);
  action.setCheckable(state.stays);
  action.setChecked(state.down);
  const QString picture = ":/pictures/" + Shown(state.image) + ".svg";
  if (action.data() != picture) {
    action.setIcon(state.image.empty() ? QIcon() : QIcon(picture));
    action.setData(picture);
  }
}

void MakeToolbarButtons(Toolbar& toolbar, QToolBar& bar, QObject& owner) {
  bar.clear();
  for (int i = 0; i < static_cast<int>(toolbar.Buttons().size()); ++i) {
    auto* action = new QAction(&bar);
    PaintToolbarButton(toolbar, *action, i);
    bar.addAction(action);
    const Toolbar::Button& button = toolbar.Buttons()[static_cast<std::size_t>(i)];
    if (!button.shortcut.empty()) action->setShortcut(QKeySequence(Shown(button.shortcut)));
    const std::string key = button.key;
    action->setObjectName(Shown(key));
    QObject::connect(action, &QAction::triggered, &owner, [&toolbar, key] { Deliver([&] { toolbar.Press(key); }); });
  }
  const auto buttons = bar.findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
  int width = 0;
  for (const QToolButton* button : buttons) width = std::max(width, button->sizeHint().width());
  for (QToolButton* button : buttons) button->setMinimumWidth(width);
}

// Only the headers are disabled, never the pages. A tab bar moves on from a current tab that is disabled, so that one
// is left alone unless all are disabled.
void PaintTabs(const TabStrip& strip, QTabWidget& widget) {
  const QSignalBlocker blocker(widget);
  const auto& tabs = strip.Tabs();
  const int count = std::min(widget.count(), static_cast<int>(tabs.size()));
  const bool anyEnabled = std::any_of(tabs.begin(), tabs.end(), [](const TabStrip::Tab& tab) { return tab.enabled; });
  PaintShared(strip, widget);
  if (widget.currentIndex() != strip.Selected()) widget.setCurrentIndex(strip.Selected());
  for (int i = 0; i < count; ++i) {
    const TabStrip::Tab& tab = tabs[static_cast<std::size_t>(i)];
    const QString text = WithAccessKey(tab.caption);
    if (widget.tabText(i) != text) widget.setTabText(i, text);
    widget.widget(i)->setAccessibleName(WithoutAccessKey(tab.caption));
    widget.tabBar()->setTabEnabled(i, tab.enabled || !anyEnabled || i == strip.Selected());
  }
  widget.tabBar()->setEnabled(anyEnabled);
}

void PaintMenu(const Menu& menu, QAction& action) {
  action.setEnabled(menu.Enabled());
  action.setVisible(menu.Visible());
  action.setText(WithAccessKey(menu.Caption()));
}

// The action that stands for a menu that holds others.
QAction* AddSubMenu(const Menu& menu, QWidget& container) {
  auto* sub = new QMenu(&container);
  sub->setObjectName(Shown(menu.WidgetName()));
  container.addAction(sub->menuAction());
  return sub->menuAction();
}

QAction* AddCommand(Menu& menu, QWidget& container, QObject& owner) {
  auto* action = new QAction(&container);
  action->setObjectName(Shown(menu.WidgetName()));
  action->setMenuRole(QAction::NoRole);
  action->setSeparator(menu.Caption() == "-");
  if (!menu.Shortcut().empty()) action->setShortcut(QKeySequence(Shown(menu.Shortcut())));
  container.addAction(action);
  QObject::connect(action, &QAction::triggered, &owner, [&menu] { Deliver([&] { menu.Choose(); }); });
  return action;
}

}  // namespace

bool BindToolbar(Toolbar& toolbar, QWidget& widget, QObject& owner) {
  auto* bar = qobject_cast<QToolBar*>(&widget);
  if (!bar) return false;
  const bool anyCaption = std::any_of(toolbar.Buttons().begin(), toolbar.Buttons().end(),
                                      [](const Toolbar::Button& button) { return !button.caption.empty(); });
  bar->setToolButtonStyle(anyCaption ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
  bar->setIconSize(QSize(kToolbarPicture, kToolbarPicture));
  bar->setMovable(false);
  toolbar.Painter = [&toolbar, bar, &owner](Aspect aspect, int button) {
    if (aspect == Aspect::Items) MakeToolbarButtons(toolbar, *bar, owner);
    if (aspect == Aspect::Row) PaintToolbarButton(toolbar, *bar->actions().at(button), button);
    PaintShared(toolbar, *bar);
  };
  toolbar.Painter(Aspect::Items, -1);
  return true;
}

bool BindTabStrip(TabStrip& tabs, QWidget& widget, QObject& owner) {
  auto* drawn = qobject_cast<QTabWidget*>(&widget);
  if (!drawn || drawn->count() != static_cast<int>(tabs.Tabs().size())) return false;
  tabs.Painter = [&tabs, drawn](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return drawn->tabBar()->setFocus();
    PaintTabs(tabs, *drawn);
  };
  tabs.Painter(Aspect::State, -1);
  QObject::connect(drawn, &QTabWidget::currentChanged, &owner, [&tabs](int tab) {
    Deliver([&] { tabs.Choose(tab); });
    tabs.Painter(Aspect::Selection, -1);
  });
  return true;
}

void BindMenus(const std::vector<Menu*>& menus, QMenuBar& bar, QObject& owner) {
  QHash<QString, QWidget*> containers{{QString(), &bar}};
  for (Menu* menu : menus) {
    const bool holdsOthers =
        std::any_of(menus.begin(), menus.end(), [&](const Menu* other) { return other->Parent() == menu->Name(); });
    QWidget& container = *containers.value(Shown(menu->Parent()), &bar);
    QAction* action = holdsOthers ? AddSubMenu(*menu, container) : AddCommand(*menu, container, owner);
    if (holdsOthers) containers.insert(Shown(menu->Name()), action->menu());
    menu->Painter = [menu, action](Aspect, int) { PaintMenu(*menu, *action); };
    menu->Painter(Aspect::State, -1);
  }
}

void BindTimer(Timer& timer, QObject& owner) {
  auto* clock = new QTimer(&owner);
  timer.Painter = [&timer, clock](Aspect, int) {
    if (timer.Running()) {
      clock->start(timer.Interval);
    } else {
      clock->stop();
    }
  };
  timer.Painter(Aspect::State, -1);
  QObject::connect(clock, &QTimer::timeout, &owner, [&timer] {
    Deliver([&] {
      if (timer.Tick) timer.Tick();
    });
  });
}

}  // namespace tarvolinex
