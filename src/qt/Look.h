// How text, colours and the state that all controls share reach a widget.
#pragma once

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

#include "controls/Controls.h"

class QWidget;

namespace tarvolinex {

QString Shown(std::string_view text);
std::string Held(const QString& text);

// A caption as buttons, menus, tabs and labels with a buddy take it: the last access key of the caption is kept, any
// earlier one is dropped, and an "&" before a blank stands for itself.
QString WithAccessKey(std::string_view caption);
// The caption as it reads, without access keys.
QString WithoutAccessKey(std::string_view caption);

// A window's title that is shown letter for letter: to the toolkit "[*]" is a mark of its own.
QString PlainTitle(std::string_view text);

// A tool tip that is shown letter for letter, whatever "<" and ">" it holds.
QString PlainToolTip(std::string_view text);

// Twips to logical pixels and back: 15 twips are one pixel.
int ToPixels(int twips);
int ToTwips(int pixels);

// The colour, or a lighter one of its hue when the window's background is too dark for it.
QColor ReadableOnWindow(const QColor& colour);

// Tick boxes and option buttons whose outline is seen on dark windows too, whatever the style. REQUIRES: an
// application.
void OutlineChoices();

// A system colour is taken from the present palette.
QColor ToQColor(Colour colour);
Colour FromQColor(const QColor& colour);

// Enabled, visible, tool tip and, for a control that carries one, the position.
void PaintShared(const Control& control, QWidget& widget);

// The background of an input. kSystemWindow leaves it to the palette; another colour than the system's gets black or
// white text, whichever reads better.
void PaintInputColour(QWidget& widget, Colour colour);

}  // namespace tarvolinex
