#include "qt/Binder.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QScrollArea>
#include <QTabWidget>
#include <algorithm>

#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/ListModels.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

QWidget& InnerPart(QWidget& root) {
  const auto* main = qobject_cast<QMainWindow*>(&root);
  QWidget* central = main ? main->centralWidget() : nullptr;
  if (const auto* scrolled = qobject_cast<QScrollArea*>(central)) central = scrolled->widget();
  return central ? *central : root;
}

QMenuBar* MenuBarOf(QWidget& root) {
  if (auto* main = qobject_cast<QMainWindow*>(&root)) return main->menuBar();
  auto* bar = root.findChild<QMenuBar*>();
  if (!bar && root.layout()) {
    bar = new QMenuBar(&root);
    root.layout()->setMenuBar(bar);
  }
  return bar;
}

Key KeyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::Return;
    case Qt::Key_Escape:
      return Key::Escape;
    case Qt::Key_Up:
      return Key::Up;
    case Qt::Key_Down:
      return Key::Down;
    case Qt::Key_Delete:
      return Key::Delete;
    default:
      return Key::None;
  }
}

// On a small screen what takes the focus by key may be scrolled away.
void BringIntoView(QWidget& widget) {
  for (QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget, 0, 0);
  }
}

bool NeedsNoControl(const QWidget& widget) {
  const QString name = widget.objectName();
  if (name.isEmpty() || name.startsWith("qt_") || name.startsWith("lay") || name.startsWith("page")) return true;
  // Parts that the toolkit makes inside its own widgets carry names as well.
  return name == "ScrollLeftButton" || name == "ScrollRightButton";
}

}  // namespace

Binder::Binder(Window& window, QWidget& root) : window_(&window), root_(root), inner_(InnerPart(root)) {
  BindAll();
  NameUpDowns();
  root_.setWindowTitle(PlainTitle(window.Caption()));
  window.PaintCaption = [this] { root_.setWindowTitle(PlainTitle(window_->Caption())); };
  root_.installEventFilter(this);
  if (&inner_ != &root_) inner_.installEventFilter(this);
}

Binder::~Binder() {
  if (!window_) return;
  window_->PaintCaption = nullptr;
  for (Control* control : window_->Controls()) control->Painter = nullptr;
}

void Binder::Abandon() {
  window_ = nullptr;
  controls_.clear();
  widgets_.clear();
}

void Binder::BindAll() {
  for (Control* control : window_->Controls()) {
    if (dynamic_cast<Menu*>(control)) continue;
    if (auto* timer = dynamic_cast<Timer*>(control)) {
      BindTimer(*timer, *this);
      continue;
    }
    auto* widget = root_.findChild<QWidget*>(Shown(control->WidgetName()));
    if (!widget) {
      misfits_.push_back("no widget draws " + control->WidgetName());
    } else if (!BindWidget(*control, *widget)) {
      misfits_.push_back("the widget " + control->WidgetName() + " cannot draw a " + std::string(control->TypeName()));
    } else {
      widgets_.insert(control, widget);
      controls_.insert(widget, control);
      widget->installEventFilter(this);
      if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
        controls_.insert(tabs->tabBar(), control);
        tabs->tabBar()->installEventFilter(this);
      }
    }
  }
  BindAllMenus();
}

