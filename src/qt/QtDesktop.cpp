#include "qt/QtDesktop.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QIcon>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "qt/Binder.h"
#include "qt/Designs.h"
#include "qt/Dialogs.h"
#include "qt/Documents.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"
#include "qt/Printing.h"

namespace tarvolinex {

// The usual pointer while the user has to answer, then the busy one again.
class QtDesktop::PlainPointer {
 public:
  explicit PlainPointer(QtDesktop& desktop) : desktop_(desktop), wasBusy_(desktop.busy_) {
    desktop_.SetBusyPointer(false);
  }
  ~PlainPointer() { desktop_.SetBusyPointer(wasBusy_); }
  PlainPointer(const PlainPointer&) = delete;
  PlainPointer& operator=(const PlainPointer&) = delete;

 private:
  QtDesktop& desktop_;
  bool wasBusy_;
};

QtDesktop::QtDesktop() {
  // Closing is a matter of the windows: a box that is shown before them must not end the run.
  QApplication::setQuitOnLastWindowClosed(false);
  // Whenever the event loop goes round, everything is painted.
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &listener_,
                   [this] { sincePainting_.start(); });
  ForgetEnd();
}

QtDesktop::~QtDesktop() {
  while (!drawn_.empty()) Forget(*drawn_.begin()->first);
  SetBusyPointer(false);
}

Answer QtDesktop::MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) {
  const PlainPointer pointer(*this);
  return AskMessage(TopWidget(), text, title, buttons, icon);
}

std::optional<std::string> QtDesktop::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& initial) {
  const PlainPointer pointer(*this);
  return AskText(TopWidget(), prompt, title, initial);
}

std::string QtDesktop::OpenFile(const FileDialog& dialog) {
  const PlainPointer pointer(*this);
  return AskFile(TopWidget(), dialog, false);
}

std::string QtDesktop::SaveFile(const FileDialog& dialog) {
  const PlainPointer pointer(*this);
  return AskFile(TopWidget(), dialog, true);
}

std::string QtDesktop::ChooseFolder(const std::string& title, const std::string& startFolder) {
  const PlainPointer pointer(*this);
  return AskFolder(TopWidget(), title, startFolder);
}

std::optional<Colour> QtDesktop::ChooseColour(Colour initial) {
  const PlainPointer pointer(*this);
  return AskColour(TopWidget(), initial);
}

void QtDesktop::SetBusyPointer(bool busy) {
  if (std::exchange(busy_, busy) == busy) return;
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void QtDesktop::DoEvents() {
  QCoreApplication::processEvents();
  ThrowIfEnded();
}

void QtDesktop::Repaint() {
  constexpr int kFrame = 40;  // milliseconds
  if (sincePainting_.isValid() && !sincePainting_.hasExpired(kFrame)) return;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) QCoreApplication::sendPostedEvents(window, QEvent::UpdateRequest);
  }
  sincePainting_.start();
}

int QtDesktop::ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                            const std::string& folder, int) {
  return verb == "edit" ? EditDocument(file, folder) : OpenDocument(file, parameters, folder);
}

int QtDesktop::OpenWith(const std::string& file) {
  const PlainPointer pointer(*this);
  return OpenDocumentWith(TopWidget(), file);
}

void QtDesktop::CopyTable(const std::string& text, const std::string& html) {
  auto both = std::make_unique<QMimeData>();
  both->setText(Shown(text));
  both->setHtml(Shown(html));
  QApplication::clipboard()->setMimeData(both.release());
}

void QtDesktop::CopyText(const std::string& text) {
  QApplication::clipboard()->setText(Shown(text));
}

bool QtDesktop::Print(const RichDocument& document) {
  const PlainPointer pointer(*this);
  return AskAndPrint(TopWidget(), document);
}

void QtDesktop::Show(Window& window) {
  Present(window, *Draw(window).widget);
}

void QtDesktop::Hide(Window& window) {
  if (QWidget* widget = WidgetOf(window)) widget->hide();
}

void QtDesktop::BringToFront(Window& window) {
  if (QWidget* widget = WidgetOf(window)) {
    widget->raise();
    widget->activateWindow();
  }
}

