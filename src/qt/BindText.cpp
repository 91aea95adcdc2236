// Text boxes of one line and of several.
#include <QAction>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QValidator>
#include <algorithm>
#include <utility>

#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

constexpr int kNoLimit = 32767;  // of a line edit

Colour InputColour(const TextBox& box) {
  return box.Locked() && box.BackColour() == kSystemWindow ? kSystemButtonFace : box.BackColour();
}

// The program may put in more than can be typed, so the widget's limit gives way to the text.
void PaintLine(const TextBox& box, QLineEdit& line) {
  const QSignalBlocker blocker(line);
  const QString text = Shown(box.Text());
  const int limit = box.MaxLength() > 0 ? std::max(box.MaxLength(), static_cast<int>(text.size())) : kNoLimit;
  if (line.maxLength() != limit) line.setMaxLength(limit);
  if (line.text() == text) return;
  const int cursor = line.cursorPosition();
  line.setText(text);
  line.setCursorPosition(line.hasFocus() ? std::min(cursor, static_cast<int>(text.size())) : 0);
}

// A line ends with "\r\n" in the program and with "\n" in the widget.
QString WidgetLines(const TextBox& box) {
  return Shown(box.Text()).replace("\r\n", "\n");
}

std::string ProgramLines(QString text) {
  return Held(text.replace("\n", "\r\n"));
}

void PaintLines(const TextBox& box, QPlainTextEdit& edit) {
  const QSignalBlocker blocker(edit);
  const QString text = WidgetLines(box);
  if (edit.toPlainText() == text) return;
  const int cursor = edit.textCursor().position();
  edit.setPlainText(text);
  QTextCursor moved = edit.textCursor();
  moved.setPosition(std::min(cursor, static_cast<int>(text.size())));
  edit.setTextCursor(moved);
}

template <typename Edit>
void PaintState(const TextBox& box, Edit& edit) {
  PaintShared(box, edit);
  edit.setReadOnly(box.Locked());
  PaintInputColour(edit, InputColour(box));
}

// A line without a frame is part of the window's surface.
void PaintFlat(QLineEdit& line) {
  QPalette palette = line.palette();
  palette.setColor(QPalette::Base, Qt::transparent);
  line.setPalette(palette);
}

// Whatever number a text may become while it is typed, with the currency's symbol or a percent sign.
class NumberValidator : public QValidator {
 public:
  NumberValidator(const TextBox& box, QObject& owner) : QValidator(&owner), box_(&box) {}

  State validate(QString& text, int& cursor) const override {
    const QString trimmed = text.trimmed();
    if (trimmed != text) cursor = std::min(cursor, static_cast<int>(trimmed.size()));
    text = trimmed;
    QString others;
    for (const QChar c : text) {
      const bool numeral = (c >= u'0' && c <= u'9') || QStringView(u"+-.,%").contains(c);
      if (!numeral) others += c;
    }
    return Shown(box_->CurrencySymbol()).startsWith(others) ? Acceptable : Invalid;
  }

 private:
  const TextBox* box_;
};

// A click into a box for a number selects all of it, unless the user selects a part.
class SelectAllOnClick : public QObject {
 public:
  explicit SelectAllOnClick(QLineEdit& line) : QObject(&line), line_(&line) { line.installEventFilter(this); }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusIn) {
      entered_ = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
    }
    if (event->type() == QEvent::MouseButtonRelease && std::exchange(entered_, false) && !line_->hasSelectedText()) {
      QMetaObject::invokeMethod(line_, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  QLineEdit* line_;
  bool entered_ = false;
};

// A sign in the box, its colour and the words say that something is wrong with what it holds.
void PaintFault(const TextBox& box, QLineEdit& line) {
  auto* sign = line.findChild<QAction*>("fault", Qt::FindDirectChildrenOnly);
  line.setAccessibleDescription(Shown(box.Fault()));
  if (box.Fault().empty()) {
    delete sign;
    return;
  }
  if (!sign) {
    sign = line.addAction(QIcon(":/pictures/FAULT.svg"), QLineEdit::LeadingPosition);
    sign->setObjectName("fault");
  }
  sign->setToolTip(PlainToolTip(box.Fault()));
  line.setToolTip(PlainToolTip(box.Fault()));
  const bool dark = qGray(QGuiApplication::palette().color(QPalette::Base).rgb()) < 128;
  QPalette palette = line.palette();
  palette.setColor(QPalette::Base, dark ? QColor(0x5A, 0x1E, 0x1E) : QColor(0xFF, 0xE0, 0xDC));
  line.setPalette(palette);
}

void BindNumber(TextBox& box, QLineEdit& line, QObject& owner) {
  line.setValidator(new NumberValidator(box, owner));
  new SelectAllOnClick(line);
  QObject::connect(&line, &QLineEdit::inputRejected, &owner, [&box] {
    Deliver([&] {
      if (box.Refused) box.Refused();
    });
  });
}

void BindLine(TextBox& box, QLineEdit& line, QObject& owner) {
  if (box.ForNumber()) BindNumber(box, line, owner);
  box.Painter = [&box, &line](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return line.setFocus();
    if (aspect == Aspect::State) PaintState(box, line);
    if (aspect == Aspect::State && !line.hasFrame()) PaintFlat(line);
    if (aspect == Aspect::State && line.hasFrame()) PaintFault(box, line);
    PaintLine(box, line);
  };
  QObject::connect(&line, &QLineEdit::textEdited, &owner, [&box, &line](const QString& text) {
    Deliver([&] { box.Type(Held(text)); });
    PaintLine(box, line);
  });
}

void BindLines(TextBox& box, QPlainTextEdit& edit, QObject& owner) {
  edit.setTabChangesFocus(true);
  box.Painter = [&box, &edit](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return edit.setFocus();
    if (aspect == Aspect::State) PaintState(box, edit);
    PaintLines(box, edit);
  };
  QObject::connect(&edit, &QPlainTextEdit::textChanged, &owner, [&box, &edit] {
    Deliver([&] { box.Type(ProgramLines(edit.toPlainText())); });
    PaintLines(box, edit);
  });
}

}  // namespace

bool BindTextBox(TextBox& box, QWidget& widget, QObject& owner) {
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
    BindLine(box, *line, owner);
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget)) {
    BindLines(box, *edit, owner);
  } else {
    return false;
  }
  box.Painter(Aspect::State, -1);
  return true;
}

}  // namespace tarvolinex