bool Binder::BindWidget(Control& control, QWidget& widget) {
  if (auto* box = dynamic_cast<TextBox*>(&control)) return BindTextBox(*box, widget, *this);
  if (auto* label = dynamic_cast<Label*>(&control)) return BindLabel(*label, widget, *this);
  if (auto* frame = dynamic_cast<Frame*>(&control)) return BindFrame(*frame, widget);
  if (auto* button = dynamic_cast<CommandButton*>(&control)) return BindCommandButton(*button, widget, *this);
  if (auto* option = dynamic_cast<OptionButton*>(&control)) return BindOptionButton(*option, widget, *this);
  if (auto* check = dynamic_cast<CheckBox*>(&control)) return BindCheckBox(*check, widget, *this);
  if (auto* combo = dynamic_cast<ComboBox*>(&control)) return BindComboBox(*combo, widget, *this);
  if (auto* names = dynamic_cast<ListBox*>(&control)) return BindListBox(*names, widget, *this);
  if (auto* list = dynamic_cast<ListView*>(&control)) return BindListView(*list, widget, *this);
  if (auto* tree = dynamic_cast<TreeView*>(&control)) return BindTreeView(*tree, widget, *this);
  if (auto* upDown = dynamic_cast<UpDown*>(&control)) return BindUpDown(*upDown, widget, *this);
  if (auto* bar = dynamic_cast<ProgressBar*>(&control)) return BindProgressBar(*bar, widget);
  if (auto* picture = dynamic_cast<PictureBox*>(&control)) return BindPictureBox(*picture, widget);
  if (auto* grid = dynamic_cast<PixelGrid*>(&control)) return BindPixelGrid(*grid, widget, *this);
  if (auto* colour = dynamic_cast<ColourBox*>(&control)) return BindColourBox(*colour, widget, *this);
  if (auto* chart = dynamic_cast<BarChart*>(&control)) return BindBarChart(*chart, widget);
  if (auto* toolbar = dynamic_cast<Toolbar*>(&control)) return BindToolbar(*toolbar, widget, *this);
  if (auto* tabs = dynamic_cast<TabStrip*>(&control)) return BindTabStrip(*tabs, widget, *this);
  return false;
}

void Binder::BindAllMenus() {
  std::vector<Menu*> menus;
  for (Control* control : window_->Controls()) {
    if (auto* menu = dynamic_cast<Menu*>(control)) menus.push_back(menu);
  }
  if (menus.empty()) return;
  if (QMenuBar* bar = MenuBarOf(root_)) {
    BindMenus(menus, *bar, *this);
  } else {
    misfits_.emplace_back("no menu bar holds the menus");
  }
}

// An up-down is named by its box, which has its name from its label or its design.
void Binder::NameUpDowns() {
  for (Control* control : window_->Controls()) {
    const auto* upDown = dynamic_cast<UpDown*>(control);
    QWidget* arrows = WidgetOf(*control);
    QWidget* box = upDown && upDown->Buddy ? WidgetOf(*upDown->Buddy) : nullptr;
    if (arrows && box) arrows->setAccessibleName(box->accessibleName());
  }
}

QWidget* Binder::WidgetOf(const Control& control) const {
  return widgets_.value(&control);
}

std::vector<std::string> Binder::Mismatches() const {
  std::vector<std::string> found = misfits_;
  QHash<QString, int> seen;
  for (const QWidget* widget : root_.findChildren<QWidget*>()) {
    if (NeedsNoControl(*widget)) continue;
    const std::string name = Held(widget->objectName());
    if (!window_ || !window_->Find(name)) found.push_back("no control stands behind the widget " + name);
    if (++seen[widget->objectName()] == 2) found.push_back("two widgets are named " + name);
  }
  return found;
}

void Binder::RepaintColours() {
  for (auto bound = widgets_.cbegin(); bound != widgets_.cend(); ++bound) bound.key()->Painter(Aspect::State, -1);
}

bool Binder::eventFilter(QObject* object, QEvent* event) {
  if (!window_) return false;
  if (Control* control = controls_.value(object)) {
    if (FilterControl(*control, object, event)) return true;
  }
  if (object == &inner_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show)) DeliverSize();
  return object == &root_ && FilterRoot(event);
}

bool Binder::FilterControl(Control& control, QObject* object, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      if (static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) BringIntoView(*WidgetOf(control));
      Deliver([&] { control.Owner().MoveFocus(&control); });
      return false;
    case QEvent::KeyPress:
      return FilterKeyPress(control, *static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      OnKeyRelease(&control, *static_cast<QKeyEvent*>(event));
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto* combo = dynamic_cast<ComboBox*>(&control);
      return combo && combo->Locked();
    }
    case QEvent::Wheel:
      // The wheel scrolls what lies under the pointer; it never changes a list's choice by passing over it.
      return qobject_cast<QComboBox*>(object) != nullptr;
    default:
      return false;
  }
}

