// The kinds of control that a window is made of, as plain state and events.
//
// A window class owns its controls and gives them handlers; nothing here knows a toolkit. Whoever draws a window sets
// each control's `Painter` and calls the same functions that a test calls (`Type`, `Press`, `Choose`, ...), so an
// event behaves the same whoever causes it:
//   - a text box fires Change as soon as its text differs from before, also when a handler assigned it;
//   - a check box, an option button and a combo box fire Click when their value changes, whoever changed it;
//   - a list box fires Click when its selection changes; a list view fires nothing when it is selected by program.
#pragma once

#include "controls/ListControls.h"
#include "controls/Window.h"

namespace tarvolinex {

class TextBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "TEXTBOX"; }

  const std::string& Text() const { return text_; }
  // Fires Change when the text differs. A program may set more than MaxLength characters.
  void SetText(std::string_view text);
  // What the user's typing does: as SetText, cut to MaxLength; nothing when locked or disabled.
  void Type(std::string_view text);
  // As SetText, for a text that is on record: it counts as unedited until it differs from this.
  void Load(std::string_view text);
  bool Edited() const { return text_ != loaded_; }
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);
  int MaxLength() const { return maxLength_; }  // characters; 0 = no limit
  void SetMaxLength(int characters);

  // A box for a number: whoever draws it refuses what the user types, pastes or drops unless it is made of digits, a
  // sign, separators, "%" and the currency's symbol. A program may set any text.
  void SetForNumber(std::string_view currencySymbol);
  bool ForNumber() const { return forNumber_; }
  const std::string& CurrencySymbol() const { return currencySymbol_; }
  // What is wrong with the text, as a sentence; empty = nothing. A box with a fault is marked.
  void SetFault(std::string fault);
  const std::string& Fault() const { return fault_; }

  Event Change;
  Event Refused;  // the user's input was not for this box

 private:
  std::string text_, loaded_, currencySymbol_, fault_;
  bool locked_ = false, forNumber_ = false;
  int maxLength_ = 0;
};

// The text as a caption that reads so, without an access key.
std::string CaptionOf(std::string_view text);
// A caption as it reads, without its access key.
std::string PlainCaption(std::string_view caption);

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
  // kSystemWindowText = as the window's other texts.
  Colour ForeColour() const { return foreColour_; }
  void SetForeColour(Colour colour);
  Event Click;      // of a label that its design draws as a link
  Event MouseMove;  // the pointer comes over it

 private:
  Colour foreColour_ = kSystemWindowText;
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
  const std::string& Image() const { return image_; }  // key of its picture in the image list; empty = none
  void SetImage(std::string key);
  // The user's click: the field with the focus is left first; nothing when disabled.
  void Press();
  Event Click;

 private:
  std::string image_;
};

// Return presses the button that has the focus, else `enter`; Escape presses `escape`.
void AnswerKeys(Window& window, CommandButton& enter, CommandButton& escape);

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
  // Path of the picture; empty = none: the box shows what its design gave it.
  const std::string& Picture() const { return picture_; }
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
    std::string shortcut = {};  // such as "Ctrl+F"; empty = none
    bool stays = false;         // stays down to show a choice; `down` says whether it is
    bool down = false;
  };
  const std::vector<Button>& Buttons() const { return buttons_; }
  void Add(Button button);
  void SetButtonToolTip(int button, std::string toolTip);
  void SetButtonImage(int button, std::string image);
  void SetButtonEnabled(int button, bool enabled);
  void SetButtonEnabled(std::string_view key, bool enabled);  // REQUIRES: there is a button of that key
  void SetButtonDown(int button, bool down);
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

}  // namespace tarvolinex
