// One function for each kind of control: sets the control's painter, paints it once and connects the widget's events.
// Each returns false, and does nothing, when the widget is of a kind that cannot draw the control.
//
// The connections end with `owner`; control and widget outlive it.
#pragma once

#include <vector>

#include "controls/Controls.h"
#include "controls/PaintControls.h"

class QMenuBar;
class QObject;
class QWidget;

namespace tarvolinex {

bool BindTextBox(TextBox& box, QWidget& widget, QObject& owner);

bool BindLabel(Label& label, QWidget& widget, QObject& owner);
bool BindFrame(Frame& frame, QWidget& widget);
bool BindCommandButton(CommandButton& button, QWidget& widget, QObject& owner);
bool BindOptionButton(OptionButton& button, QWidget& widget, QObject& owner);
bool BindCheckBox(CheckBox& box, QWidget& widget, QObject& owner);
bool BindUpDown(UpDown& upDown, QWidget& widget, QObject& owner);
bool BindProgressBar(ProgressBar& bar, QWidget& widget);
bool BindPictureBox(PictureBox& box, QWidget& widget);

bool BindPixelGrid(PixelGrid& grid, QWidget& widget, QObject& owner);
bool BindBarChart(BarChart& chart, QWidget& widget);
// Drawn by a swatch that can be chosen, or by a label that only shows the colour.
bool BindColourBox(ColourBox& box, QWidget& widget, QObject& owner);

bool BindComboBox(ComboBox& box, QWidget& widget, QObject& owner);
bool BindListBox(ListBox& box, QWidget& widget, QObject& owner);
bool BindListView(ListView& list, QWidget& widget, QObject& owner);
bool BindTreeView(TreeView& tree, QWidget& widget, QObject& owner);

bool BindToolbar(Toolbar& toolbar, QWidget& widget, QObject& owner);
bool BindTabStrip(TabStrip& tabs, QWidget& widget, QObject& owner);
// Makes the menus and their actions, each with the name of its control.
void BindMenus(const std::vector<Menu*>& menus, QMenuBar& bar, QObject& owner);
void BindTimer(Timer& timer, QObject& owner);

}  // namespace tarvolinex
