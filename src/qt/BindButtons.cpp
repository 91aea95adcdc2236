// Labels, frames, buttons and the other small controls.
#include <QCheckBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "qt/BindControls.h"
#include "qt/EventBoundary.h"
#include "qt/LinkLabel.h"
#include "qt/Look.h"
#include "qt/UpDownButtons.h"

namespace tarvolinex {

namespace {

void PaintCaption(const CaptionedControl& control, QAbstractButton& button) {
  const QString text = WithAccessKey(control.Caption());
  if (button.text() != text) button.setText(text);
}

// What check boxes and option buttons share.
template <typename Choice>
void PaintChoice(const Choice& control, QAbstractButton& button) {
  const QSignalBlocker blocker(button);
  PaintShared(control, button);
  PaintCaption(control, button);
  button.setChecked(control.Value());
}

// On a background of its own a text has the colour that it was given.
QColor Ink(const Label& label) {
  const QColor ink = ToQColor(label.ForeColour());
  return label.BackColour() == kSystemWindow ? ReadableOnWindow(ink) : ink;
}

// The caption as the design wants it drawn: an amount with its thousands apart, a path shortened in its middle.
QString LabelText(const Label& label, const QLabel& widget) {
  if (widget.buddy()) return WithAccessKey(label.Caption());
  if (widget.property("thousands").toBool()) return Shown(WithThousands(label.Caption()));
  const QString text = WithoutAccessKey(label.Caption());
  return widget.property("shortened").toBool()
             ? widget.fontMetrics().elidedText(text, Qt::ElideMiddle, widget.contentsRect().width())
             : text;
}

void PaintLabel(const Label& label, QLabel& widget) {
  PaintShared(label, widget);
  widget.setText(LabelText(label, widget));
  if (widget.property("onlyWithText").toBool()) widget.setVisible(label.Visible() && !label.Caption().empty());
  if (widget.buddy()) widget.buddy()->setAccessibleName(WithoutAccessKey(label.Caption()));
  const bool coloured = label.BackColour() != kSystemWindow;
  QPalette palette;
  const bool written = label.ForeColour() != kSystemWindowText;
  if (coloured) palette.setColor(QPalette::Window, ToQColor(label.BackColour()));
  if (written) palette.setColor(QPalette::WindowText, Ink(label));
  if (coloured || written || widget.testAttribute(Qt::WA_SetPalette)) widget.setPalette(palette);
  widget.setAutoFillBackground(coloured);
}

// As the background of a page in small: the colour, and over it the picture side by side.
void PaintTiles(const PictureBox& box, const QImage& read, QLabel& widget) {
  constexpr int kSmaller = 3;
  QPalette palette;
  palette.setColor(QPalette::Window, ToQColor(box.BackColour()));
  if (!read.isNull()) {
    const QSize size = (read.size() / kSmaller).expandedTo(QSize(1, 1)) * widget.devicePixelRatio();
    QPixmap tile = QPixmap::fromImage(read.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    tile.setDevicePixelRatio(widget.devicePixelRatio());
    palette.setBrush(QPalette::Window, tile);
  }
  widget.setPalette(palette);
  widget.setAutoFillBackground(true);
}

QImage PictureOf(const PictureBox& box) {
  if (box.Picture().empty()) return {};
  // Read anew each time: a pixmap of a file's name may be the one that was shown before the file was changed.
  return QImage(box.Picture().starts_with(':') ? Shown(box.Picture()) : Shown(NativePath(box.Picture())));
}

// A picture larger than its box is shrunk to fit, a smaller one is shown as it is.
void PaintPicture(const PictureBox& box, QLabel& widget) {
  constexpr const char* kPainted = "painted";  // the picture that the widget shows is not its design's
  PaintShared(box, widget);
  if (widget.property("tiled").toBool()) return PaintTiles(box, PictureOf(box), widget);
  if (box.BackColour() != kSystemWindow) {
    QPalette palette;
    palette.setColor(QPalette::Window, ToQColor(box.BackColour()));
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
  }
  if (box.Picture().empty()) {
    if (widget.property(kPainted).toBool()) widget.clear();
    return;
  }
  widget.setProperty(kPainted, true);
  QPixmap picture = QPixmap::fromImage(PictureOf(box));
  const QSize room = widget.contentsRect().size();
  if (picture.width() > room.width() || picture.height() > room.height()) {
    picture = picture.scaled(room * widget.devicePixelRatio(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(widget.devicePixelRatio());
  }
  widget.setPixmap(picture);
}

}  // namespace

namespace {

void ConnectLink(Label& label, LinkLabel& link, QObject& owner) {
  const auto fire = [](const Event& event) {
    Deliver([&] {
      if (event) event();
    });
  };
  QObject::connect(&link, &LinkLabel::Clicked, &owner, [&label, fire] { fire(label.Click); });
  QObject::connect(&link, &LinkLabel::Entered, &owner, [&label, fire] { fire(label.MouseMove); });
  QObject::connect(&link, &LinkLabel::Left, &owner, [&label, fire] { fire(label.Owner().MouseMove); });
}

}  // namespace

bool BindLabel(Label& label, QWidget& widget, QObject& owner) {
  auto* drawn = qobject_cast<QLabel*>(&widget);
  if (!drawn) return false;
  drawn->setTextFormat(Qt::PlainText);
  label.Painter = [&label, drawn](Aspect, int) { PaintLabel(label, *drawn); };
  label.Painter(Aspect::State, -1);
  if (auto* link = qobject_cast<LinkLabel*>(drawn)) ConnectLink(label, *link, owner);
  return true;
}

bool BindFrame(Frame& frame, QWidget& widget) {
  auto* box = qobject_cast<QGroupBox*>(&widget);
  if (!box) return false;
  frame.Painter = [&frame, box](Aspect, int) {
    PaintShared(frame, *box);
    box->setTitle(WithAccessKey(frame.Caption()));
    box->setAccessibleName(WithoutAccessKey(frame.Caption()));
    // Inputs without a label of their own, which the design says belong to the frame's caption.
    for (const QString& name : box->property("captions").toString().split(' ')) {
      auto* captioned = box->findChild<QWidget*>(name);
      if (captioned) captioned->setAccessibleName(WithoutAccessKey(frame.Caption()));
    }
  };
  frame.Painter(Aspect::State, -1);
  return true;
}

bool BindCommandButton(CommandButton& button, QWidget& widget, QObject& owner) {
  auto* push = qobject_cast<QPushButton*>(&widget);
  if (!push) return false;
  button.Painter = [&button, push](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return push->setFocus();
    PaintShared(button, *push);
    PaintCaption(button, *push);
    if (!button.Image().empty()) push->setIcon(QIcon(":/pictures/" + Shown(button.Image()) + ".svg"));
  };
  button.Painter(Aspect::State, -1);
  QObject::connect(push, &QPushButton::clicked, &owner, [&button] { Deliver([&] { button.Press(); }); });
  return true;
}

bool BindOptionButton(OptionButton& button, QWidget& widget, QObject& owner) {
  auto* radio = qobject_cast<QRadioButton*>(&widget);
  if (!radio) return false;
  button.Painter = [&button, radio](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return radio->setFocus();
    // An exclusive button refuses to be switched off, and the control decides which of them is on.
    radio->setAutoExclusive(false);
    PaintChoice(button, *radio);
    radio->setAutoExclusive(true);
  };
  button.Painter(Aspect::State, -1);
  QObject::connect(radio, &QRadioButton::clicked, &owner, [&button] {
    Deliver([&] { button.SetValue(true); });
    button.Painter(Aspect::State, -1);
  });
  return true;
}

bool BindCheckBox(CheckBox& box, QWidget& widget, QObject& owner) {
  auto* check = qobject_cast<QCheckBox*>(&widget);
  if (!check) return false;
  box.Painter = [&box, check](Aspect aspect, int) {
    if (aspect == Aspect::Focus) return check->setFocus();
    PaintChoice(box, *check);
  };
  box.Painter(Aspect::State, -1);
  QObject::connect(check, &QCheckBox::clicked, &owner, [&box](bool checked) {
    Deliver([&] { box.SetValue(checked); });
    box.Painter(Aspect::State, -1);
  });
  return true;
}

bool BindUpDown(UpDown& upDown, QWidget& widget, QObject& owner) {
  auto* arrows = qobject_cast<UpDownButtons*>(&widget);
  if (!arrows) return false;
  upDown.Painter = [&upDown, arrows](Aspect, int) { PaintShared(upDown, *arrows); };
  upDown.Painter(Aspect::State, -1);
  QObject::connect(arrows, &UpDownButtons::Stepped, &owner,
                   [&upDown](bool up) { Deliver([&] { upDown.StepBy(up); }); });
  return true;
}

bool BindProgressBar(ProgressBar& bar, QWidget& widget) {
  auto* drawn = qobject_cast<QProgressBar*>(&widget);
  if (!drawn) return false;
  drawn->setRange(0, 100);
  bar.Painter = [&bar, drawn](Aspect, int) {
    PaintShared(bar, *drawn);
    drawn->setValue(bar.Value());
    drawn->setVisible(bar.Visible() && bar.Value() > 0);
  };
  bar.Painter(Aspect::State, -1);
  return true;
}

bool BindPictureBox(PictureBox& box, QWidget& widget) {
  auto* drawn = qobject_cast<QLabel*>(&widget);
  if (!drawn) return false;
  box.Painter = [&box, drawn](Aspect, int) { PaintPicture(box, *drawn); };
  box.Painter(Aspect::State, -1);
  return true;
}

}  // namespace tarvolinex
