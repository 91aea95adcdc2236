// The kinds of control that a window is made of, as plain state and events.
//
// A window class owns its controls and gives them handlers; nothing here knows a toolkit. Whoever draws a window sets
// each control's `Painter` and calls the same functions that a test calls (`Type`, `Press`, `Choose`, ...), so an
// event behaves the same whoever causes it:
//   - a text box fires Change as soon as its text differs from before, also when a handler assigned it;
//   - a check box, an option button and a combo box fire Click when their value changes, whoever changed it;
//   - a list box fires Click when its selection changes; a list view fires nothing when it is selected by program.
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

// The two system colours that inputs use; a painter maps them to the desktop's palette.
inline constexpr Colour kSystemWindow = 0x80000005;      // background of an unlocked input
inline constexpr Colour kSystemButtonFace = 0x8000000F;  // background of a locked input

// What of a control has changed; lets a painter update one row instead of the whole list.
enum class Aspect { State, Text, Items, Row, Selection, Focus };

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
  // carry one; a width of 0 means that the window's design decides.
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

class TextBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TEXTBOX"; }

  const std::string& Text() const { return text_; }
  // Fires Change when the text differs. A program may set more than MaxLength characters.
  void SetText(std::string_view text);
  // What the user's typing does: as SetText, cut to MaxLength; nothing when locked or disabled.
  void Type(std::string_view text);
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);
  int MaxLength() const { return maxLength_; }  // characters; 0 = no limit
  void SetMaxLength(int characters);

  Event Change;

 private:
  std::string text_;
  bool locked_ = false;
  int maxLength_ = 0;
};

// What carries a caption, with "&" before its access key ("&&" for the character itself).
class CaptionedControl : public Control {
 public:
  CaptionedControl(Window& window, std::string name, int index = -1, std::string caption = {})
      : Control(window, std::move(name), index), caption_(std::move(caption)) {}
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);

 private:
  std::string caption_;
};

class Label : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  std::string_view TypeName() const override { return "LABEL"; }
};

class Frame : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  std::string_view TypeName() const override { return "FRAME"; }
};

class CommandButton : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  std::string_view TypeName() const override { return "COMMANDBUTTON"; }
  // The user's click: the field with the focus is left first; nothing when disabled.
  void Press();
  Event Click;
};

class OptionButton : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  std::string_view TypeName() const override { return "OPTIONBUTTON"; }
  bool Value() const { return value_; }
  // Switching one on switches off the others of the same name in the window.
  void SetValue(bool value);
  Event Click;

 private:
  bool value_ = false;
};

class CheckBox : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  std::string_view TypeName() const override { return "CHECKBOX"; }
  bool Value() const { return value_; }
  void SetValue(bool value);
  Event Click;

 private:
  bool value_ = false;
};

class ComboBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "COMBOBOX"; }

  struct Item {
    std::string text;
    int data = 0;
  };
  const std::vector<Item>& Items() const { return items_; }
  // Leaves nothing selected, without a Click.
  void Clear();
  void Add(std::string text, int data = 0);
  int ListIndex() const { return listIndex_; }  // -1 = nothing selected
  // Fires Click when the index changes. An index outside the list selects nothing.
  void SetListIndex(int index);
  // What the user's choice does: nothing when locked or disabled.
  void Choose(int index);
  // The selected item's data; -1 when nothing is selected.
  int ItemData() const;
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);

  Event Click;

 private:
  std::vector<Item> items_;
  int listIndex_ = -1;
  bool locked_ = false;
};

class ListBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "LISTBOX"; }

  using Item = ComboBox::Item;
  const std::vector<Item>& Items() const { return items_; }
  void Clear();
  void Add(std::string text, int data = 0);
  int ListIndex() const { return listIndex_; }
  void SetListIndex(int index);
  int ItemData() const;

  Event Click;
  Event DblClick;

 private:
  std::vector<Item> items_;
  int listIndex_ = -1;
};

class ListView : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "LISTVIEW"; }

  struct Column {
    std::string header;
    std::string tag;
    int width = 1440;  // twips
    bool rightAligned = false;
  };
  struct Row {
    std::string key;
    std::string text;                // first column
    std::vector<std::string> cells;  // the others
    std::string toolTip;
    bool checked = false;
  };

  std::vector<Column>& Columns() { return columns_; }
  bool CheckBoxes = false;

  const std::vector<Row>& Rows() const { return rows_; }
  const Row& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  int Count() const { return static_cast<int>(rows_.size()); }
  // A list that is being filled paints once, at the end: nothing is painted between BeginFill and EndFill.
  void BeginFill() { filling_ = true; }
  void EndFill();
  void Clear();
  void Add(Row row);
  void Remove(int row);
  // -1 when no row has the key.
  int Find(std::string_view key) const;
  void SetRowText(int row, std::string_view text);
  // cell 0 is the second column. Cells that the row does not have yet are added empty.
  void SetCell(int row, int cell, std::string_view text);
  void SetChecked(int row, bool checked);

  int Selected() const { return selected_; }  // -1 = none
  // By program: fires nothing.
  void Select(int row);
  // By the user: fires ItemClick.
  void ClickRow(int row);
  void DoubleClickRow(int row);
  void ToggleCheck(int row);  // by the user: fires ItemCheck
  void ClickColumn(int column);

  int SortColumn = -1;  // -1 = in the order of filling
  bool SortAscending = true;
  // Sorts by SortColumn without regard to case; the selected row stays selected.
  void Sort();

  Event ItemClick;
  Event DblClick;
  std::function<void(int row)> ItemCheck;
  std::function<void(int column)> ColumnClick;

 private:
  void PaintItems();
  std::vector<Column> columns_;
  std::vector<Row> rows_;
  int selected_ = -1;
  bool filling_ = false;
};