bool Binder::FilterKeyPress(Control& control, const QKeyEvent& event) {
  if (!event.isAutoRepeat()) keyDown_ = event.key();
  const Key key = KeyOf(event);
  if (const auto* combo = dynamic_cast<ComboBox*>(&control); combo && combo->Locked()) {
    return event.key() != Qt::Key_Tab && event.key() != Qt::Key_Backtab && key != Key::Escape;
  }
  if (auto* list = dynamic_cast<ListView*>(&control); list && list->CheckBoxes && event.key() == Qt::Key_Space) {
    const auto* view = qobject_cast<const QAbstractItemView*>(WidgetOf(control));
    const auto* model = view ? dynamic_cast<const RowsModel*>(view->model()) : nullptr;
    Deliver([&] { list->ToggleCheck(model ? model->RowAt(view->currentIndex().row()) : -1); });
    return true;
  }
  if (auto* list = dynamic_cast<ListView*>(&control); list && key == Key::Return && list->Selected() >= 0) {
    Deliver([&] { list->DoubleClickRow(list->Selected()); });
    return true;
  }
  const int column = event.key() - Qt::Key_1;
  if (auto* list = dynamic_cast<ListView*>(&control); list && event.modifiers() == Qt::ControlModifier && column >= 0 &&
                                                      column < static_cast<int>(list->Columns().size())) {
    Deliver([&] { list->ClickColumn(column); });
    return true;
  }
  if (const auto* list = dynamic_cast<ListView*>(&control); list && event.matches(QKeySequence::Copy)) {
    QGuiApplication::clipboard()->setText(Shown(list->RowLine(list->Selected())));
    return true;
  }
  if (key != Key::Up && key != Key::Down) return false;
  for (Control* other : control.Owner().Controls()) {
    auto* upDown = dynamic_cast<UpDown*>(other);
    if (!upDown || upDown->Buddy != &control) continue;
    Deliver([&] { upDown->StepBy(key == Key::Up); });
    return true;
  }
  return false;
}

// A release counts only when the key went down here as well: the one that closed a box before was not meant for us.
void Binder::OnKeyRelease(Control* control, const QKeyEvent& event) {
  if (event.isAutoRepeat() || std::exchange(keyDown_, 0) != event.key()) return;
  const Key key = KeyOf(event);
  if (key == Key::None) return;
  Deliver([&] {
    if (control && control->KeyUp) control->KeyUp(key);
    if (window_ && window_->KeyUp) window_->KeyUp(key);
  });
}

bool Binder::FilterRoot(QEvent* event) {
  switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      OnClose();
      return true;
    case QEvent::KeyPress: {
      const auto& press = *static_cast<QKeyEvent*>(event);
      if (!press.isAutoRepeat()) keyDown_ = press.key();
      if (press.key() != Qt::Key_Escape) return false;
      if (!window_->KeyUp && root_.windowType() == Qt::Dialog) OnClose();
      return true;  // the toolkit would hide a dialog without asking the window
    }
    case QEvent::KeyRelease: {
      // A control with the focus has had it already.
      const bool handled = controls_.contains(root_.focusWidget());
      if (!handled) OnKeyRelease(nullptr, *static_cast<QKeyEvent*>(event));
      return false;
    }
    case QEvent::Show:
      NameUpDowns();
      return false;
    case QEvent::ApplicationPaletteChange:
    case QEvent::PaletteChange:
      RepaintColours();
      return false;
    default:
      return false;
  }
}

void Binder::OnClose() {
  Deliver([&] {
    if (window_->MayClose && !window_->MayClose()) return;
    window_->Close();
  });
}

void Binder::DeliverSize() {
  Deliver([&] {
    if (window_->Resized) window_->Resized(ToTwips(inner_.width()), ToTwips(inner_.height()));
  });
}

}  // namespace tarvolinex
