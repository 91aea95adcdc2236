// The calculator options: a tree of settings, and beside it the editor of the one that is selected.
#pragma once

#include <functional>
#include <string>

#include "core/Records.h"
#include "platform/Controls.h"
#include "ui/options/OptionNodes.h"

namespace tarvolinex {

class FrmOptions : public Window {
 public:
  FrmOptions();

  // Before the window is shown: a working copy of the global preferences, the tree, the icons. What is edited goes
  // into the copy when another node is selected or a button pressed; OK and View alone pass the copy on. What is done
  // to files and form rows happens at once and stays, whatever button follows.
  void Load();
  // As a click on the root of the form pages, which shows them.
  void ShowForms();

  TreeView TreeOptions;
  ControlArray<CommandButton> Cmd;  // OK, Cancel, View, Help

  // The panels; exactly one is visible.
  Frame FraBlank;
  Frame FraTextString;
  TextBox TxtString;
  Frame FraValue;
  TextBox TxtIncre;
  UpDown UpDown1;
  Frame FraColour;
  PictureBox PicColour;
  CommandButton CmdColor;
  Frame FraYesNo;
  CheckBox ChkYesNo;
  Frame FraDepOptions;
  ControlArray<CheckBox> ChkdepSelect;  // value, percentage, advanced payments

 private:
  void AddRootTree();
  void Cmd_Click(int button);
  // The copy becomes the global preferences and is saved, with its icon.
  void SavePreferences();

  void TreeOptions_NodeClick();
  void ShowEditor(const OptionNode& node);
  void ShowText(const OptionNode& node);
  void ShowValue(const OptionNode& node);
  void ShowOnOff(const OptionNode& node);
  void ShowDepositTypes(const OptionNode& node);
  void HidePanels();

  // Commits the visible panel's value into the copy.
  void SaveChangedValue();
  void StoreValue(const OptionNode& node);
  std::int16_t TickedDepositTypes() const;

  void SetSwatch(Colour colour);
  void ChangeColour();
  void ChkdepSelect_Click(int box);

  CalculatorPreferencesRecord edited_;
  std::string currentKey_;  // of the node whose value the visible panel shows; empty when none
  std::string shownValue_;  // the value box as it was filled: while it reads so, there is nothing to commit
  int valueKind_ = 0;
  std::int32_t valueLimit_ = 0;
  bool filling_ = false;  // the program ticks the boxes itself
};

}  // namespace tarvolinex
