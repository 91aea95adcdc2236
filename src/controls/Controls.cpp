#include "controls/Controls.h"

#include <algorithm>
#include <utility>

#include "platform/text/Text.h"

namespace tarvolinex {

Control::Control(Window& window, std::string name, int index) : window_(window), name_(std::move(name)), index_(index) {
  window.controls_.push_back(this);
}

std::string Control::WidgetName() const {
  return index_ < 0 ? name_ : name_ + "_" + std::to_string(index_);
}

void Control::SetToolTip(std::string text) {
  if (toolTip_ == text) return;
  toolTip_ = std::move(text);
  Paint(Aspect::State);
}

void Control::SetEnabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) Paint(Aspect::State);
}

void Control::SetVisible(bool visible) {
  if (std::exchange(visible_, visible) != visible) Paint(Aspect::State);
}

void Control::SetBackColour(Colour colour) {
  if (std::exchange(backColour_, colour) != colour) Paint(Aspect::State);
}

void Control::SetPosition(const Place& place) {
  if (std::exchange(place_, place) != place) Paint(Aspect::State);
}

void Control::SetFocus() {
  window_.MoveFocus(this);
  if (window_.ActiveControl() == this) Paint(Aspect::Focus);
}

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Paint(Aspect::Text);
  Fire(Change);
}

void TextBox::Type(std::string_view text) {
  if (locked_ || !Enabled()) return;
  SetText(maxLength_ > 0 ? FirstCharacters(text, maxLength_) : text);
}

void TextBox::Load(std::string_view text) {
  loaded_ = text;
  SetText(text);
}

void TextBox::SetForNumber(std::string_view currencySymbol) {
  forNumber_ = true;
  currencySymbol_ = currencySymbol;
}

void TextBox::SetFault(std::string fault) {
  if (fault_ == fault) return;
  fault_ = std::move(fault);
  Paint(Aspect::State);
}

void TextBox::SetLocked(bool locked) {
  if (std::exchange(locked_, locked) != locked) Paint(Aspect::State);
}

void TextBox::SetMaxLength(int characters) {
  if (std::exchange(maxLength_, characters) != characters) Paint(Aspect::State);
}

void Label::SetForeColour(Colour colour) {
  if (std::exchange(foreColour_, colour) != colour) Paint(Aspect::State);
}

std::string PlainCaption(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

std::string CaptionOf(std::string_view text) {
  return ReplaceAll(text, "&", "&&");
}

void CaptionedControl::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Paint(Aspect::Text);
}

void CommandButton::SetImage(std::string key) {
  image_ = std::move(key);
  Paint(Aspect::State);
}

void CommandButton::Press() {
  if (!Enabled()) return;
  Owner().LeaveField();
  if (Enabled()) Fire(Click);
}

void AnswerKeys(Window& window, CommandButton& enter, CommandButton& escape) {
  window.KeyUp = [&](Key key) {
    auto* focused = dynamic_cast<CommandButton*>(window.ActiveControl());
    if (key == Key::Return) (focused ? *focused : enter).Press();
    if (key == Key::Escape) escape.Press();
  };
}

void OptionButton::SetValue(bool value) {
  if (value_ == value) return;
  value_ = value;
  Paint(Aspect::State);
  if (value) {
    for (Control* control : Owner().Controls()) {
      auto* other = dynamic_cast<OptionButton*>(control);
      if (other && other != this && other->Name() == Name() && std::exchange(other->value_, false)) {
        other->Paint(Aspect::State);
      }
    }
    Fire(Click);
  }
}

void CheckBox::SetValue(bool value) {
  if (value_ == value) return;
  value_ = value;
  Paint(Aspect::State);
  Fire(Click);
}

void UpDown::StepBy(bool up) {
  if (!Enabled() || (Buddy && Buddy->Locked())) return;
  Fire(up ? UpClick : DownClick);
  Fire(Change);
}

void ProgressBar::SetValue(int value) {
  value = std::clamp(value, 0, 100);
  if (std::exchange(value_, value) != value) Paint(Aspect::State);
}

void PictureBox::SetPicture(std::string path) {
  picture_ = std::move(path);  // the file may have changed under the same name
  Paint(Aspect::State);
}

