// Text boxes of one line and of several.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <algorithm>

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

void BindLine(TextBox& box, QLineEdit& line, QObject& owner) {
  box.Painter = [&box, &line](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return line.setFocus();
    if (aspect == Aspect::State) PaintState(box, line);
    if (aspect == Aspect::State && !line.hasFrame()) PaintFlat(line);
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
