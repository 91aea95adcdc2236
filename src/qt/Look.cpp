#include "qt/Look.h"

#include "platform/text/Translation.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOptionButton>
#include <QTextDocument>
#include <QWidget>

namespace tarvolinex {

namespace {

// Position of the access key's mark; -1 when there is none.
qsizetype AccessKeyMark(const QString& caption) {
  qsizetype mark = -1;
  for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    if (caption[i + 1] == u'&') {
      ++i;
    } else if (!caption[i + 1].isSpace()) {
      mark = i;
    }
  }
  return mark;
}

// The caption with `keyMark` before its access key and `literal` for each "&" that stands for itself.
QString Marked(std::string_view caption, const QString& keyMark, const QString& literal) {
  const QString text = Shown(caption);
  const qsizetype mark = AccessKeyMark(text);
  QString marked;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'&') {
      marked += text[i];
    } else if (i == mark) {
      marked += keyMark;
    } else if (i + 1 == text.size() || text[i + 1].isSpace()) {
      marked += literal;
    } else if (text[i + 1] == u'&') {
      marked += literal;
      ++i;
    }
  }
  return marked;
}

// A style may draw the outline of a tick box or an option button from the window's colour, which swallows it in the
// dark.
class OutlinedChoices : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    constexpr int kDark = 128;
    const auto* choice = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!choice || (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton) ||
        qGray(choice->palette.color(QPalette::Window).rgb()) >= kDark) {
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    QStyleOptionButton outlined = *choice;
    outlined.palette.setColor(QPalette::Window, outlined.palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
  }
};

}  // namespace

void OutlineChoices() {
  QApplication::setStyle(new OutlinedChoices);
}

QString Shown(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string Held(const QString& text) {
  return text.toStdString();
}

QString WithAccessKey(std::string_view caption) {
  return Marked(caption, "&", "&&");
}

QString WithoutAccessKey(std::string_view caption) {
  return Marked(caption, "", "&");
}

QString PlainTitle(std::string_view text) {
  return Shown(text).replace("[*]", "[*][*]");
}

QString PlainToolTip(std::string_view text) {
  const QString shown = Shown(text);
  return Qt::mightBeRichText(shown) ? shown.toHtmlEscaped() : shown;
}

int ToPixels(int twips) {
  return twips / 15;
}

int ToTwips(int pixels) {
  return pixels * 15;
}

QColor ReadableOnWindow(const QColor& colour) {
  constexpr int kDark = 128, kDistance = 100, kLight = 150;
  const int background = qGray(QGuiApplication::palette().color(QPalette::Window).rgb());
  if (background >= kDark || qGray(colour.rgb()) - background >= kDistance) return colour;
  return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(), kLight + colour.lightness() / 2);
}

QColor ToQColor(Colour colour) {
  const QPalette palette = QGuiApplication::palette();
  if (colour == kSystemWindow) return palette.color(QPalette::Base);
  if (colour == kSystemWindowText) return palette.color(QPalette::WindowText);
  if (colour == kSystemButtonFace) return palette.color(QPalette::Button);
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

Colour FromQColor(const QColor& colour) {
  return static_cast<Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

void PaintShared(const Control& control, QWidget& widget) {
  widget.setEnabled(control.Enabled());
  if (widget.isHidden() == control.Visible()) widget.setVisible(control.Visible());
  if (const QString tip = PlainToolTip(control.ToolTip()); tip != widget.toolTip()) widget.setToolTip(tip);
  const Control::Place& place = control.Position();
  if (place.width > 0 && place.height == 0) {
    widget.setFixedWidth(ToPixels(place.width));
  } else if (place.width > 0) {
    widget.setGeometry(ToPixels(place.left), ToPixels(place.top), ToPixels(place.width), ToPixels(place.height));
  }
}

void PaintInputColour(QWidget& widget, Colour colour) {
  QPalette palette;
  if (colour != kSystemWindow) {
    const QColor background = ToQColor(colour);
    palette.setColor(QPalette::Base, background);
    if (colour != kSystemButtonFace) {
      const QColor text = qGray(background.rgb()) > 140 ? Qt::black : Qt::white;
      palette.setColor(QPalette::Text, text);
    }
  }
  widget.setPalette(palette);
}

}  // namespace tarvolinex