class TreeView : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TREEVIEW"; }

  struct Node {
    std::string key;
    std::string parent;  // key of the parent; empty for a root
    std::string text;
    bool expanded = false;
  };
  const std::vector<Node>& Nodes() const { return nodes_; }
  void Clear();
  void Add(Node node);
  void Remove(std::string_view key);  // with everything below it
  void SetNodeText(std::string_view key, std::string_view text);
  const Node* Find(std::string_view key) const;
  const std::string& Selected() const { return selected_; }  // key; empty = none
  void Select(std::string_view key);                         // by program: fires nothing
  void ClickNode(std::string_view key);                      // by the user

  Event NodeClick;
  Event DblClick;

 private:
  std::vector<Node> nodes_;
  std::string selected_;
};

// A pair of small arrows beside a text box.
class UpDown : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "UPDOWN"; }

  double Min = 0, Max = 0, Step = 0, Value = 0;
  int Kind = 0;              // which of the input kinds its box holds
  TextBox* Buddy = nullptr;  // the box that it steps; not owned

  // One click on an arrow by the user, or the arrow key in the box: UpClick or DownClick, then Change. Nothing when
  // disabled or when the box is locked.
  void StepBy(bool up);

  Event UpClick, DownClick, Change;
};

class ProgressBar : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "PROGRESSBAR"; }
  int Value() const { return value_; }  // 0 to 100
  void SetValue(int value);

 private:
  int value_ = 0;
};

class PictureBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "PICTUREBOX"; }
  const std::string& Picture() const { return picture_; }  // path of the picture; empty = none
  void SetPicture(std::string path);

 private:
  std::string picture_;
};

class Menu : public CaptionedControl {
 public:
  // parent: name of the menu that holds this one, empty for a top-level menu. A caption of "-" is a separator.
  Menu(Window& window, std::string name, std::string parent, std::string caption, std::string shortcut = {})
      : CaptionedControl(window, std::move(name), -1, std::move(caption)),
        parent_(std::move(parent)),
        shortcut_(std::move(shortcut)) {}
  std::string_view TypeName() const override { return "MENU"; }
  const std::string& Parent() const { return parent_; }
  const std::string& Shortcut() const { return shortcut_; }  // such as "Ctrl+F"; empty = none
  // The user's choice: the field with the focus is left first; nothing when this or its parent menu is disabled.
  void Choose();
  Event Click;

 private:
  std::string parent_, shortcut_;
};

class Toolbar : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TOOLBAR"; }

  struct Button {
    std::string caption, key, tag, toolTip;
    std::string image;  // key of its picture in the image list
    bool enabled = true;
  };
  const std::vector<Button>& Buttons() const { return buttons_; }
  void Add(Button button);
  void SetButtonToolTip(int button, std::string toolTip);
  void SetButtonImage(int button, std::string image);
  void SetButtonEnabled(int button, bool enabled);
  // The user's click: the field with the focus is left first; nothing when the button is disabled.
  void Press(std::string_view key);

  std::function<void(const std::string& key)> ButtonClick;

 private:
  std::vector<Button> buttons_;
};

class TabStrip : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TABSTRIP"; }

  struct Tab {
    std::string caption;
    bool enabled = true;
  };
  const std::vector<Tab>& Tabs() const { return tabs_; }
  void Add(std::string caption);
  void SetTabCaption(int tab, std::string_view caption);
  void SetTabEnabled(int tab, bool enabled);
  int Selected() const { return selected_; }
  // Fires Click when the tab changes, whoever changes it.
  void SelectTab(int tab);
  // The user's choice: the field with the focus is left first; nothing when the tab is disabled.
  void Choose(int tab);

  Event Click;

 private:
  std::vector<Tab> tabs_;
  int selected_ = 0;
};

class Timer : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TIMER"; }
  int Interval = 100;  // milliseconds
  bool Running() const { return running_; }
  void SetRunning(bool running);
  Event Tick;

 private:
  bool running_ = false;
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

  // Ends the modal showing of this window, or closes it.
  void Close();
  bool Closed() const { return closed_; }
  // A window that is shown again after Close.
  void Reopen() { closed_ = false; }

  Event Activated;                        // has just been shown
  Event Unloading;                        // is being closed; runs once
  std::function<bool()> MayClose;         // the user closes the window; false keeps it open
  std::function<void(int, int)> Resized;  // inner width and height in twips
  std::function<void(Key)> KeyUp;         // a key released anywhere in the window, after its control
  Event PaintCaption, PaintClose;         // set by the binder
  Event PaintGone;                        // set by the binder: the window is being destroyed, its controls have gone

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