void Menu::Choose() {
  const auto* parent = dynamic_cast<const Menu*>(Owner().Find(parent_));
  if (!Enabled() || (parent && !parent->Enabled())) return;
  Owner().LeaveField();
  Fire(Click);
}

void Toolbar::Add(Button button) {
  buttons_.push_back(std::move(button));
  Paint(Aspect::Items);
}

void Toolbar::SetButtonToolTip(int button, std::string toolTip) {
  buttons_.at(static_cast<std::size_t>(button)).toolTip = std::move(toolTip);
  Paint(Aspect::Row, button);
}

void Toolbar::SetButtonImage(int button, std::string image) {
  buttons_.at(static_cast<std::size_t>(button)).image = std::move(image);
  Paint(Aspect::Row, button);
}

void Toolbar::SetButtonEnabled(int button, bool enabled) {
  buttons_.at(static_cast<std::size_t>(button)).enabled = enabled;
  Paint(Aspect::Row, button);
}

void Toolbar::SetButtonEnabled(std::string_view key, bool enabled) {
  const auto button = std::find_if(buttons_.begin(), buttons_.end(), [&](const Button& b) { return b.key == key; });
  SetButtonEnabled(static_cast<int>(button - buttons_.begin()), enabled);
}

void Toolbar::SetButtonDown(int button, bool down) {
  buttons_.at(static_cast<std::size_t>(button)).down = down;
  Paint(Aspect::Row, button);
}

void Toolbar::Press(std::string_view key) {
  const auto button = std::find_if(buttons_.begin(), buttons_.end(), [&](const Button& b) { return b.key == key; });
  if (button == buttons_.end() || !button->enabled || !Enabled()) return;
  Owner().LeaveField();
  if (ButtonClick) ButtonClick(button->key);
}

void TabStrip::Add(std::string caption) {
  tabs_.push_back({std::move(caption)});
  Paint(Aspect::Items);
}

void TabStrip::SetTabCaption(int tab, std::string_view caption) {
  tabs_.at(static_cast<std::size_t>(tab)).caption = caption;
  Paint(Aspect::Row, tab);
}

void TabStrip::SetTabEnabled(int tab, bool enabled) {
  tabs_.at(static_cast<std::size_t>(tab)).enabled = enabled;
  Paint(Aspect::Row, tab);
}

void TabStrip::SelectTab(int tab) {
  if (tab < 0 || tab >= static_cast<int>(tabs_.size()) || std::exchange(selected_, tab) == tab) return;
  Paint(Aspect::Selection);
  Fire(Click);
}

void TabStrip::Choose(int tab) {
  if (tab < 0 || tab >= static_cast<int>(tabs_.size()) || !tabs_[static_cast<std::size_t>(tab)].enabled) return;
  Owner().LeaveField();
  SelectTab(tab);
}

void Timer::SetRunning(bool running) {
  if (std::exchange(running_, running) != running) Paint(Aspect::State);
}

Window::~Window() {
  if (PaintGone) PaintGone();
}

void Window::SetCaption(std::string_view caption) {
  caption_ = caption;
  if (PaintCaption) PaintCaption();
}

Control* Window::Find(std::string_view widgetName) const {
  const auto found =
      std::find_if(controls_.begin(), controls_.end(), [&](const Control* c) { return c->WidgetName() == widgetName; });
  return found == controls_.end() ? nullptr : *found;
}

void Window::MoveFocus(Control* control) {
  if (active_ == control) return;
  Control* left = std::exchange(active_, control);
  if (left) {
    if (left->Validate) left->Validate();
    if (left->LostFocus) left->LostFocus();
  }
  if (active_ == control && control && control->GotFocus) control->GotFocus();
}

void Window::LeaveField() {
  if (!active_ || leaving_) return;
  leaving_ = true;
  Control* control = active_;
  if (control->Validate) control->Validate();
  if (control->LostFocus) control->LostFocus();
  leaving_ = false;
}

void Window::Close() {
  if (closed_) return;
  closed_ = true;
  if (Unloading) Unloading();
  if (PaintClose) PaintClose();
}

}  // namespace tarvolinex
