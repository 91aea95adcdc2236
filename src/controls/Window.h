// What every control has, and the window that owns the controls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

class Window;

using Event = std::function<void()>;
using Colour = std::uint32_t;  // 00BBGGRR, red in the low byte

// The system colours in use; a painter maps them to the desktop's palette.
inline constexpr Colour kSystemWindow = 0x80000005;      // background of an unlocked input
inline constexpr Colour kSystemWindowText = 0x80000008;  // text on a window
inline constexpr Colour kSystemButtonFace = 0x8000000F;  // background of a locked input

// What of a control has changed; lets a painter update one row instead of the whole list.
// Renewed: items that came, went or changed while the user looks at the others.
enum class Aspect { State, Text, Items, Renewed, Row, Selection, Focus };

// Keys that windows and lists handle themselves, by their virtual key codes.
enum class Key { None = 0, Return = 13, Escape = 27, Up = 38, Down = 40, Delete = 46 };

class Control {
 public:
  // index is -1 for a control that is not part of an array.
  Control(Window& window, std::string name, int index = -1);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // The kind in capitals: "TEXTBOX", "LABEL", "CHECKBOX", ...
  virtual std::string_view TypeName() const = 0;

  const std::string& Name() const { return name_; }
  int Index() const { return index_; }
  // The name of the widget that draws this control: Name, or Name_Index for a member of an array.
  std::string WidgetName() const;
  Window& Owner() const { return window_; }

  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  const std::string& ToolTip() const { return toolTip_; }
  void SetToolTip(std::string text);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  Colour BackColour() const { return backColour_; }
  void SetBackColour(Colour colour);

  // Position inside the parent in twips (1/15 of a pixel at 100 %). Only controls that follow the window's edges
  // carry one; a width of 0 means that the window's design decides, a height of 0 that it decides all but the width.
  struct Place {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const Place&) const = default;
  };
  const Place& Position() const { return place_; }
  void SetPosition(const Place& place);

  // Moves the keyboard focus here: the control that had it is left first (Validate, then LostFocus).
  void SetFocus();

  Event GotFocus;
  Event Validate;   // the user leaves the control; runs before LostFocus
  Event LostFocus;  // the control has been left
  std::function<void(Key)> KeyUp;

  // Called after every change; the row is -1 unless Aspect::Row. Set by the binder that draws the control.
  std::function<void(Aspect, int row)> Painter;

 protected:
  void Paint(Aspect aspect, int row = -1) const {
    if (Painter) Painter(aspect, row);
  }
  static void Fire(const Event& event) {
    if (event) event();
  }

 private:
  Window& window_;
  std::string name_;
  int index_;
  std::string tag_, toolTip_;
  bool enabled_ = true, visible_ = true;
  Colour backColour_ = kSystemWindow;
  Place place_;
};

// A window: its controls in the order in which they were declared, its caption and which control has the focus.
class Window {
 public:
  explicit Window(std::string name, std::string caption = {}) : name_(std::move(name)), caption_(std::move(caption)) {}
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  const std::vector<Control*>& Controls() const { return controls_; }
  // nullptr when the window has no such control.
  Control* Find(std::string_view widgetName) const;

  Control* ActiveControl() const { return active_; }
  // The focus has moved: leaves the active control (Validate, LostFocus) and enters the other (GotFocus). A handler
  // that moves the focus elsewhere wins. nullptr leaves without entering.
  void MoveFocus(Control* control);
  // Lets the active control validate before a command acts; it keeps the focus.
  void LeaveField();
  // Inside LeaveField: the active control is left only for a command, and has the focus after it.
  bool KeepsFocus() const { return leaving_; }

  // Ends the modal showing of this window, or closes it.
  void Close();
  bool Closed() const { return closed_; }
  // A window that is shown again after Close.
  void Reopen() { closed_ = false; }

  Event MouseMove;                        // the pointer comes from a label to the window
  Event Activated;                        // has just been shown
  Event Unloading;                        // is being closed; runs once
  std::function<bool()> MayClose;         // the user closes the window; false keeps it open
  std::function<void(int, int)> Resized;  // inner width and height in twips
  std::function<void(Key)> KeyUp;         // a key released anywhere in the window, after its control
  // Inner size in twips that the window is first shown with, and then its last size; 0 = as designed.
  int StartWidth = 0, StartHeight = 0;

  Event PaintCaption, PaintClose;  // set by the binder
  Event PaintGone;                 // set by the binder: the window is being destroyed, its controls have gone

 private:
  friend class Control;
  std::string name_, caption_;
  std::vector<Control*> controls_;
  Control* active_ = nullptr;
  bool closed_ = false, leaving_ = false;
};

// A control array: controls of one kind and name, with indexes from `first` on.
template <typename T>
class ControlArray {
 public:
  ControlArray(Window& window, const std::string& name, int count, int first = 0) : first_(first) {
    for (int i = 0; i < count; ++i) items_.push_back(std::make_unique<T>(window, name, first + i));
  }
  T& operator()(int index) const { return *items_.at(static_cast<std::size_t>(index - first_)); }
  int First() const { return first_; }
  int Last() const { return first_ + static_cast<int>(items_.size()) - 1; }

 private:
  int first_;
  std::vector<std::unique_ptr<T>> items_;
};

}  // namespace tarvolinex