void QtDesktop::ShowModal(Window& window) {
  ThrowIfEnded();
  QWidget* parent = TopWidget();
  const PlainPointer pointer(*this);
  QEventLoop loop;
  Drawn& drawn = Draw(window);
  drawn.loop = &loop;
  drawn.widget->setParent(parent, Qt::Dialog);
  drawn.widget->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
  modal_.push_back(&window);
  Present(window, *drawn.widget);
  if (!window.Closed() && !EndedStatus()) loop.exec();
  if (WidgetOf(window)) Forget(window);
  ThrowIfEnded();
}

bool QtDesktop::Waits() const {
  return !modal_.empty() || QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

int QtDesktop::Run() {
  running_ = true;
  if (!EndedStatus() && AnyShown()) QCoreApplication::exec();
  running_ = false;
  return EndedStatus().value_or(0);
}

QWidget* QtDesktop::WidgetOf(Window& window) const {
  const auto found = drawn_.find(&window);
  return found == drawn_.end() ? nullptr : found->second.widget.get();
}

Binder* QtDesktop::BinderOf(Window& window) const {
  const auto found = drawn_.find(&window);
  return found == drawn_.end() ? nullptr : found->second.binder.get();
}

QtDesktop::Drawn& QtDesktop::Draw(Window& window) {
  const auto known = drawn_.find(&window);
  if (known != drawn_.end()) return known->second;
  std::unique_ptr<QWidget> widget = MakeDesign(window.Name());
  widget->setWindowIcon(QIcon(":/pictures/tarvolinex.svg"));
  Drawn& drawn = drawn_[&window];
  drawn.widget = std::move(widget);
  drawn.binder = std::make_unique<Binder>(window, *drawn.widget);
  if (window.StartWidth > 0) {
    const auto* main = qobject_cast<QMainWindow*>(drawn.widget.get());
    const int bars = main ? main->menuBar()->sizeHint().height() : 0;
    drawn.widget->resize(ToPixels(window.StartWidth), ToPixels(window.StartHeight) + bars);
  }
  window.PaintClose = [this, &window] { OnClosed(window); };
  window.PaintGone = [this, &window] {
    drawn_.at(&window).binder->Abandon();
    Forget(window);
  };
  return drawn;
}

void QtDesktop::Forget(Window& window) {
  window.PaintClose = nullptr;
  Event gone = std::exchange(window.PaintGone, nullptr);  // may be what is running
  std::erase(modal_, &window);
  drawn_.erase(&window);
}

void QtDesktop::OnClosed(Window& window) {
  Drawn& drawn = drawn_.at(&window);
  drawn.widget->hide();
  if (drawn.loop) {
    drawn.loop->quit();
  } else if (running_ && !AnyShown()) {
    QCoreApplication::quit();
  }
}

namespace {
// As small as its central part may be, or as its screen is: there the central part scrolls.
void KeepSmallestSize(QWidget& widget, QSize room) {
  const auto* main = qobject_cast<QMainWindow*>(&widget);
  const auto* scrolled = main ? qobject_cast<QScrollArea*>(main->centralWidget()) : nullptr;
  if (!scrolled || !scrolled->widget()) return;
  constexpr QSize kFrame(4, 40);
  const QSize smallest = scrolled->widget()->minimumSize() + QSize(0, main->menuBar()->sizeHint().height());
  widget.setMinimumSize(smallest.boundedTo(room - kFrame));
}
}  // namespace

void QtDesktop::Present(Window& window, QWidget& widget) {
  window.Reopen();
  const QSize room = widget.screen()->availableSize();
  if (!widget.isVisible()) widget.resize(widget.size().boundedTo(room));
  KeepSmallestSize(widget, room);
  widget.show();
  widget.raise();
  widget.activateWindow();
  if (window.Activated) window.Activated();
}

bool QtDesktop::AnyShown() const {
  return std::any_of(drawn_.begin(), drawn_.end(), [](const auto& entry) { return entry.second.widget->isVisible(); });
}

// What a box or dialog stands above: the innermost modal window, else the window that is shown.
QWidget* QtDesktop::TopWidget() const {
  if (!modal_.empty()) return WidgetOf(*modal_.back());
  const auto shown =
      std::find_if(drawn_.begin(), drawn_.end(), [](const auto& entry) { return entry.second.widget->isVisible(); });
  return shown == drawn_.end() ? nullptr : shown->second.widget.get();
}

}  // namespace tarvolinex
